#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "host/image/iso_records.h"
#include "host/medium.h"

namespace tessarel::host {

struct IsoEntry {
    std::string name;
    bool directory = false;
    bool hidden = false;
    std::uint64_t size = 0;          ///< bytes; of a directory's own records
    bool interleaved = false;        ///< its content can't be read
    std::vector<IsoExtent> extents;  ///< sectors as frame addresses of the disc
};

/// The file system of a data track. Names are Joliet's where the disc has them, else those of Rock Ridge, else the plain ones
/// without version; entries come in the disc's own order, without "." and "..". Paths go from the root, parted by slashes or
/// back-slashes, without regard to case. The medium has to outlive it.
class IsoVolume {
public:
    /// Opens the volume of the session that a data track begins. `Fault::invalid` when there is none.
    static Result<IsoVolume> open(Medium& medium, Frames trackStart);

    const std::string& label() const { return label_; }
    const std::vector<IsoEntry>& root() const { return root_; }

    /// The entry of a path; "" is no entry. `Fault::notFound` when there is none.
    Result<IsoEntry> find(std::string_view path) const;

    /// What a folder holds; "" is the root.
    Result<std::vector<IsoEntry>> list(std::string_view path) const;

    /// A file's bytes, the first `maxBytes` of them at most.
    Result<std::string> read(std::string_view path, std::size_t maxBytes) const;

    /// `count` bytes of a file from an offset on, fewer at its end.
    Result<std::string> read(const IsoEntry& file, std::uint64_t offset, std::size_t count) const;

private:
    explicit IsoVolume(Medium& medium) : medium_(&medium) {}

    Result<void> readDescriptors(Frames trackStart);
    Result<void> findBase(Frames trackStart, const IsoRecord& root);
    Result<std::vector<IsoEntry>> readDirectory(const std::vector<IsoExtent>& extents) const;
    Result<std::string> readExtents(const std::vector<IsoExtent>& extents, std::uint64_t offset, std::size_t count) const;
    void learnRockRidge(const IsoRecord& self);
    std::string rockRidgeName(const IsoRecord& record) const;

    Medium* medium_;
    std::uint32_t base_ = 0;  ///< what is added to the sectors of its records; not 0 where a session was cut out of its disc
    bool joliet_ = false;
    bool rockRidge_ = false;
    std::size_t systemUseSkip_ = 0;
    std::string label_;
    std::vector<IsoEntry> root_;
};

}  // namespace tessarel::host
