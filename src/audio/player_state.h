#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "audio/disc_text.h"

namespace tessarel::audio {

enum PlayMode : std::int16_t { programmed = 0, singleTrack = 1, wholeDisc = 2 };

/// The single value of `playLaunched` that choosing single-track mode writes; it counts as neither 0 nor 1.
inline constexpr std::int16_t singleTrackChosen = 99;

/// What the player knows of the disc and of its play. One instance for the whole run: repeat outlives a disc.
/// Written by the Audio CD window and its routines. Others read it, but for two: the waiting window writes `discTrackCount`,
/// and the list of the program `programPanelOpen`.
struct PlayerState {
    // The disc, filled when it is loaded.
    std::int16_t discTrackCount = 0;
    std::int16_t gridTrackCount = 0;              ///< `discTrackCount`, at most 20
    std::array<std::int32_t, 101> trackFrames{};  ///< 0: lead-in in frames; n: frames part of track n's length
    std::array<std::string, 102> trackLengths;    ///< 1 to 101, "m:ss"; empty until built
    std::int32_t discNumber = 0;
    std::string totalTimeText;
    std::int16_t discLengthMinutes = 0;
    std::int16_t trackTimesReady = 0;
    std::int16_t enhancedDisc = 0;
    DiscText discText;  ///< shown by way of `ShownTexts`

    // Play.
    std::int16_t playMode = wholeDisc;
    std::int16_t repeatOn = 0;
    std::int16_t currentTrack = 0;
    std::int16_t reportedTrack = 0;
    std::int16_t playStarted = 0;
    std::int16_t playingFlag = 0;
    std::int16_t pausedFlag = 0;
    std::int32_t pausedPosition = 0;  ///< packed; above 0 means Play must resume
    std::int16_t discFinished = 0;
    std::int16_t playLaunched = 0;                  ///< 1 launched, 0 the track's end window has been seen
    std::array<std::int16_t, 102> programList{};    ///< 1 to 101, 0 ends it; consumed while it plays
    std::array<std::int16_t, 101> programBackup{};  ///< 1 to 100, for display
    std::int16_t programCount = 0;
    std::int16_t programIndex = 0;
    std::int16_t randomProgram = 0;  ///< 1 while the program at hand is one that random play has drawn
    std::int16_t programPanelOpen = 0;
    std::int16_t skipStep = 0;
    std::int16_t pickedTrackIndex = 0;  ///< zero-based
    std::int16_t keepTrackDigits = 0;
    double positionSeconds = 0;
    std::int16_t trackEndSeconds = 0;  ///< length of the track minus 5
    double lastAdvanceTime = 0;        ///< seconds since midnight
    std::int16_t seekKeyState = 0;     ///< counts up while Forward is held, down for Rewind
    float markA = 0;                   ///< x on the status bar, 0 unset
    float markB = 0;
    std::int16_t markTrack = 0;
    std::int16_t introTrack = 0;
    double introClock = 0;

    // Display.
    std::int16_t lastShownTrack = 0;
    double lastShownSeconds = 0;
    std::int16_t titleLetters = 0;  ///< points of the upper line's letters; 0 until the user has stepped them

    std::int16_t mixerStarted = 0;  ///< the mixer has been launched in this run
};

}  // namespace tessarel::audio
