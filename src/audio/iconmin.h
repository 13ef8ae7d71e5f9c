#pragma once
#include "forms/form.h"
#include "shell/context.h"

namespace tessarel::audio {

/// The icon of the hidden Audio CD window in the task bar. It has no face: brought back from being minimised, or pressed where
/// a desktop cannot minimise it, it brings the player back and goes.
class ICONmin : public forms::Form {
public:
    static constexpr const char* windowName = "ICONmin";

    ICONmin(forms::Windows& windows, shell::Context context);

    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_MouseDown(forms::MouseButton button) override;
    /// However it goes, the wallpaper comes back if it was up.
    void Form_Unload() override { showWallpaper(); }

    /// The wallpaper and the player in front of it come back; the small volume window and this one go.
    void restore();

private:
    void showWallpaper();

    shell::Context context_;
    bool wasMinimised_ = false;
    bool restoring_ = false;
    forms::Subscription stateWatch_;
};

}  // namespace tessarel::audio
