// The least that a Qt program does to show a window, as a measure for the start of the real one: bare_window WIDTH HEIGHT
#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace {

class BareWindow : public QWidget {
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), Qt::darkGreen); }
};

}  // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    const QStringList words = QApplication::arguments();
    BareWindow window;
    window.resize(words.value(1, "520").toInt(), words.value(2, "240").toInt());
    window.show();
    return QApplication::exec();
}
