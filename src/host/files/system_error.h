#pragma once
#include <string_view>

#include "base/result.h"

namespace tessarel::host {

/// What an errno value means to the program.
Fault faultOf(int code);

/// A failed call as a sentence: "C:\A.TXT can't be written: there is no space left." `done` is the participle.
tl::unexpected<Error> systemError(int code, std::string_view name, std::string_view done);

}  // namespace tessarel::host
