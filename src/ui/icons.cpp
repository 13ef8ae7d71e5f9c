#include "ui/icons.h"

#include <QPolygonF>

namespace tessarel::ui {
namespace {

IconShape filled(std::initializer_list<QPolygonF> triangles, std::initializer_list<QRectF> bars) {
    QPainterPath path;
    for (const auto& triangle : triangles) {
        path.addPolygon(triangle);
        path.closeSubpath();
    }
    for (const auto& bar : bars) {
        path.addRect(bar);
    }
    return {path, false};
}

IconShape clock() {
    QPainterPath path;
    path.addEllipse(QPointF(0, 0), 8, 8);
    path.moveTo(0, -5);
    path.lineTo(0, 0);
    path.lineTo(4, 3);
    return {path, true};
}

IconShape cross() {
    QPainterPath path;
    path.moveTo(-4, -4);
    path.lineTo(4, 4);
    path.moveTo(4, -4);
    path.lineTo(-4, 4);
    return {path, true};
}

IconShape powerMark() {
    QPainterPath path;
    const QRectF ring(-5.5, -4.8, 11, 11);
    path.arcMoveTo(ring, 135);
    path.arcTo(ring, 135, 270);
    path.moveTo(0, -7);
    path.lineTo(0, -1);
    return {path, true};
}

}  // namespace

IconShape iconShape(Icon icon) {
    switch (icon) {
        case Icon::prev:
            return filled({{{{8, -8}, {-4, 0}, {8, 8}}}}, {{-8, -8, 3, 16}});
        case Icon::next:
            return filled({{{{-8, -8}, {4, 0}, {-8, 8}}}}, {{5, -8, 3, 16}});
        case Icon::play:
            return filled({{{{-7, -9}, {9, 0}, {-7, 9}}}}, {});
        case Icon::pause:
            return filled({}, {{-7, -8, 5, 16}, {2, -8, 5, 16}});
        case Icon::stop:
            return filled({}, {{-7, -7, 14, 14}});
        case Icon::eject:
            return filled({{{{-9, 3}, {0, -8}, {9, 3}}}}, {{-9, 5.5, 18, 3}});
        case Icon::rewind:
            return filled({{{{0, -7}, {-9, 0}, {0, 7}}}, {{{9, -7}, {0, 0}, {9, 7}}}}, {});
        case Icon::forward:
            return filled({{{{-9, -7}, {0, 0}, {-9, 7}}}, {{{0, -7}, {9, 0}, {0, 7}}}}, {});
        case Icon::time:
            return clock();
        case Icon::minimise:
            return filled({}, {{-5, -1, 10, 2}});
        case Icon::tray:
            return filled({{{{-5, -2}, {5, -2}, {0, 3}}}}, {{-1.25, -6, 2.5, 5}, {-5, 4.5, 10, 2}});
        case Icon::close:
            return cross();
        case Icon::power:
            return powerMark();
        case Icon::none:
            break;
    }
    return {};
}

}  // namespace tessarel::ui
