#include "audio/player_session.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "audio/device/mm_control.h"
#include "audio/iconmin.h"
#include "base/clock_text.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/process_end.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "volume/remote.h"

namespace tessarel::audio {
namespace {

using namespace std::chrono_literals;
using platform::LoopStatus;
using platform::Milliseconds;
using platform::PlaybackStatus;

constexpr const char* waitingWindow = "CD1st";
constexpr std::size_t mostAsked = 32;
/// A position this far from where it should be by now has jumped.
constexpr Milliseconds jumpDistance = 1s;
/// How long a track has to sound before anybody is told of it: those passed on the way are none.
constexpr Milliseconds settled = 1s;

}  // namespace

PlayerSession::PlayerSession(const shell::Context& context, platform::MediaSession& media,
                             platform::Notifications& notifications, const PlayerState& player,
                             const library::DiscRecord& record, const volume::VolumeState& volume,
                             const volume::RemoteState& remote)
    : context_(context),
      media_(media),
      notifications_(notifications),
      player_(player),
      record_(record),
      volume_(volume),
      remote_(remote) {
    media_.onCommand = [this](const Command& command) { queue(command); };
    media_.onPosition = [this] { return position(); };
}

PlayerSession::~PlayerSession() {
    media_.onCommand = nullptr;
    media_.onPosition = nullptr;
}

SessionPlayer* PlayerSession::window() const { return context_.windows.find<SessionPlayer>(SessionPlayer::windowName); }

SessionPlayer* PlayerSession::windowWithDisc() const {
    return context_.state.discDrawerOpen == 1 || player_.discTrackCount < 1 ? nullptr : window();
}

const volume::VolumeState& PlayerSession::levels() const {
    return volume::hasDiscLevels(remote_, context_.state.volumeMode) ? remote_.words : volume_;
}

std::optional<volume::VolumeControls> PlayerSession::volumeControls() const {
    if (volume::hasDiscLevels(remote_, context_.state.volumeMode)) {
        auto* small = context_.windows.find<volume::Remote>(volume::Remote::windowName);
        return small == nullptr ? std::nullopt : std::optional(small->volumeControls());
    }
    auto* player = context_.windows.find<volume::RemotePlayer>(SessionPlayer::windowName);
    return player == nullptr ? std::nullopt : std::optional(player->volumeControls());
}

// ---- Telling ----

void PlayerSession::discLoaded() {
    ++discLoads_;
    refresh();
}

void PlayerSession::discGone() { publish(nothingPlaying(sources())); }

void PlayerSession::refresh() {
    const auto* player = windowWithDisc();
    if (player == nullptr) {
        discGone();
        return;
    }
    const auto device = player->deviceReading();
    const auto before = now_;
    publish(nowPlaying(sources(), device));
    if (now_.status != PlaybackStatus::stopped) {
        const auto at = sessionPosition(device);
        watchPosition(before, at);
        tellOfTrack(at);
    }
}

void PlayerSession::publish(const platform::NowPlaying& now) {
    if (now != now_) {
        now_ = now;
        media_.publish(now_);
    }
}

// Whoever listens goes on counting by himself from the last position he knows, and from 0 in a new track.
void PlayerSession::watchPosition(const platform::NowPlaying& before, Milliseconds at) {
    const bool sameTrack = before.trackId == now_.trackId && before.status != PlaybackStatus::stopped;
    const bool playedOn = sameTrack && before.status == PlaybackStatus::playing && now_.status == PlaybackStatus::playing;
    const auto clock = context_.scheduler.now();
    const auto earliest = sameTrack ? lastPosition_ : 0ms;
    const auto latest = earliest + (clock - lastLook_);
    lastPosition_ = at;
    lastLook_ = clock;
    if (at > latest + jumpDistance || at < (playedOn ? latest : earliest) - jumpDistance) {
        media_.seeked(at);
    }
}

void PlayerSession::tellOfTrack(Milliseconds at) {
    if (now_.status != PlaybackStatus::playing || now_.trackId == toldTrack_ || at < settled) {
        return;
    }
    toldTrack_ = now_.trackId;
    if (!notifications_.programInFront()) {
        notifications_.show(noticeOf(now_));
    }
}

Milliseconds PlayerSession::position() const {
    const auto* player = windowWithDisc();
    return player == nullptr ? 0ms : sessionPosition(player->deviceReading());
}

// ---- Doing what is asked ----

// A timer of the program's own: it is held back during a deliberate wait, as keys are.
void PlayerSession::queue(const Command& command) {
    if (asked_.size() >= mostAsked) {
        return;
    }
    asked_.push_back(command);
    if (asked_.size() == 1) {
        acting_ = context_.scheduler.after(0ms, [this] { actOnNext(); });
    }
}

void PlayerSession::actOnNext() {
    const auto command = asked_.front();
    asked_.pop_front();
    if (!asked_.empty()) {
        acting_ = context_.scheduler.after(0ms, [this] { actOnNext(); });
    }
    refresh();
    act(command);
    refresh();
}

void PlayerSession::act(const Command& command) {
    switch (command.kind) {
        case Command::Kind::raise:
            raise();
            break;
        case Command::Kind::quit:
            quit();
        case Command::Kind::open:
            open(command.text);
            break;
        default:
            if (auto* player = windowWithDisc()) {
                press(*player, command);
            }
    }
}

void PlayerSession::raise() const {
    auto* hidden = context_.windows.find<volume::RemotePlayer>(SessionPlayer::windowName);
    if (hidden != nullptr && context_.windows.isVisible(ICONmin::windowName)) {
        hidden->comeBack();
        return;
    }
    auto names = context_.windows.loadedNames();
    names.insert(names.begin(), {SessionPlayer::windowName, waitingWindow});
    for (const auto& name : names) {
        auto* form = context_.windows.find<forms::Form>(name);
        if (form != nullptr && form->Visible) {
            form->WindowState = forms::WindowState::normal;
            form->ZOrder();
            return;
        }
    }
}

void PlayerSession::quit() const {
    if (auto* player = window()) {
        player->keys().exitKey.press();
    }
    platform::endProcess();
}

void PlayerSession::open(const std::string& image) {
    auto& state = context_.state;
    if (!shell::insertOrTell(context_, image)) {
        return;
    }
    state.playOpenedDisc = 1;
    auto* player = window();
    if (player != nullptr && state.discDrawerOpen != 1) {
        player->discReplaced();
    } else if (!context_.windows.isLoaded(waitingWindow)) {
        context_.windows.show(waitingWindow);
    }
}

void PlayerSession::press(SessionPlayer& player, const Command& command) {
    auto& keys = player.keys();
    switch (command.kind) {
        case Command::Kind::play:
            playOrPause(keys, true);
            break;
        case Command::Kind::pause:
            playOrPause(keys, false);
            break;
        case Command::Kind::playPause:
            playOrPause(keys, now_.status != PlaybackStatus::playing);
            break;
        case Command::Kind::stop:
            keys.icntla[transport::stop].press();
            break;
        case Command::Kind::next:
            if (now_.canGoNext) {
                step(player, transport::next);
            }
            break;
        case Command::Kind::previous:
            if (now_.canGoPrevious) {
                step(player, transport::prev);
            }
            break;
        case Command::Kind::setLoop:
            setLoop(player, command.loop);
            break;
        case Command::Kind::setShuffle:
            setShuffle(keys, command.on);
            break;
        case Command::Kind::setVolume:
            setVolume(command.volume);
            break;
        default:
            seek(player, command);
    }
}

void PlayerSession::playOrPause(CDFormFace& keys, bool play) const {
    keys.icntla[play ? transport::play : transport::pause].press();
}

// From the track that a person hears.
void PlayerSession::step(SessionPlayer& player, int transportIndex) const {
    player.goByTheSound();
    player.keys().icntla[transportIndex].press();
}

// A press on the position bar, which is that of the player's own track.
void PlayerSession::seek(SessionPlayer& player, const Command& command) {
    const auto device = player.deviceReading();
    const auto plan = planSeek(now_, sessionPosition(device), command);
    if (plan.kind == SeekPlan::Kind::next && now_.canGoNext) {
        step(player, transport::next);
    }
    if (plan.kind != SeekPlan::Kind::jump) {
        return;
    }
    const auto track = static_cast<std::size_t>(device.position.track);
    const int length = clockSeconds(clockText(player_.trackLengths.at(track)));
    player.goByTheSound();
    auto& bar = player.keys().statusBar;
    bar.pressAt(shareOfBar(plan.seconds, length) * static_cast<float>(bar.Width));
    lastPosition_ = sessionPosition(player.deviceReading());
    media_.seeked(lastPosition_);
}

// One track is repeated by single-track mode with repeat on; to leave it, the whole disc is chosen. What sounds goes on: the
// key of single-track mode would begin the track anew.
void PlayerSession::setLoop(SessionPlayer& player, LoopStatus wanted) const {
    if (wanted == sessionLoop(player_)) {
        return;
    }
    auto& keys = player.keys();
    const bool single = player_.playMode == singleTrack;
    if (wanted == LoopStatus::track && !single) {
        keys.Image4[modeKeys::single].press();
    } else if (wanted != LoopStatus::track && single) {
        keys.Image4[modeKeys::disc].press();
    }
    if ((player_.repeatOn == 1) != (wanted != LoopStatus::none)) {
        keys.Image10[functionKeys::repeat].press();
    }
    player.letTrackRunOn();
}

void PlayerSession::setShuffle(CDFormFace& keys, bool wanted) const {
    if (wanted == now_.shuffle) {
        return;
    }
    if (wanted) {
        keys.Image10[functionKeys::random].press();
    } else {
        keys.Image4[modeKeys::disc].press();
    }
}

// Both sliders move by as much as the louder one has to, and are let go: some levels are set by that alone.
void PlayerSession::setVolume(double wanted) const {
    const auto its = volumeControls();
    if (!(wanted >= 0) || !its || !its->panel.Visible) {
        return;
    }
    const int silent = volume::silentPosition;
    const int to = silent - static_cast<int>(std::lround(std::min(wanted, 1.0) * silent));
    if (levels().muted && to < silent) {
        its->muteLit.press();
    }
    const int left = its->leftSlider.Value;
    const int right = its->rightSlider.Value;
    const int by = to - std::min(left, right);
    const auto drag = [](forms::Slider& slider, int position) {
        slider.mouseDown();
        slider.moveTo(position);
        slider.mouseUp();
    };
    drag(its->leftSlider, left + by);
    if (!levels().linked) {
        drag(its->rightSlider, right + by);
    }
}

}  // namespace tessarel::audio
