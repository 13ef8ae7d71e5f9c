#pragma once
#include "audio/player_state.h"
#include "audio/program_list.h"
#include "forms/control.h"
#include "forms/form.h"
#include "library/disc_record.h"
#include "shell/context.h"

namespace tessarel::audio {

/// The list of the program that is being entered or played. It shows, and does not control: a press on a row puts the
/// selection back on the one that plays.
class aplaylst : public forms::Form, public ProgramList {
public:
    aplaylst(forms::Windows& windows, const shell::Context& context, PlayerState& player, const library::DiscRecord& record);

    forms::ListBox List1{*this, "List1", "Program"};

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_Unload() override;
    void List1_Click();

    void refill() override;
    void selectRow(int row) override;

private:
    void takeListFont();
    void placeByPlayer();
    void stayWithPlayer();

    shell::Context context_;
    PlayerState& player_;
    const library::DiscRecord& record_;
    Subscription playerInFront_;
};

}  // namespace tessarel::audio
