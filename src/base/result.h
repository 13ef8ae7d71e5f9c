#pragma once
#include <string>
#include <tl/expected.hpp>

namespace tessarel {

/// Why an operation on the outside world failed.
enum class Fault {
    notFound,     ///< the file, folder or drive does not exist
    notReady,     ///< the drive holds no disc
    denied,       ///< the system refuses
    full,         ///< no space is left; what stood before still stands
    invalid,      ///< the input is not what it should be; `message` says what is wrong with it
    unsupported,  ///< the input is sound, but of a kind that can't be served
    unavailable,  ///< a part of the desktop (sound server, program) is missing
    failed,       ///< anything else
};

/// A failure that can be told to a person.
struct Error {
    Fault fault = Fault::failed;
    std::string message;  ///< one plain sentence for the user
};

template <class T>
using Result = tl::expected<T, Error>;

inline tl::unexpected<Error> failure(Fault fault, std::string message) {
    return tl::unexpected<Error>(Error{fault, std::move(message)});
}

}  // namespace tessarel
