#pragma once
#include <string>

#include "base/result.h"
#include "library/disc_record.h"
#include "library/record_rules.h"
#include "platform/file_system.h"

/// The files of a disc's record. Each routine works in the record folder and leaves the data directory as the current one.
namespace tessarel::library {

/// Fills a record from the family of files that `discRecordPath` names. Never fails: a field whose file is missing or ends
/// before it keeps what it held, but `discExtras` are cleared first.
void readDiscRecord(platform::FileSystem& files, const std::string& dataDir, DiscRecord& record);

/// Saves a record. `discTrackCount` is the count of the disc in the drive, 0 for none. A file that fails leaves its old one
/// as it was and does not keep the others from being written; the first failure is returned, `Fault::invalid` without a
/// `discRecordPath`. Once the extras are saved, `discExtras` hold them as they stand in the file.
Result<void> writeDiscRecord(platform::FileSystem& files, const std::string& dataDir, int discTrackCount, DiscRecord& record);

/// Fills the image set from the disc's own file, or with `defaultImageSet`, which it clears, from default.cd1. A disc
/// without images has those of default.cd1, and without that the bitmaps of the art folder.
void readDiscImages(platform::FileSystem& files, const std::string& dataDir, DiscRecord& record);

/// Saves the image set to the disc's own file, or with `defaultImageSet`, which it clears, to default.cd1. Does nothing
/// when `noStoredImages` is set, or there is nothing to save.
Result<void> writeDiscImages(platform::FileSystem& files, const std::string& dataDir, DiscRecord& record);

}  // namespace tessarel::library
