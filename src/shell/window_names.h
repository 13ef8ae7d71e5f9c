#pragma once

/// Names of windows that several others show, hide or ask for.
namespace tessarel::shell {

inline constexpr const char* waitingWindow = "CD1st";
inline constexpr const char* audioCdWindow = "CDForm";
inline constexpr const char* wallpaperForm = "Form26";

}  // namespace tessarel::shell
