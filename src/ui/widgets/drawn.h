#pragma once
#include <QFocusEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>
#include <vector>

#include "forms/property.h"
#include "ui/ground.h"
#include "ui/theme.h"

namespace tessarel::ui {

/// A widget that has its place, and paints itself, in the design units of its window.
template <class Base>
class Drawn : public Base {
public:
    Drawn(const Theme& theme, QWidget* parent) : Base(parent), theme_(theme) { this->setAttribute(Qt::WA_Hover); }

    /// `design` is the drawn shape; `margin` is room around it for the ring of the keyboard focus.
    void place(const QRectF& design, double margin = 0) {
        design_ = design;
        if (const auto* ground = groundOf(*this)) {
            origin_ = ground->origin();
        }
        const auto room = design.adjusted(-margin, -margin, margin, margin).translated(origin_);
        const QRect inWindow = QRectF(room.topLeft() * theme_.scale(), room.size() * theme_.scale()).toAlignedRect();
        this->setGeometry(inWindow.translated(-this->parentWidget()->mapTo(this->window(), QPoint(0, 0))));
    }
    const QRectF& design() const { return design_; }

    /// Held as long as the widget lives.
    void keep(forms::Subscription subscription) { subscriptions_.push_back(std::move(subscription)); }
    /// Lets go of all that was kept: the widget no longer follows anything.
    void release() { subscriptions_.clear(); }

protected:
    virtual void draw(QPainter& painter) = 0;

    const Theme& theme() const { return theme_; }
    /// A point of this widget, in its window's design.
    QPointF designPoint(const QPointF& point) const { return this->mapTo(this->window(), point) / theme_.scale() - origin_; }
    /// Whether the ring of the focus is to be seen: the focus is here and came by Tab, an arrow or assistive technology.
    bool showsFocus() const { return this->hasFocus() && !ringHidden_; }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(-this->mapTo(this->window(), QPoint(0, 0)));
        painter.scale(theme_.scale(), theme_.scale());
        painter.translate(origin_);
        draw(painter);
    }
    void focusInEvent(QFocusEvent* event) override {
        switch (event->reason()) {
            case Qt::MouseFocusReason:
                ringHidden_ = true;
                break;
            case Qt::ActiveWindowFocusReason:
            case Qt::PopupFocusReason:
                break;  // as it was when the window was left
            default:
                ringHidden_ = false;
        }
        Base::focusInEvent(event);
        this->update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        Base::focusOutEvent(event);
        this->update();
    }

private:
    const Theme& theme_;
    QRectF design_;
    QPointF origin_;
    bool ringHidden_ = true;
    std::vector<forms::Subscription> subscriptions_;
};

}  // namespace tessarel::ui
