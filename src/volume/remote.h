#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "base/color.h"
#include "volume/remote_state.h"
#include "volume/transport.h"
#include "volume/volume_engine.h"

namespace tessarel::volume {

inline constexpr int calendarCells = 20;

/// What a player shows, for the window that stands in for it.
struct PlayerDisplay {
    struct Text {
        std::string caption;
        Color color = colors::white;
        bool operator==(const Text&) const = default;
    };
    Text trackDigits;
    Text timeText;
    Text upperLine;
    Text lowerLine;
    std::array<Color, calendarCells> cells{};  ///< of track 1 and on
    Text programLamp;
    int barPercent = 0;
    bool operator==(const PlayerDisplay&) const = default;
};

/// The small window that stands in for a hidden player, as players and the tray icon see it. While it is loaded,
/// `RemoteState::volumeWindowOpen` is 1.
class Remote {
public:
    static constexpr const char* windowName = "VolCntl";

    virtual ~Remote() = default;
    /// Takes over levels, display and lights of the player that it serves, as it does when it is loaded.
    virtual void standIn() = 0;
    /// Copies what differs.
    virtual void mirror(const PlayerDisplay& display) = 0;
    virtual void showLights(TransportLights lights) = 0;
    /// The lights of a stopped player.
    void resetLights() { showLights(TransportLights::stopped); }

    /// Its own sliders and keys of the sound level; they live as long as it.
    virtual VolumeControls volumeControls() = 0;

    /// Mute; the mixer application when there are no sliders.
    virtual void Image5_MouseUp() = 0;
    /// The level from before the mute.
    virtual void Image7_MouseUp() = 0;
};

/// A player as the small volume window and other stand-ins drive it.
class RemotePlayer {
public:
    virtual ~RemotePlayer() = default;

    /// A press on a transport key with all that the player's own key does; a lit or dim one does nothing.
    virtual void pressTransport(int index) = 0;
    /// As a press on the position bar, 0 at its left end, 1 at its right; nothing unless it plays.
    virtual void jumpTo(float fraction) = 0;

    virtual PlayerDisplay display() const = 0;
    virtual TransportLights lights() const = 0;

    /// The player's own sliders and keys of the sound level; they live as long as the player is loaded.
    virtual VolumeControls volumeControls() = 0;
    virtual const VolumeState& levels() const = 0;
    /// Levels that the stand-in has set; the player shows them.
    virtual void takeLevels(const VolumeState& left) = 0;
    /// Brings lights, pause text and Repeat text up to date with the state of play.
    virtual void refreshLights() = 0;

    /// Brings the player's window back, and takes away what stands in for it.
    virtual void comeBack() = 0;
    /// The player's own exit.
    virtual void closePlayer() = 0;
};

/// The window that plays what a source kind stands for.
constexpr const char* playerWindow(SourceKind kind) { return kind == SourceKind::disc ? "CDForm" : "animate"; }

/// Shows the small volume window, on top and active, for the player of a source; the one that served another goes first.
void openRemote(forms::Windows& windows, RemoteState& state, SourceKind source);

}  // namespace tessarel::volume
