#include <algorithm>

#include "audio/cdform.h"
#include "audio/disc_load.h"
#include "audio/disc_text.h"
#include "audio/program_file.h"
#include "base/text.h"
#include "library/record_files.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/shared_state.h"

namespace tessarel::audio {

void CDForm::loadAudioDisc() {
    prepareDevice();
    player_.trackFrames[0] = measureLeadIn(MMControl1);
    player_.discTrackCount = static_cast<std::int16_t>(MMControl1.Tracks());
    loadedLength_ = MMControl1.Length();
    face.lowerLine.Caption = std::string("Reading CD Information...");
    player_.discNumber = computeDiscNumber(MMControl1, player_.discTrackCount);
    record_.discFileId = library::discFileId(player_.discNumber);
    player_.discLengthMinutes = static_cast<std::int16_t>(unpackMsf(MMControl1.Length()).minutes);
    player_.totalTimeText = discLengthText(MMControl1.Length());
    record_.discRecordPath = library::discRecordPath(context_.state.dataDir, record_.discFileId);
    loadRecord();
    face.timeText.Caption = player_.totalTimeText;
    face.timeCaption.Caption = std::string("TOTAL");
    face.trackDigits.Caption = std::to_string(player_.discTrackCount);
}

void CDForm::loadRecord() {
    if (!context_.files.exists(record_.discRecordPath)) {
        face.recordLamp.ForeColor = color(2);
        face.lowerLine.Caption = std::string();
        record_.trackTitles.fill({});
        showDiscText();
        return;
    }
    library::readDiscRecord(context_.files, context_.state.dataDir, record_);
    if (text::val(record_.discInfo[2]) < player_.discTrackCount) {
        record_.discInfo[2] = std::to_string(player_.discTrackCount);
    }
    face.upperLine.Caption = record_.discArtist + " - " + record_.discTitle;
    face.lowerLine.Caption = std::string();
    face.recordLamp.ForeColor = color(0);
}

// A disc without a record is shown by what it says of itself. An empty line stays where it says nothing.
void CDForm::showDiscText() {
    const auto disc = MMControl1.toc();
    player_.discText = disc ? discTextOf(*disc) : DiscText();
    face.upperLine.Caption = discLine(player_.discText);
}

void CDForm::setFirstDisplay() {
    if (player_.discTrackCount > 0 && text::val(player_.totalTimeText) < 1) {
        PlayerState measured = player_;
        buildTrackLengths(MMControl1, measured);
        face.timeText.Caption = summedLengthText(measured);
    }
    if (MMControl1.Mode() == mode::playing) {
        MMControl1_PlayClick();
    }
    player_.playMode = wholeDisc;
    clearList();
    player_.programIndex = 0;
    player_.skipStep = 0;
    player_.currentTrack = 1;
    player_.playStarted = 0;
    player_.discFinished = 0;
    player_.pausedPosition = 0;
    player_.playLaunched = 1;
    player_.gridTrackCount = std::min<std::int16_t>(player_.discTrackCount, gridCells);
    setUpCells();
    showStoredProgramLamp();
    library::readDiscImages(context_.files, context_.state.dataDir, record_);
}

void CDForm::setUpCells() {
    for (int cell = 0; cell < gridCells; ++cell) {
        const bool dead = cell >= player_.gridTrackCount;
        face.cellNumbers[cell].Caption = std::to_string(cell + 1);
        face.cellNumbers[cell].ForeColor = color(dead ? 6 : 0);
        face.cellCaps[cell].ForeColor = dead ? colors::grey : colors::black;
    }
    face.cellNumbers[moreTracksMarker].ForeColor = color(player_.discTrackCount > gridCells ? 0 : 6);
}

void CDForm::showStoredProgramLamp() {
    const auto stored = context_.files.read(programPath(record_.discRecordPath));
    face.programLamp.ForeColor = color(stored && holdsProgram(*stored) ? 3 : 2);
}

// Another window, or the command line, asks for one track.
void CDForm::takeRunModeTrack() {
    shell::SharedState& state = context_.state;
    player_.discNumber = computeDiscNumber(MMControl1, player_.discTrackCount);
    buildTrackLengths(MMControl1, player_);
    state.autoStartMode = 0;
    state.playOpenedDisc = 0;
    const auto track = text::valInteger(state.runMode);
    player_.pickedTrackIndex = static_cast<std::int16_t>(track - 1);
    startTrack();
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(std::max<int>(track, 1)));
    state.runMode.clear();
}

// The track table is built on the first pulse, when the window stands.
void CDForm::lateLoadWork() {
    const bool built = text::val(player_.trackLengths[1]) >= 1;
    if (built || player_.playStarted != 0 || player_.trackTimesReady != 0 || player_.discTrackCount < 1) {
        return;
    }
    context_.system.setPointer(platform::PointerShape::hourglass);
    buildTrackLengths(MMControl1, player_);
    context_.system.setPointer(platform::PointerShape::normal);
    const auto firstEntry = text::upper(context_.files.first(context_.state.cdDrive));
    const bool pureAudio = firstEntry.ends_with(".CDA");
    player_.enhancedDisc = pureAudio ? 0 : 1;
    face.discLamp.Caption = std::string(pureAudio ? "DISC" : "Enh-CD");
    if (!pureAudio) {
        face.Image4[modeKeys::intro].Visible = false;
        face.Image3[modeKeys::intro].Visible = false;
        face.enhancedKey.Visible = true;
    }
}

}  // namespace tessarel::audio
