#pragma once
#include <QFocusEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>
#include <vector>

#include "forms/property.h"
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
        const auto room = design.adjusted(-margin, -margin, margin, margin);
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
    /// Whether the ring of the focus is to be seen: the focus is here and came by the keyboard or the program.
    bool showsFocus() const { return this->hasFocus() && !focusByMouse_; }
    /// The keyboard is in use now.
    void revealFocus() {
        if (focusByMouse_) {
            focusByMouse_ = false;
            this->update();
        }
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(-this->mapTo(this->window(), QPoint(0, 0)));
        painter.scale(theme_.scale(), theme_.scale());
        draw(painter);
    }
    void focusInEvent(QFocusEvent* event) override {
        focusByMouse_ = event->reason() == Qt::MouseFocusReason;
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
    bool focusByMouse_ = false;
    std::vector<forms::Subscription> subscriptions_;
};

}  // namespace tessarel::ui
