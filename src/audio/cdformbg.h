#pragma once
#include "forms/form.h"
#include "shell/context.h"

namespace tessarel::audio {

/// A plain backing form, exactly behind the active Tessarel's window while that is replaced by another.
class CdFormBg : public forms::Form {
public:
    static constexpr const char* windowName = "cdformbg";

    CdFormBg(forms::Windows& windows, shell::Context context);

    /// Takes place and size of the active Tessarel's window; nothing when that is not loaded.
    void Form_Load() override;

private:
    shell::Context context_;
};

}  // namespace tessarel::audio
