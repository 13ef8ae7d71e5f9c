#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "host/medium.h"

namespace tessarel::host::testing {

/// A data disc in memory: one data track from `start` on.
class MemoryDisc final : public Medium {
public:
    explicit MemoryDisc(std::string sectors, Frames start = 0);
    const platform::CdToc& toc() const override { return toc_; }
    Result<void> readAudio(Frames from, int count, std::int16_t* samples) override;
    Result<void> readData(Frames from, int count, std::byte* bytes) override;

private:
    std::string sectors_;
    Frames start_;
    platform::CdToc toc_;
};

/// One directory record, as it lies on a disc.
struct RecordMaker {
    std::string identifier;
    std::uint32_t sector = 0;
    std::uint32_t bytes = 0;
    int flags = 0;  ///< 1 hidden, 2 directory, 4 associated, 128 more extents follow
    std::string systemUse = {};
    int interleave = 0;

    std::string bytesOnDisc() const;
};

/// "." and ".." of a directory.
std::string dotRecords(std::uint32_t sector, std::uint32_t bytes, const std::string& systemUse = {});

/// Joliet's form of a name.
std::string wide(std::string_view ascii);

/// A volume whose root lies in sector 20 (Joliet's in 21), counted from the volume's start; its other sectors are given.
class VolumeMaker {
public:
    std::string label = "LABEL";
    std::string jolietLabel = "Label";
    std::uint32_t address = 0;  ///< what the volume adds to its own sector numbers
    std::vector<RecordMaker> root;
    std::vector<RecordMaker> joliet;  ///< empty: no Joliet
    std::string rootSystemUse;
    std::uint32_t rootBytes = 2048;
    std::vector<std::string> more;  ///< sectors from 22 on

    std::string sectors() const;

private:
    std::string descriptor(int type, const std::string& name, std::uint32_t rootSector) const;
};

}  // namespace tessarel::host::testing
