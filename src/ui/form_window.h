#pragma once
#include <QElapsedTimer>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "forms/form.h"
#include "ui/ground.h"
#include "ui/theme.h"

class QEventLoop;

namespace tessarel::ui {

/// The window of a form: a face of its own without the system's frame. Keeps place, state and caption in step with the form,
/// and tells the form of keys, presses on the empty face, dropped files and the wish to close.
class FormWindow : public QWidget, public Ground {
public:
    /// `size` is in design units; the form's Width and Height are set from it.
    FormWindow(forms::Form& form, const Theme& theme, const QSizeF& size, const QString& title);
    ~FormWindow() override;

    const Theme& theme() const { return theme_; }
    QPointF origin() const override;
    bool takesKey(const QKeyEvent& event) const override;
    /// The form has been unloaded: the window goes from the screen and follows nothing any more.
    void sever();
    bool severed() const { return form_ == nullptr; }

protected:
    enum class TitleKey { minimise, close, exit };
    /// Round keys at the right end of the title row that act on the window itself, the last one outermost.
    void addTitleKeys(const std::vector<TitleKey>& keys);
    QRectF titleKeyPlace(int fromRight) const;
    /// Where the keyboard starts, and comes back to when what has the focus goes. Its ring is hidden until the first use.
    void setKeyboardHome(QWidget& home);
    /// It never comes in front of other windows.
    void stayBehind() { staysBehind_ = true; }
    /// For a window whose form has a size of its own.
    void takeFormSize();
    /// What never changes: painted once and kept. The face and the title row are there already.
    virtual void drawBackground(QPainter& painter) = 0;
    void keep(forms::Subscription subscription) { subscriptions_.push_back(std::move(subscription)); }

    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void followForm();
    bool stillBeingMinimised();
    void showState();
    void takeFormPlace();
    void comeToFront(int requests);
    void tell(const std::function<void(forms::Form&)>& code);
    void dragUntilReleased();
    void releaseKeys();
    void noteFocus(QWidget* from, QWidget* to);
    void setDropHighlight(bool on);
    void renderBackground();
    void paintTitle(QPainter& painter) const;

    forms::Form* form_;
    std::weak_ptr<const void> formLife_;
    const Theme& theme_;
    QSizeF designSize_;
    Skin skin_;
    QString title_;
    QPixmap background_;
    QPointer<QWidget> keyboardHome_;
    QPointer<QWidget> focusBefore_;
    std::vector<forms::Subscription> subscriptions_;
    std::vector<int> heldKeys_;
    QEventLoop* dragLoop_ = nullptr;
    QPoint dragGrip_;
    int frontRequests_ = 0;
    QElapsedTimer minimisedFor_;  ///< since the form has asked for it
    QTimer minimiseAgain_;
    bool askedAgain_ = false;
    bool placing_ = false;
    bool staysBehind_ = false;
    bool dropHighlight_ = false;
};

}  // namespace tessarel::ui
