#include "host/desktop/pulse_sound_files.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <utility>

#include "host/desktop/pulse_playback.h"
#include "host/desktop/sound_decoder.h"

namespace tessarel::host {

using platform::Milliseconds;

namespace {
constexpr std::size_t mostAtOnce = 4;
constexpr Milliseconds grace{2000};
constexpr Milliseconds glance{20};  // between two looks at a sound that is waited for
}  // namespace

struct PulseSoundFiles::Sound {
    explicit Sound(std::string bytes) : decoder(std::move(bytes)) {}

    SoundDecoder decoder;
    std::atomic<bool> over = false;
    std::jthread worker;  // last, so that it has ended before the rest goes
};

PulseSoundFiles::~PulseSoundFiles() {
    for (const auto& sound : sounds_) {
        sound->worker.request_stop();
    }
}

void PulseSoundFiles::play(const std::string& path) { start(path); }

void PulseSoundFiles::playAndWait(const std::string& path) {
    const auto sound = start(path);
    if (!sound) {
        return;
    }
    const auto end = scheduler_.now() + sound->decoder.length() + grace;
    while (!sound->over && scheduler_.now() < end) {
        scheduler_.wait(glance);
    }
}

std::shared_ptr<PulseSoundFiles::Sound> PulseSoundFiles::start(const std::string& path) {
    std::erase_if(sounds_, [](const auto& sound) { return sound->over.load(); });
    if (path.empty() || sounds_.size() >= mostAtOnce) {
        return nullptr;
    }
    auto bytes = files_.read(path);
    if (!bytes) {
        return nullptr;
    }
    auto sound = std::make_shared<Sound>(*std::move(bytes));
    if (!sound->decoder.valid()) {
        return nullptr;
    }
    sound->worker = std::jthread([&line = line_, &decoder = sound->decoder, &over = sound->over](const std::stop_token& stop) {
        playThroughPulse(decoder, line, stop);
        over = true;
    });
    return sounds_.emplace_back(std::move(sound));
}

}  // namespace tessarel::host
