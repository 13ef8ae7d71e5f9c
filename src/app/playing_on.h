#pragma once
#include <filesystem>

namespace tessarel::app {

/// The mark of a process that has no windows any more and lets a disc play on. It lies in the home, and lasts as long as the
/// object or the process, whichever is shorter. Without the right to write there is no mark, and no error.
class PlayingOn {
public:
    explicit PlayingOn(const std::filesystem::path& home);
    ~PlayingOn();
    PlayingOn(const PlayingOn&) = delete;
    PlayingOn& operator=(const PlayingOn&) = delete;

private:
    std::filesystem::path mark_;
    int file_ = -1;
};

/// Asks the process that bears the mark of this home to end, and waits up to two seconds until it has given its drive back.
/// Returns at once when there is none.
void endPlayingOn(const std::filesystem::path& home);

}  // namespace tessarel::app
