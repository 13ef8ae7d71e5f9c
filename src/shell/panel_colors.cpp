#include "shell/panel_colors.h"

#include <cmath>

namespace tessarel::shell {
namespace {
constexpr Color readableFore = 0;
constexpr Color readableBack = 0x29CF95;
}  // namespace

Color colorOf(const Variant& value) {
    const double number = std::nearbyint(value.asNumber());
    const bool fits = number >= -2147483648.0 && number <= 4294967295.0;
    return fits ? static_cast<Color>(static_cast<std::int64_t>(number) & 0xFFFFFF) : colors::black;
}

std::array<Color, 11> panelColorsFor(bool custom, Color fore, Color back) {
    if (custom) {
        return {fore, 16384, back, fore, fore, back, back, fore, fore, back, back};
    }
    return {65280, 65280, 16448, 65535, 65280, 255, 16384, 255, 0xFFFF00, 0x404000, 0};
}

void fillColorTables(SharedState& state) {
    const bool custom = state.customColors == 1;
    if (custom) {
        if (colorOf(state.customForeColor) == colorOf(state.customBackColor)) {
            state.customForeColor = Variant::number(readableFore);
            state.customBackColor = Variant::number(readableBack);
        }
        for (const std::size_t i : {4U, 9U, 10U}) {
            state.displayColors13.at(i) = state.customForeColor;
        }
        state.fonts[0].fontColor = state.customForeColor;
        state.fonts[1].fontColor = state.customForeColor;
    }
    state.panelColors = panelColorsFor(custom, colorOf(state.customForeColor), colorOf(state.customBackColor));
}

std::string readoutFont(const SharedState& state) { return state.lcdFontOff == 1 ? "Arial" : "LcdD"; }

}  // namespace tessarel::shell
