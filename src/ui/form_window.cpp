#include "ui/form_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "host/desktop/dispatch.h"
#include "ui/enter.h"
#include "ui/widgets/key.h"

namespace tessarel::ui {
namespace {

constexpr int twipsPerPixel = 15;
constexpr int minimisingMs = 500;  // what a window manager may take to minimise a window
constexpr Qt::MouseButtons dragButtons = Qt::LeftButton | Qt::RightButton;

/// The keys above the letters send other signs with Shift, and on some keyboards without it: there the place counts.
std::optional<int> digitByPlace(quint32 scanCode) {
    constexpr quint32 placeOf1 = 10;
    constexpr quint32 placeOf0 = 19;
    if (scanCode < placeOf1 || scanCode > placeOf0) {
        return std::nullopt;
    }
    return forms::keys::digit0 + static_cast<int>((scanCode - placeOf1 + 1) % 10);
}

std::optional<int> formKeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return key - Qt::Key_A + forms::keys::letterA;
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return key - Qt::Key_0 + forms::keys::digit0;
    }
    switch (key) {
        case Qt::Key_Space:
            return forms::keys::space;
        case Qt::Key_Left:
            return forms::keys::left;
        case Qt::Key_Up:
            return forms::keys::up;
        case Qt::Key_Right:
            return forms::keys::right;
        case Qt::Key_Down:
            return forms::keys::down;
        case Qt::Key_Escape:
            return forms::keys::escape;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return forms::keys::enter;
        case Qt::Key_F1:
            return forms::keys::f1;
        case Qt::Key_Help:
            return forms::keys::help;
        case Qt::Key_MediaPlay:
        case Qt::Key_MediaPause:
        case Qt::Key_MediaTogglePlayPause:
            return forms::keys::mediaPlay;
        case Qt::Key_MediaStop:
            return forms::keys::mediaStop;
        case Qt::Key_MediaNext:
            return forms::keys::mediaNext;
        case Qt::Key_MediaPrevious:
            return forms::keys::mediaPrevious;
        default:
            return digitByPlace(event.nativeScanCode());
    }
}

int formModifiers(const QKeyEvent& event) {
    return (event.modifiers().testFlag(Qt::ShiftModifier) ? forms::modifiers::shift : 0) |
           (event.modifiers().testFlag(Qt::ControlModifier) ? forms::modifiers::control : 0) |
           (event.modifiers().testFlag(Qt::AltModifier) ? forms::modifiers::alt : 0);
}

bool reachesEveryForm(int keyCode) {
    return keyCode == forms::keys::escape || keyCode == forms::keys::enter || keyCode == forms::keys::f1 ||
           keyCode == forms::keys::help;
}

bool isText(int keyCode) { return keyCode < forms::keys::mediaNext || keyCode > forms::keys::mediaPlay; }

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
      skin_(theme.skin()),
      title_(title),
      frontRequests_(form.frontRequests) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAcceptDrops(true);
    setFixedSize((size.grownBy(frameOf(skin_.layout)) * theme.scale()).toSize());
    form.Width = width() * twipsPerPixel;
    form.Height = height() * twipsPerPixel;
    connect(qApp, &QApplication::focusChanged, this, &FormWindow::noteFocus);
    minimiseAgain_.setSingleShot(true);
    connect(&minimiseAgain_, &QTimer::timeout, this, &QWidget::showMinimized);
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

namespace {

Gestures onClick(const std::function<void()>& act) {
    return {[](forms::MouseButton) {},
            [act](forms::MouseButton button, bool inside) {
                if (inside && button == forms::MouseButton::left) {
                    act();
                }
            },
            act, [] { return true; }};
}

}  // namespace

QRectF FormWindow::titleKeyPlace(int fromRight) const { return {designSize_.width() - 46 - fromRight * 36, 16, 24, 24}; }

void FormWindow::addTitleKeys(const std::vector<TitleKey>& keys) {
    int fromRight = static_cast<int>(keys.size());
    for (const auto which : keys) {
        const bool minimises = which == TitleKey::minimise;
        const bool exits = which == TitleKey::exit;
        const auto icon = minimises ? Icon::minimise : exits ? Icon::power : Icon::close;
        const auto name = minimises ? QStringLiteral("Minimise") : exits ? QStringLiteral("Exit") : QStringLiteral("Close");
        auto* key = new Key(theme_, this, {.icon = icon, .round = true});
        key->place(titleKeyPlace(--fromRight), 4);
        key->setAccent(Ink::warning);
        key->setAccessibleName(name);
        key->setToolTip(minimises ? name : name + QStringLiteral(" (Esc)"));
        key->setGestures(onClick([this, minimises] { minimises ? showMinimized() : static_cast<void>(close()); }));
    }
}

void FormWindow::showState() {
    if (!form_->Visible) {
        hide();
    } else if (form_->WindowState == forms::WindowState::minimised) {
        if (!isMinimized()) {
            minimisedFor_.start();
            askedAgain_ = false;
            showMinimized();
        }
    } else {
        minimisedFor_.invalidate();
        if (isMinimized()) {
            setWindowState(windowState() & ~Qt::WindowMinimized);
        }
        setAttribute(Qt::WA_ShowWithoutActivating, form_->comesQuietly() || staysBehind_);
        show();
    }
}

void FormWindow::comeToFront(int requests) {
    if (requests != frontRequests_) {
        frontRequests_ = requests;
        if (staysBehind_) {
            lower();
            return;
        }
        raise();
        activateWindow();
    }
}

void FormWindow::setKeyboardHome(QWidget& home) {
    keyboardHome_ = &home;
    home.setFocus(Qt::ActiveWindowFocusReason);
}

void FormWindow::noteFocus(QWidget* from, QWidget* to) {
    if (from != nullptr && to != nullptr && isAncestorOf(from) && isAncestorOf(to)) {
        focusBefore_ = from;
    }
}

// Also called for a control that goes while it has the focus: that is no press of Tab, so the focus goes back, without a ring
// where there was none.
bool FormWindow::focusNextPrevChild(bool next) {
    const auto usable = [](const QWidget* widget) { return widget != nullptr && widget->isVisible() && widget->isEnabled(); };
    const auto* leaving = focusWidget();
    if (leaving == nullptr || usable(leaving)) {
        return QWidget::focusNextPrevChild(next);
    }
    if (usable(focusBefore_)) {
        focusBefore_->setFocus(Qt::ActiveWindowFocusReason);
        return true;
    }
    if (usable(keyboardHome_)) {
        keyboardHome_->setFocus(Qt::MouseFocusReason);
        return true;
    }
    return QWidget::focusNextPrevChild(next);
}

void FormWindow::takeFormSize() {
    const QSize wanted(form_->Width / twipsPerPixel, form_->Height / twipsPerPixel);
    if (wanted != size() && !wanted.isEmpty()) {
        setFixedSize(wanted);
        designSize_ = (QSizeF(wanted) / theme_.scale()).shrunkBy(frameOf(skin_.layout));
        background_ = QPixmap();
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

QPointF FormWindow::origin() const {
    const auto frame = frameOf(skin_.layout);
    return {frame.left(), frame.top()};
}

void FormWindow::renderBackground() {
    const double pixels = devicePixelRatioF();
    background_ = QPixmap((QSizeF(size()) * pixels).toSize());
    background_.setDevicePixelRatio(pixels);
    background_.fill(Qt::transparent);
    QPainter painter(&background_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(theme_.scale(), theme_.scale());
    painter.translate(origin());
    theme_.paintFace(painter, QRectF(QPointF(0, 0), designSize_), skin_, !title_.isEmpty());
    if (!title_.isEmpty()) {
        paintTitle(painter);
    }
    drawBackground(painter);
}

void FormWindow::paintTitle(QPainter& painter) const {
    const bool metal = skin_.layout == 1;
    theme_.paintText(painter, 28, 33, QStringLiteral("TESSAREL"), theme_.font(13, QFont::DemiBold, 3),
                     QColor(metal ? palette::metalTitle : palette::title));
    theme_.paintText(painter, 126, 33, title_, theme_.font(13, QFont::Normal, 1),
                     QColor(metal ? palette::metalCaption : palette::caption));
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
        painter.setPen(QPen(theme_.glass().keyLit, 3));
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), 11, 11);
    }
}

bool FormWindow::takesKey(const QKeyEvent& event) const {
    const auto code = formKeyCode(event);
    return code && form_ != nullptr && !formLife_.expired() &&
           form_->keyUse(*code, formModifiers(event)) != forms::KeyUse::none;
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    const auto code = formKeyCode(*event);
    if (!code || form_ == nullptr || formLife_.expired()) {
        event->ignore();
        return;
    }
    const int shift = formModifiers(*event);
    const bool everyForm = reachesEveryForm(*code);
    // What is typed into a box is text, also where the box has no use for it.
    const bool typing = isText(*code) && dynamic_cast<QLineEdit*>(focusWidget()) != nullptr;
    const auto use = everyForm ? forms::KeyUse::once : typing ? forms::KeyUse::none : form_->keyUse(*code, shift);
    if (use == forms::KeyUse::none || (use == forms::KeyUse::once && event->isAutoRepeat())) {
        event->ignore();
        return;
    }
    if (!everyForm && std::find(heldKeys_.begin(), heldKeys_.end(), *code) == heldKeys_.end()) {
        heldKeys_.push_back(*code);
    }
    tell([&](forms::Form& form) { form.Form_KeyDown(*code, shift); });
}

void FormWindow::keyReleaseEvent(QKeyEvent* event) {
    const auto code = formKeyCode(*event);
    if (!code || event->isAutoRepeat() || std::erase(heldKeys_, *code) == 0) {
        event->ignore();
        return;
    }
    const int shift = formModifiers(*event);
    tell([&](forms::Form& form) { form.Form_KeyUp(*code, shift); });
}

// Keys that are let go elsewhere are not told to this window.
void FormWindow::releaseKeys() {
    for (const int code : std::exchange(heldKeys_, {})) {
        tell([code](forms::Form& form) { form.Form_KeyUp(code, forms::modifiers::none); });
    }
}

void FormWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    releaseKeys();
}

void FormWindow::mousePressEvent(QMouseEvent* event) {
    dragGrip_ = event->globalPosition().toPoint() - pos();
    if (event->button() == Qt::LeftButton) {
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
    if (dragLoop_ != nullptr && (event->buttons() & dragButtons) == 0) {
        dragLoop_->quit();
    }
}

// Called by the form's own code, from inside a press. Returns when the window has come to rest.
void FormWindow::dragUntilReleased() {
    if (dragLoop_ != nullptr || (QGuiApplication::mouseButtons() & dragButtons) == 0) {
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
    tell([](forms::Form& form) { form.Form_Close(); });
}

// Some window managers bring a window up open first, though it asks to be minimised: it asks once more then.
bool FormWindow::stillBeingMinimised() {
    if (isMinimized() || !minimisedFor_.isValid() || minimisedFor_.elapsed() >= minimisingMs) {
        return false;
    }
    if (!std::exchange(askedAgain_, true)) {
        minimiseAgain_.start();
    }
    return true;
}

void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        releaseKeys();
    }
    if (event->type() == QEvent::WindowStateChange && isVisible() && !stillBeingMinimised()) {
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
