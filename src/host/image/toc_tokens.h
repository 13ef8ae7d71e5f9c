#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace tessarel::host {

struct TocToken {
    enum class Kind { word, text, mark, end };
    Kind kind = Kind::end;
    std::string value;  ///< a text's quotes and escapes are undone
    int line = 0;
};

/// Cuts a TOC file into words, quoted texts and the marks { } , : #. Comments go. The last token is an `end`.
Result<std::vector<TocToken>> tocTokens(std::string_view bytes);

}  // namespace tessarel::host
