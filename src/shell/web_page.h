#pragma once
#include <string>
#include <string_view>

#include "shell/context.h"

namespace tessarel::shell {

/// Arguments of `openWebPage` that look for a browser without a page; the second one never asks the user.
inline constexpr std::string_view findBrowser = "FIND";
inline constexpr std::string_view findInstalledBrowser = "FINDINST";

/// The browser that a "WIN.INI" names; empty when it names none.
std::string browserFromWinIni(std::string_view winIni);

/// Shows a page in the web browser. A browser that isn't known yet, or no longer there, is looked for first, asked of the
/// user if need be, and stored in `TSLWIN4.INI` unless set-up was chosen at start.
void openWebPage(const Context& context, std::string_view url);

}  // namespace tessarel::shell
