#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "host/desktop/pulse_sound_files.h"
#include "host/desktop/qt_scheduler.h"
#include "host/desktop/sound_decoder.h"
#include "tests/desktop/servers.h"

namespace tessarel::host {
namespace {

using namespace std::chrono_literals;

/// A file system of a few files in memory.
class MemoryFiles : public platform::FileSystem {
public:
    bool changeDirectory(std::string_view /*path*/) override { return false; }
    std::string currentDirectory() const override { return "C:\\"; }
    Result<std::vector<std::string>> list(std::string_view /*pattern*/, int /*attributes*/) const override {
        return std::vector<std::string>();
    }
    Result<std::string> read(std::string_view path) const override {
        const auto found = files.find(std::string(path));
        return found != files.end() ? Result<std::string>(found->second) : failure(Fault::notFound, "No such file");
    }
    Result<void> write(std::string_view /*path*/, std::string_view /*bytes*/) override { return {}; }
    Result<void> remove(std::string_view /*path*/) override { return {}; }
    std::optional<platform::WallTime> modified(std::string_view /*path*/) const override { return {}; }
    bool exists(std::string_view path) const override { return files.contains(std::string(path)); }
    bool directoryExists(std::string_view /*path*/) const override { return false; }

    std::map<std::string, std::string> files;
};

/// A tone as the bytes of a WAV file of 44100 stereo samples a second.
std::string tone(std::chrono::milliseconds length, double amplitude = 0.5) {
    const TemporaryFolder folder;
    const auto path = folder.file("tone.wav");
    SF_INFO info{};
    info.channels = 2;
    info.samplerate = 44100;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    for (long i = 0; i < 44100 * length.count() / 1000; ++i) {
        const float value = static_cast<float>(amplitude * std::sin(static_cast<double>(i) * 0.1));
        const std::array<float, 2> frame{value, value};
        sf_writef_float(file, frame.data(), 1);
    }
    sf_close(file);
    std::ifstream bytes(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(bytes), {}};
}

/// A sound server of the test's own whose only device is a null sink, recorded into a file.
class RecordingServer {
public:
    RecordingServer()
        : address_("PULSE_SERVER", "unix:" + folder_.file("native")),
          server_({"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disallow-exit",
                   "--disable-shm=no", "-L",
                   "module-native-protocol-unix socket=" + folder_.file("native") + " auth-anonymous=1", "-L",
                   "module-null-sink sink_name=disc rate=44100 format=s16le channels=2 norewinds=1"}) {
        waitFor([this] { return std::filesystem::is_socket(folder_.file("native")); });
        recorder_ =
            std::make_unique<Child>(std::vector<std::string>{"parec", "-d", "disc.monitor", "--rate=44100", "--channels=2",
                                                             "--format=s16le", "--raw", "--latency-msec=20"},
                                    folder_.file("heard"));
        waitFor([this] { return !samples().empty(); });
    }

    /// How many stereo samples have been heard that are not silent.
    long loudSamples() const {
        long loud = 0;
        const auto heard = samples();
        for (std::size_t i = 0; i + 1 < heard.size(); i += 2) {
            loud += heard[i] != 0 || heard[i + 1] != 0 ? 1 : 0;
        }
        return loud;
    }
    int peak() const {
        int highest = 0;
        for (const auto sample : samples()) {
            highest = std::max(highest, std::abs(static_cast<int>(sample)));
        }
        return highest;
    }

    template <class Condition>
    static bool waitFor(Condition condition) {
        for (int i = 0; i < 500; ++i) {
            if (condition()) {
                return true;
            }
            std::this_thread::sleep_for(10ms);
        }
        return false;
    }

private:
    std::vector<std::int16_t> samples() const {
        std::ifstream file(folder_.file("heard"), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        std::vector<std::int16_t> values(bytes.size() / 2);
        std::copy_n(bytes.data(), values.size() * 2, reinterpret_cast<char*>(values.data()));
        return values;
    }

    TemporaryFolder folder_;
    ScopedVariable address_;
    Child server_;
    std::unique_ptr<Child> recorder_;
};

/// A line that stands at a level and remembers the streams that carried it.
class FixedLine : public LineStreams {
public:
    std::optional<platform::LineLevel> startLevel() const override { return level; }
    void streamStarted(std::uint32_t index, int channels) override {
        const std::lock_guard hold(mutex_);
        channels_.push_back(channels);
        sounding_.insert(index);
    }
    void streamGone(std::uint32_t index) override {
        const std::lock_guard hold(mutex_);
        sounding_.erase(index);
    }
    std::vector<int> channels() const {
        const std::lock_guard hold(mutex_);
        return channels_;
    }
    std::size_t sounding() const {
        const std::lock_guard hold(mutex_);
        return sounding_.size();
    }

    std::optional<platform::LineLevel> level;

private:
    mutable std::mutex mutex_;
    std::vector<int> channels_;
    std::set<std::uint32_t> sounding_;
};

class SoundFiles : public ::testing::Test {
protected:
    SoundFiles() { files_.files["C:\\CLICK.WAV"] = tone(300ms); }

    MemoryFiles files_;
    QtScheduler scheduler_;
    FixedLine line_;
};

TEST_F(SoundFiles, ACueIsHeardWholeAndTheCallReturnsAtOnce) {
    const RecordingServer server;
    PulseSoundFiles sounds(scheduler_, files_, line_);
    const auto start = scheduler_.now();
    sounds.play("C:\\CLICK.WAV");
    EXPECT_LT(scheduler_.now() - start, 250ms);
    const long whole = 44100 * 300 / 1000 - 10;
    EXPECT_TRUE(RecordingServer::waitFor([&] { return server.loudSamples() >= whole; })) << server.loudSamples();
    std::this_thread::sleep_for(100ms);
    EXPECT_LE(server.loudSamples(), 44100 * 300 / 1000);
}

TEST_F(SoundFiles, ASoundStartsAtTheLevelOfItsLineAndTellsTheLineOfItsStream) {
    const RecordingServer server;
    line_.level = {{32768, 32768}, false};  // an eighth of the swing
    {
        PulseSoundFiles sounds(scheduler_, files_, line_);
        sounds.play("C:\\CLICK.WAV");
        EXPECT_TRUE(RecordingServer::waitFor([&] { return line_.sounding() == 1; }));
        EXPECT_TRUE(RecordingServer::waitFor([&] { return server.loudSamples() > 4410; }));
        EXPECT_TRUE(RecordingServer::waitFor([&] { return line_.sounding() == 0; }));
    }
    EXPECT_EQ(line_.channels(), std::vector{2});
    EXPECT_NEAR(server.peak(), 32767 * 0.5 / 8, 30);
    line_.level->muted = true;
    const long before = server.loudSamples();
    PulseSoundFiles(scheduler_, files_, line_).playAndWait("C:\\CLICK.WAV");
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(server.loudSamples(), before);
}

TEST_F(SoundFiles, WaitingLastsAsLongAsTheSoundAndHoldsTimersBack) {
    const RecordingServer server;
    PulseSoundFiles sounds(scheduler_, files_, line_);
    bool fired = false;
    const auto timer = scheduler_.after(10ms, [&] { fired = true; });
    const auto start = scheduler_.now();
    sounds.playAndWait("C:\\CLICK.WAV");
    EXPECT_GE(scheduler_.now() - start, 270ms);
    EXPECT_LT(scheduler_.now() - start, 2300ms);
    EXPECT_FALSE(fired);
    EXPECT_GT(server.loudSamples(), 44100 * 250 / 1000);
}

TEST_F(SoundFiles, TwoCuesSoundOverEachOther) {
    files_.files["C:\\QUIET.WAV"] = tone(600ms, 0.3);
    const RecordingServer server;
    PulseSoundFiles sounds(scheduler_, files_, line_);
    sounds.play("C:\\QUIET.WAV");
    sounds.playAndWait("C:\\QUIET.WAV");
    EXPECT_TRUE(RecordingServer::waitFor([&] { return server.peak() > 32767 * 4 / 10; })) << server.peak();
}

TEST_F(SoundFiles, AFifthSoundAtATimeIsPassedOver) {
    files_.files["C:\\LONG.WAV"] = tone(3000ms, 0.1);
    const RecordingServer server;
    PulseSoundFiles sounds(scheduler_, files_, line_);
    for (int i = 0; i < 4; ++i) {
        sounds.play("C:\\LONG.WAV");
    }
    const auto start = scheduler_.now();
    sounds.playAndWait("C:\\CLICK.WAV");
    EXPECT_LT(scheduler_.now() - start, 270ms);
}

TEST_F(SoundFiles, TheEndOfTheProgramCutsWhatStillPlays) {
    files_.files["C:\\LONG.WAV"] = tone(20s, 0.1);
    const RecordingServer server;
    const auto start = scheduler_.now();
    {
        PulseSoundFiles sounds(scheduler_, files_, line_);
        sounds.play("C:\\LONG.WAV");
        EXPECT_TRUE(RecordingServer::waitFor([&] { return server.loudSamples() > 0; }));
    }
    EXPECT_LT(scheduler_.now() - start, 6s);
}

TEST_F(SoundFiles, WithoutAServerThereIsSilenceAndNoDelay) {
    const ScopedVariable nowhere("PULSE_SERVER", "unix:/nonexistent/native");
    PulseSoundFiles sounds(scheduler_, files_, line_);
    const auto start = scheduler_.now();
    sounds.play("C:\\CLICK.WAV");
    sounds.playAndWait("C:\\CLICK.WAV");
    EXPECT_LT(scheduler_.now() - start, 1500ms);
}

TEST_F(SoundFiles, AnEmptyPathAMissingFileAndABrokenOneArePassedOver) {
    files_.files["C:\\BROKEN.WAV"] = "RIFF\x10\0\0\0WAVEjunk";
    files_.files["C:\\EMPTY.WAV"] = "";
    const ScopedVariable nowhere("PULSE_SERVER", "unix:/nonexistent/native");
    PulseSoundFiles sounds(scheduler_, files_, line_);
    const auto start = scheduler_.now();
    for (const char* path : {"", "C:\\MISSING.WAV", "C:\\BROKEN.WAV", "C:\\EMPTY.WAV"}) {
        sounds.play(path);
        sounds.playAndWait(path);
    }
    EXPECT_LT(scheduler_.now() - start, 1s);
}

TEST(SoundDecoder, TellsLengthAndSamplesOfAFile) {
    SoundDecoder decoder(tone(500ms));
    ASSERT_TRUE(decoder.valid());
    EXPECT_EQ(decoder.length(), 500ms);
    EXPECT_EQ(decoder.channels(), 2);
    EXPECT_EQ(decoder.rate(), 44100);
    std::vector<float> samples(2 * 44100);
    EXPECT_EQ(decoder.read(samples.data(), 44100), 22050U);
    EXPECT_NEAR(*std::max_element(samples.begin(), samples.end()), 0.5, 0.01);
    EXPECT_EQ(decoder.read(samples.data(), 44100), 0U);
}

TEST(SoundDecoder, AFileCutShortGivesWhatThereIs) {
    auto bytes = tone(500ms);
    bytes.resize(bytes.size() / 2);
    SoundDecoder decoder(bytes);
    ASSERT_TRUE(decoder.valid());
    std::vector<float> samples(2 * 44100);
    const auto read = decoder.read(samples.data(), 44100);
    EXPECT_GT(read, 10000U);
    EXPECT_LT(read, 22050U);
}

TEST(SoundDecoder, EveryPrefixOfAFileIsEitherRefusedOrRead) {
    const auto whole = tone(2ms);
    std::vector<float> samples(2000);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SoundDecoder decoder(whole.substr(0, length));
        if (decoder.valid()) {
            EXPECT_LE(decoder.read(samples.data(), 1000), 88U);
        }
    }
}

}  // namespace
}  // namespace tessarel::host
