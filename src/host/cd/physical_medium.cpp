#include "host/cd/physical_medium.h"

#include <cdio/cdtext.h>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "host/cd/play_plan.h"

namespace tessarel::host {
namespace {

constexpr int playSpeed = 8;      // fast enough to read ahead, slow enough to be quiet
constexpr int retriesAFrame = 5;  // keeps a scratch from holding up the music for longer than the read-ahead lasts
constexpr Frames sessionGap = 11400;
constexpr int readAheadSectors = 150;  // the library's own 1200 would keep the first sample waiting for seconds
constexpr std::ptrdiff_t valuesPerFrame = std::ptrdiff_t{samplesPerFrame} * 2;

std::string cdText(const cdtext_t* text, cdtext_field_t field, track_t track) {
    const char* value = text ? cdtext_get_const(text, field, track) : nullptr;
    return value ? value : "";
}

std::optional<platform::CdToc> readToc(CdIo_t* disc) {
    const track_t first = cdio_get_first_track_num(disc);
    const track_t count = cdio_get_num_tracks(disc);
    const lsn_t leadOut = cdio_get_track_lsn(disc, CDIO_CDROM_LEADOUT_TRACK);
    if (first == CDIO_INVALID_TRACK || count == CDIO_INVALID_TRACK || count == 0 || leadOut <= 0) {
        return std::nullopt;
    }
    const cdtext_t* text = cdio_get_cdtext(disc);
    platform::CdToc toc;
    toc.leadOut = leadOut;
    toc.title = cdText(text, CDTEXT_FIELD_TITLE, 0);
    toc.performer = cdText(text, CDTEXT_FIELD_PERFORMER, 0);
    for (int n = first; n < first + count; ++n) {
        const auto track = static_cast<track_t>(n);
        const lsn_t start = cdio_get_track_lsn(disc, track);
        const lsn_t end = n + 1 < first + count ? cdio_get_track_lsn(disc, static_cast<track_t>(n + 1)) : leadOut;
        if (start < 0 || end < start) {
            return std::nullopt;
        }
        const bool audio = cdio_get_track_format(disc, track) == TRACK_FORMAT_AUDIO;
        toc.tracks.push_back({n, start, end - start, audio, cdText(text, CDTEXT_FIELD_TITLE, track),
                              cdText(text, CDTEXT_FIELD_PERFORMER, track)});
    }
    lsn_t lastSession = 0;
    if (cdio_get_last_session(disc, &lastSession) == DRIVER_OP_SUCCESS) {
        trimSessionGap(toc, lastSession);
    }
    return toc;
}

}  // namespace

void trimSessionGap(platform::CdToc& toc, Frames lastSession) {
    for (std::size_t i = 0; i + 1 < toc.tracks.size(); ++i) {
        platform::CdTrack& track = toc.tracks[i];
        const platform::CdTrack& next = toc.tracks[i + 1];
        const bool endsSession = track.audio && !next.audio && lastSession > track.start && lastSession <= next.start;
        if (endsSession && track.length > sessionGap) {
            track.length -= sessionGap;
        }
    }
}

/// Reads sound with jitter correction. Sequential reads go on where the last one ended.
class PhysicalMedium::Ripper {
public:
    static std::unique_ptr<Ripper> make(const std::string& device) {
        Disc disc(cdio_open(device.c_str(), DRIVER_UNKNOWN));
        if (!disc) {
            return nullptr;
        }
        cdrom_drive_t* drive = cdio_cddap_identify_cdio(disc.get(), CDDA_MESSAGE_FORGETIT, nullptr);
        if (!drive) {
            return nullptr;
        }
        auto ripper = std::unique_ptr<Ripper>(new Ripper(std::move(disc), drive));
        return cdio_cddap_open(drive) == 0 && ripper->begin() ? std::move(ripper) : nullptr;
    }
    ~Ripper() {
        if (paranoia_) {
            cdio_paranoia_free(paranoia_);
        }
        cdio_cddap_close_no_free_cdio(drive_);
    }
    Ripper(const Ripper&) = delete;
    Ripper& operator=(const Ripper&) = delete;

    bool read(Frames address, std::int16_t* samples) {
        if (address < firstAudio_ || address > lastAudio_) {
            return cdio_read_audio_sector(disc_.get(), samples, address) == DRIVER_OP_SUCCESS;
        }
        if (address != next_ && cdio_paranoia_seek(paranoia_, address, SEEK_SET) < 0) {
            next_ = -1;
            return false;
        }
        const std::int16_t* frame = cdio_paranoia_read_limited(paranoia_, nullptr, retriesAFrame);
        const bool troubled = takeErrors();
        if (!frame) {
            next_ = -1;
            return false;
        }
        next_ = address + 1;
        std::copy_n(frame, valuesPerFrame, samples);
        return !(troubled && std::all_of(samples, samples + valuesPerFrame, [](std::int16_t s) { return s == 0; }));
    }

private:
    Ripper(Disc disc, cdrom_drive_t* drive) : disc_(std::move(disc)), drive_(drive) {}

    bool begin() {
        cdio_cddap_verbose_set(drive_, CDDA_MESSAGE_LOGIT, CDDA_MESSAGE_FORGETIT);
        cdio_cddap_speed_set(drive_, playSpeed);
        firstAudio_ = cdio_cddap_disc_firstsector(drive_);
        lastAudio_ = cdio_cddap_disc_lastsector(drive_);
        paranoia_ = cdio_paranoia_init(drive_);
        if (paranoia_) {
            cdio_paranoia_modeset(paranoia_, PARANOIA_MODE_FULL ^ PARANOIA_MODE_NEVERSKIP);
            cdio_paranoia_cachemodel_size(paranoia_, readAheadSectors);
        }
        return paranoia_ != nullptr;
    }

    /// Whether the drive has reported read errors since the last call.
    bool takeErrors() {
        char* errors = cdio_cddap_errors(drive_);
        const bool any = errors && *errors;
        if (errors) {
            cdio_cddap_free_messages(errors);
        }
        return any;
    }

    Disc disc_;
    cdrom_drive_t* drive_;
    cdrom_paranoia_t* paranoia_ = nullptr;
    Frames firstAudio_ = 0;
    Frames lastAudio_ = 0;
    Frames next_ = -1;
};

Result<std::shared_ptr<Medium>> PhysicalMedium::open(const std::string& device) {
    Disc disc(cdio_open(device.c_str(), DRIVER_UNKNOWN));
    if (!disc) {
        return failure(Fault::notReady, "There is no disc in the drive.");
    }
    auto toc = readToc(disc.get());
    if (!toc) {
        return failure(Fault::invalid, "The disc has no readable table of contents.");
    }
    return std::shared_ptr<Medium>(new PhysicalMedium(device, std::move(disc), std::move(*toc)));
}

PhysicalMedium::PhysicalMedium(std::string device, Disc disc, platform::CdToc toc)
    : device_(std::move(device)), toc_(std::move(toc)), dataDisc_(std::move(disc)) {}

PhysicalMedium::~PhysicalMedium() = default;

bool PhysicalMedium::isAudio(Frames from, int count) const {
    const PlayPlan plan(toc_, from);
    return count > 0 && plan.addressAt(0) == from && plan.runFrom(0) >= count;
}

bool PhysicalMedium::isData(Frames from, int count) const {
    return count > 0 && from >= 0 && std::any_of(toc_.tracks.begin(), toc_.tracks.end(), [&](const platform::CdTrack& track) {
               return !track.audio && from >= track.start && count <= track.start + track.length - from;
           });
}

Result<void> PhysicalMedium::readAudio(Frames from, int count, std::int16_t* samples) {
    if (!isAudio(from, count)) {
        return failure(Fault::invalid, "There is no sound at this place of the disc.");
    }
    const std::lock_guard hold(audioMutex_);
    if (!ripper_) {
        ripper_ = Ripper::make(device_);
    }
    if (!ripper_) {
        return failure(Fault::notReady, "The disc can't be opened for reading sound.");
    }
    for (int i = 0; i < count; ++i) {
        if (!ripper_->read(from + i, samples + i * valuesPerFrame)) {
            return failure(Fault::failed, "A part of the disc can't be read.");
        }
    }
    return {};
}

Result<void> PhysicalMedium::readData(Frames from, int count, std::byte* bytes) {
    if (!isData(from, count)) {
        return failure(Fault::invalid, "There is no data at this place of the disc.");
    }
    const std::lock_guard hold(dataMutex_);
    if (cdio_read_data_sectors(dataDisc_.get(), bytes, from, dataSectorBytes, static_cast<std::uint32_t>(count)) !=
        DRIVER_OP_SUCCESS) {
        return failure(Fault::failed, "A part of the disc can't be read.");
    }
    return {};
}

}  // namespace tessarel::host
