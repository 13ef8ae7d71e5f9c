#pragma once
#include "forms/control.h"
#include "forms/form.h"
#include "shell/context.h"

namespace tessarel::shell {

/// The orderly way out: loading it tidies up and ends the process. The windows' own exits don't take it.
class Ender : public forms::Form {
public:
    Ender(forms::Windows& windows, Context context);

    void Form_Load() override;

private:
    Context context_;
};

/// Asks for the password of the library entry on show: the right one opens the CD-ROM window, a wrong one ends the program.
class Form16 : public forms::Form {
public:
    Form16(forms::Windows& windows, Context context);

    forms::Label prompt{*this, "Label1", "What to enter"};
    forms::TextBox password{*this, "Text1", "Password"};
    forms::Button accept{*this, "Command1", "OK"};

    void Form_Load() override;
    void Command1_Click();

private:
    Context context_;
};

}  // namespace tessarel::shell
