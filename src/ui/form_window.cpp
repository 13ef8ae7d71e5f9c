#include "ui/form_window.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>
#include <QWindow>
#include <cmath>
#include <optional>

#include "host/desktop/dispatch.h"
#include "ui/enter.h"
#include "ui/widgets/pad.h"

namespace tessarel::ui {
namespace {

constexpr int twipsPerPixel = 15;

std::optional<int> formKeyCode(int key) {
    switch (key) {
        case Qt::Key_Escape:
            return forms::keys::escape;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return forms::keys::enter;
        case Qt::Key_F1:
            return forms::keys::f1;
        case Qt::Key_Help:
            return forms::keys::help;
        default:
            return std::nullopt;
    }
}

std::vector<std::string> localPaths(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const auto& url : data.urls()) {
        if (url.isLocalFile()) {
            paths.push_back(url.toLocalFile().toStdString());
        }
    }
    return paths;
}

bool movedBySystemOnly() { return QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

}  // namespace

FormWindow::FormWindow(forms::Form& form, const Theme& theme, const QSizeF& size, const QString& title)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint),
      form_(&form),
      formLife_(form.life()),
      theme_(theme),
      designSize_(size),
      title_(title),
      frontRequests_(form.frontRequests) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAcceptDrops(true);
    setFixedSize((size * theme.scale()).toSize());
    form.Width = width() * twipsPerPixel;
    form.Height = height() * twipsPerPixel;
    followForm();
}

FormWindow::~FormWindow() {
    if (!formLife_.expired() && form_ != nullptr) {
        form_->dragBySystem = nullptr;
    }
}

void FormWindow::followForm() {
    auto& form = *form_;
    setObjectName(QString::fromStdString(form.name()));
    keep(form.Caption.onChange([this](const std::string& caption) {
        setWindowTitle(caption.empty() ? QStringLiteral("Tessarel") : QString::fromStdString(caption));
    }));
    keep(form.Left.onChange([this](int) { takeFormPlace(); }));
    keep(form.Top.onChange([this](int) { takeFormPlace(); }));
    keep(form.Visible.onChange([this](bool) { showState(); }));
    keep(form.WindowState.onChange([this](forms::WindowState) { showState(); }));
    keep(form.frontRequests.onChange([this](int requests) { comeToFront(requests); }));
    keep(form.alwaysInFront.onChange([this](bool inFront) {
        if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) != inFront) {
            setWindowFlag(Qt::WindowStaysOnTopHint, inFront);
            showState();
        }
    }));
    form.dragBySystem = [this] { dragUntilReleased(); };
}

void FormWindow::sever() {
    subscriptions_.clear();
    if (!formLife_.expired() && form_ != nullptr) {
        form_->dragBySystem = nullptr;
    }
    form_ = nullptr;
    if (dragLoop_ != nullptr) {
        dragLoop_->quit();
    }
    hide();
}

Gestures FormWindow::windowGestures(const std::function<void()>& act) {
    return {[](forms::MouseButton) {},
            [act](forms::MouseButton button, bool inside) {
                if (inside && button == forms::MouseButton::left) {
                    act();
                }
            },
            act, [] { return true; }};
}

void FormWindow::showState() {
    if (!form_->Visible) {
        hide();
    } else if (form_->WindowState == forms::WindowState::minimised) {
        showMinimized();
    } else {
        if (isMinimized()) {
            setWindowState(windowState() & ~Qt::WindowMinimized);
        }
        show();
    }
}

void FormWindow::comeToFront(int requests) {
    if (requests != frontRequests_) {
        frontRequests_ = requests;
        raise();
        activateWindow();
    }
}

void FormWindow::takeFormPlace() {
    const QPoint place(form_->Left / twipsPerPixel, form_->Top / twipsPerPixel);
    if (place != pos()) {
        placing_ = true;
        move(place);
        placing_ = false;
    }
}

void FormWindow::tell(const std::function<void(forms::Form&)>& code) {
    if (form_ != nullptr && !formLife_.expired()) {
        auto& form = *form_;
        enter([&] { form.dispatch([&] { code(form); }); });
    }
}

void FormWindow::renderBackground() {
    const double pixels = devicePixelRatioF();
    background_ = QPixmap((QSizeF(size()) * pixels).toSize());
    background_.setDevicePixelRatio(pixels);
    background_.fill(Qt::transparent);
    QPainter painter(&background_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(theme_.scale(), theme_.scale());
    theme_.paintFace(painter, QRectF(QPointF(0, 0), designSize_));
    theme_.paintText(painter, 28, 33, QStringLiteral("TESSAREL"), theme_.font(13, QFont::DemiBold, 3), QColor(palette::title));
    theme_.paintText(painter, 126, 33, title_, theme_.font(13, QFont::Normal, 1), QColor(palette::caption));
    drawBackground(painter);
}

void FormWindow::paintEvent(QPaintEvent* event) {
    if (background_.isNull() || background_.devicePixelRatio() != devicePixelRatioF()) {
        renderBackground();
    }
    QPainter painter(this);
    const double pixels = background_.devicePixelRatio();
    for (const QRect& part : event->region()) {
        painter.drawPixmap(QRectF(part), background_, QRectF(QPointF(part.topLeft()) * pixels, QSizeF(part.size()) * pixels));
    }
    if (dropHighlight_) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(palette::green), 3));
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), 11, 11);
    }
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    const auto code = formKeyCode(event->key());
    if (!code || event->isAutoRepeat()) {
        event->ignore();
        return;
    }
    const int shift = (event->modifiers().testFlag(Qt::ShiftModifier) ? 1 : 0) |
                      (event->modifiers().testFlag(Qt::ControlModifier) ? 2 : 0) |
                      (event->modifiers().testFlag(Qt::AltModifier) ? 4 : 0);
    tell([&](forms::Form& form) { form.Form_KeyDown(*code, shift); });
}

void FormWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        dragGrip_ = event->globalPosition().toPoint() - pos();
        tell([](forms::Form& form) { form.Form_MouseDown(forms::MouseButton::left); });
    } else if (event->button() == Qt::RightButton) {
        tell([](forms::Form& form) { form.Form_MouseDown(forms::MouseButton::right); });
    }
}

void FormWindow::mouseMoveEvent(QMouseEvent* event) {
    if (dragLoop_ != nullptr) {
        move(event->globalPosition().toPoint() - dragGrip_);
    }
}

void FormWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (dragLoop_ != nullptr && event->button() == Qt::LeftButton) {
        dragLoop_->quit();
    }
}

// Called by the form's own code, from inside a press. Returns when the window has come to rest.
void FormWindow::dragUntilReleased() {
    if (dragLoop_ != nullptr || !QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) {
        return;
    }
    if (movedBySystemOnly()) {
        windowHandle()->startSystemMove();
        return;
    }
    QEventLoop loop;
    dragLoop_ = &loop;
    grabMouse();
    loop.exec();
    releaseMouse();
    dragLoop_ = nullptr;
    host::rethrowEnd();
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    tell([](forms::Form& form) { form.Form_KeyDown(forms::keys::escape, 0); });
}

void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isVisible()) {
        const auto state = isMinimized() ? forms::WindowState::minimised : forms::WindowState::normal;
        tell([state](forms::Form& form) { form.WindowState = state; });
    }
}

void FormWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (placing_) {
        return;
    }
    const QPoint place = pos();
    tell([place](forms::Form& form) {
        if (place != QPoint(form.Left / twipsPerPixel, form.Top / twipsPerPixel)) {
            form.Move(place.x() * twipsPerPixel, place.y() * twipsPerPixel);
        }
    });
}

void FormWindow::setDropHighlight(bool on) {
    if (dropHighlight_ != on) {
        dropHighlight_ = on;
        update();
    }
}

void FormWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!localPaths(*event->mimeData()).empty()) {
        event->acceptProposedAction();
        setDropHighlight(true);
    }
}

void FormWindow::dragLeaveEvent(QDragLeaveEvent* event) {
    QWidget::dragLeaveEvent(event);
    setDropHighlight(false);
}

void FormWindow::dropEvent(QDropEvent* event) {
    setDropHighlight(false);
    const auto paths = localPaths(*event->mimeData());
    event->acceptProposedAction();
    tell([&](forms::Form& form) { form.Form_FilesDropped(paths); });
}

}  // namespace tessarel::ui
