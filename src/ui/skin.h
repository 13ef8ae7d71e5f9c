#pragma once
#include <QImage>
#include <QMarginsF>
#include <QRectF>
#include <functional>
#include <optional>
#include <string>

#include "ui/glass_colors.h"

class QPainter;

namespace tessarel::ui {

/// What the settings say of the face of windows.
struct Skin {
    int layout = 0;       ///< 0 the charcoal face alone, 1 with a frame of brushed metal around it
    bool screws = false;  ///< decorative screw heads
    std::string picture;  ///< path of the picture behind the controls; empty for none
    bool operator==(const Skin&) const = default;
};

/// Where a theme gets its look from. All that is referred to must outlive it.
struct Look {
    const PanelColors& panel;                                                          ///< read at each call
    std::function<Skin()> skin = {};                                                   ///< asked when a window opens
    std::function<std::optional<std::string>(const std::string& path)> readFile = {};  ///< the bytes of a picture
};

/// What a layout adds around the design of a window.
QMarginsF frameOf(int layout);

/// Paints the face of a window whose design is `design`: frame, ground or picture, and screws.
void paintSkin(QPainter& painter, const QRectF& design, const Skin& skin, const QImage& picture, bool titled);

/// A picture made dark enough for every text of the face, whatever it shows. Dark parts stay as they are, nearly.
QImage darkened(QImage picture);

/// The picture in the bytes of a file, darkened; none when they are no picture.
QImage pictureBehind(const std::string& bytes);

/// The brightest that any of the three colours of a darkened picture's point can be.
inline constexpr int brightest = 62;

}  // namespace tessarel::ui
