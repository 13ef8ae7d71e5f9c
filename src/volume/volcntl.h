#pragma once
#include <functional>
#include <vector>

#include "forms/form.h"
#include "shell/context.h"
#include "volume/remote.h"
#include "volume/volcntl_face.h"
#include "volume/volume_engine.h"

namespace tessarel::volume {

/// The small volume window: it stands in for a player whose window is hidden, with its sliders, its display and its transport.
class VolCntl : public forms::Form, public Remote {
public:
    VolCntl(forms::Windows& windows, shell::Context context, RemoteState& remote);

    VolCntlFace face{*this};

    void Form_Load() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_KeyUp(int keyCode, int shift) override;
    /// The player's own shortcuts, while its sliders do the work of the ones here.
    forms::KeyUse keyUse(int keyCode, int shift) const override;
    /// The left button drags the window, to be kept on the screen. The right one does too; let go where it was pressed, it
    /// centres the window.
    void Form_MouseDown(forms::MouseButton button) override;
    void Form_Unload() override;

    void standIn() override;
    void mirror(const PlayerDisplay& display) override;
    void showLights(TransportLights lights) override;
    VolumeControls volumeControls() override;

    /// Takes over the levels: the player's, and unless its sliders go on driving them, what the device says now.
    void vcvol();
    void Image1_Click(int index);
    void Image3_Click();
    void Image5_MouseUp() override;
    void Image6_Click();
    void Image7_MouseUp() override;
    void Image8_Click();
    void Image12_Click();
    void vcntlstatusbar_MouseDown(float x);

private:
    void wire();
    void takeVolumeKeys();
    void setUpFace();
    void showSide();
    void showCaptions();
    bool handsOver() const;
    bool handOver(const std::function<void(const VolumeControls&)>& gesture);
    void followPlayer();
    RemotePlayer* player() const;
    forms::Form* keyPlayer() const;
    void close(const std::function<void(RemotePlayer&)>& act);

    shell::Context context_;
    RemoteState& remote_;
    VolumeEngine engine_;
    std::vector<Subscription> news_;
};

}  // namespace tessarel::volume
