#pragma once
#include <QPixmap>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "forms/form.h"
#include "ui/theme.h"

class QEventLoop;

namespace tessarel::ui {

struct Gestures;

/// The window of a form: a face of its own without the system's frame. Keeps place, state and caption in step with the form,
/// and tells the form of keys, presses on the empty face, dropped files and the wish to close.
class FormWindow : public QWidget {
public:
    /// `size` is in design units; the form's Width and Height are set from it.
    FormWindow(forms::Form& form, const Theme& theme, const QSizeF& size, const QString& title);
    ~FormWindow() override;

    const Theme& theme() const { return theme_; }
    /// The form has been unloaded: the window goes from the screen and follows nothing any more.
    void sever();
    bool severed() const { return form_ == nullptr; }

protected:
    /// For a key that acts on the window itself.
    static Gestures windowGestures(const std::function<void()>& act);
    /// What never changes: painted once and kept. The face and the title row are there already.
    virtual void drawBackground(QPainter& painter) = 0;
    void keep(forms::Subscription subscription) { subscriptions_.push_back(std::move(subscription)); }

    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
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
    void showState();
    void takeFormPlace();
    void comeToFront(int requests);
    void tell(const std::function<void(forms::Form&)>& code);
    void dragUntilReleased();
    void setDropHighlight(bool on);
    void renderBackground();

    forms::Form* form_;
    std::weak_ptr<const void> formLife_;
    const Theme& theme_;
    QSizeF designSize_;
    QString title_;
    QPixmap background_;
    std::vector<forms::Subscription> subscriptions_;
    QEventLoop* dragLoop_ = nullptr;
    QPoint dragGrip_;
    int frontRequests_ = 0;
    bool placing_ = false;
    bool dropHighlight_ = false;
};

}  // namespace tessarel::ui
