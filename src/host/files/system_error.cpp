#include "host/files/system_error.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

namespace tessarel::host {
namespace {

std::string reasonFor(int code) {
    switch (faultOf(code)) {
        case Fault::notFound:
            return "it does not exist";
        case Fault::denied:
            return code == EROFS ? "its place can only be read" : "the system does not allow it";
        case Fault::full:
            return code == EDQUOT ? "your share of the disk is used up" : "there is no space left";
        default:
            break;
    }
    switch (code) {
        case ELOOP:
            return "its links run in a circle";
        case ENAMETOOLONG:
            return "its name is too long";
        case EISDIR:
            return "it is a folder";
        default:
            return std::generic_category().message(code);
    }
}

}  // namespace

Fault faultOf(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            return Fault::notFound;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Fault::full;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY:
            return Fault::denied;
        case ELOOP:
        case ENAMETOOLONG:
        case EISDIR:
        case EINVAL:
        case EILSEQ:
            return Fault::invalid;
        default:
            return Fault::failed;
    }
}

tl::unexpected<Error> systemError(int code, std::string_view name, std::string_view done) {
    return failure(faultOf(code), fmt::format("{} can't be {}: {}.", name, done, reasonFor(code)));
}

}  // namespace tessarel::host
