#pragma once
#include <atomic>
#include <map>
#include <set>
#include <thread>

#include "host/cd/drive_share.h"
#include "host/medium.h"

namespace tessarel::tests {

/// The two values of the n-th stereo sample of a disc: no two samples of a disc are alike, and none is silence.
inline std::int16_t leftOf(std::int64_t n) { return static_cast<std::int16_t>(n & 0xFFFF); }
inline std::int16_t rightOf(std::int64_t n) { return static_cast<std::int16_t>((n >> 16) + 1); }
/// The number of a sample; -1 for silence.
inline std::int64_t numberOf(std::int16_t left, std::int16_t right) {
    if (left == 0 && right == 0) {
        return -1;
    }
    return (static_cast<std::int64_t>(static_cast<std::uint16_t>(right)) - 1) << 16 | static_cast<std::uint16_t>(left);
}

struct FakeTrack {
    Frames length;
    bool audio = true;
};

inline platform::CdToc tocOf(const std::vector<FakeTrack>& tracks, Frames firstStart = 0) {
    platform::CdToc toc;
    toc.leadOut = firstStart;
    for (const FakeTrack& track : tracks) {
        toc.tracks.push_back({static_cast<int>(toc.tracks.size()) + 1, toc.leadOut, track.length, track.audio, "", ""});
        toc.leadOut += track.length;
    }
    return toc;
}

class FakeMedium : public host::Medium {
public:
    explicit FakeMedium(platform::CdToc toc) : toc_(std::move(toc)) {}

    const platform::CdToc& toc() const override { return toc_; }
    Result<void> readAudio(Frames from, int count, std::int16_t* samples) override {
        ++reads;
        std::this_thread::sleep_for(std::chrono::milliseconds(readDelayMs.load()));
        if (gone) {
            return failure(Fault::notReady, "gone");
        }
        for (Frames frame = from; frame < from + count; ++frame) {
            if (!isAudio(frame)) {
                return failure(Fault::invalid, "no sound here");
            }
            if (frame >= badFrom && frame < badTo) {
                return failure(Fault::failed, "a scratch");
            }
        }
        const std::int64_t first = static_cast<std::int64_t>(from) * host::samplesPerFrame;
        for (std::int64_t n = first; n < first + static_cast<std::int64_t>(count) * host::samplesPerFrame; ++n) {
            *samples++ = leftOf(n);
            *samples++ = rightOf(n);
        }
        return {};
    }
    Result<void> readData(Frames, int, std::byte*) override { return failure(Fault::unsupported, "no data"); }

    std::atomic<int> reads{0};
    std::atomic<int> readDelayMs{0};
    std::atomic<bool> gone{false};
    std::atomic<Frames> badFrom{0};
    std::atomic<Frames> badTo{0};

private:
    bool isAudio(Frames frame) const {
        if (frame >= 0 && frame < toc_.tracks.front().start) {
            return toc_.tracks.front().audio;
        }
        for (const platform::CdTrack& track : toc_.tracks) {
            if (frame >= track.start && frame < track.start + track.length) {
                return track.audio;
            }
        }
        return false;
    }

    platform::CdToc toc_;
};

class FakeDrive : public host::DiscDrive {
public:
    std::shared_ptr<host::Medium> medium() override { return disc; }
    std::optional<platform::CdOpenFault> acquire(bool shareable) override { return share_.acquire(shareable); }
    void release() override { share_.release(); }
    void eject() override { disc.reset(); }

    std::shared_ptr<FakeMedium> disc;

private:
    host::DriveShare share_;
};

class FakeDrives : public host::DiscDrives {
public:
    host::DiscDrive* drive(char letter) override { return letter == 'D' ? &d : nullptr; }
    FakeDrive d;
};

}  // namespace tessarel::tests
