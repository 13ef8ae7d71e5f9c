#include "ui/widgets/row_list.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStringListModel>
#include <QStyledItemDelegate>
#include <algorithm>

#include "ui/ground.h"

namespace tessarel::ui {
namespace {

constexpr double usualLetters = 12;
constexpr double pixelsPerPoint = 4.0 / 3.0;
constexpr double rowSpread = 1.85;
constexpr double rowInset = 8;
constexpr double columnGap = 8;
constexpr int pageRows = 8;

QString css(const QColor& color) { return color.name(); }

}  // namespace

/// Spoken without the tabs.
class RowList::Rows : public QStringListModel {
public:
    using QStringListModel::QStringListModel;
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::AccessibleTextRole) {
            return QStringListModel::data(index, Qt::DisplayRole)
                .toString()
                .split(u'\t', Qt::SkipEmptyParts)
                .join(QStringLiteral(" "));
        }
        return QStringListModel::data(index, role);
    }
};

class RowList::Painter : public QStyledItemDelegate {
public:
    explicit Painter(RowList& list) : QStyledItemDelegate(&list), list_(list) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        list_.paintRow(*painter, option.rect, index.data().toString(), index.row() == list_.chosen());
    }
    QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override {
        return {1, static_cast<int>(QFontMetricsF(list_.font()).height() * rowSpread / 1.25)};
    }

private:
    RowList& list_;
};

RowList::RowList(const Theme& theme, QWidget* parent) : QListView(parent), theme_(theme), rows_(new Rows(this)) {
    setModel(rows_);
    setItemDelegate(new Painter(*this));
    setFrameShape(QFrame::NoFrame);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    viewport()->setAutoFillBackground(false);
    const auto& glass = theme.glass();
    const int wide = static_cast<int>(10 * theme.scale());
    setStyleSheet(QStringLiteral("QListView{background:transparent}"
                                 "QScrollBar:vertical{background:transparent;width:%1px}"
                                 "QScrollBar::handle:vertical{background:%2;border-radius:%3px;min-height:%4px;margin:1px}"
                                 "QScrollBar::handle:vertical:hover{background:%5}"
                                 "QScrollBar::add-line,QScrollBar::sub-line{height:0}"
                                 "QScrollBar::add-page,QScrollBar::sub-page{background:transparent}")
                      .arg(wide)
                      .arg(css(glass.lampEdge))
                      .arg(wide / 2 - 1)
                      .arg(3 * wide)
                      .arg(css(glass.hoverEdge)));
    takeFont();
}

void RowList::place(const QRectF& design) {
    const auto* ground = groundOf(*this);
    const QPointF origin = ground != nullptr ? ground->origin() : QPointF();
    setGeometry(QRectF((design.topLeft() + origin) * theme_.scale(), design.size() * theme_.scale()).toAlignedRect());
}

void RowList::setRows(const QStringList& rows) {
    rows_->setStringList(rows);
    takeFont();
}

int RowList::rowCount() const { return rows_->rowCount(); }

void RowList::setChosen(int row) {
    if (row == chosen()) {
        return;
    }
    if (row < 0 || row >= rowCount()) {
        setCurrentIndex(QModelIndex());
        clearSelection();
    } else {
        setCurrentIndex(rows_->index(row));
        scrollTo(currentIndex());
    }
    viewport()->update();
}

void RowList::setTabStops(const std::vector<int>& stops) {
    stops_ = stops;
    viewport()->update();
}

void RowList::setLetters(const Font& font) {
    letters_ = font;
    takeFont();
}

void RowList::setColors(Color fore, Color back) {
    fore_ = fore;
    back_ = back;
    viewport()->update();
}

void RowList::takeFont() {
    const double size = letters_.points > 0 ? letters_.points * pixelsPerPoint : usualLetters;
    QFont font = theme_.font(size, letters_.bold ? QFont::Bold : QFont::Normal);
    if (!letters_.name.isEmpty()) {
        font.setFamilies(QStringList(letters_.name) + font.families());
    }
    font.setItalic(letters_.italic);
    font.setUnderline(letters_.underline);
    font.setPointSizeF(font.pointSizeF() * theme_.scale());
    setFont(font);
    const QFontMetricsF metrics(font);
    numbersWidth_ = 0;
    for (const QString& row : rows_->stringList()) {
        numbersWidth_ = std::max(numbersWidth_, metrics.horizontalAdvance(row.section(u'\t', 0, 0)));
    }
    scheduleDelayedItemsLayout();
    viewport()->update();
}

double RowList::columnStart(int column) const {
    const double inset = rowInset * theme_.scale();
    if (column < 1 || stops_.empty()) {
        return inset;
    }
    const auto at = std::min(static_cast<std::size_t>(column), stops_.size()) - 1;
    const double room = viewport()->width() - 2 * inset;
    const double stop = inset + room * stops_.at(at) / std::max(1, stops_.back());
    return std::max(stop, inset + numbersWidth_ + columnGap * theme_.scale());
}

QColor RowList::ground() const { return back_ == colors::black ? theme_.glass().top : toQColor(back_); }

// The last of three columns holds figures, which end at the right.
void RowList::paintRow(QPainter& painter, const QRectF& place, const QString& text, bool chosen) const {
    const auto& glass = theme_.glass();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor wanted = fore_ == colors::white ? glass.soft : theme_.accent(fore_).color;
    QColor ink = contrast(wanted, ground()) >= readable      ? wanted
                 : contrast(Qt::white, ground()) >= readable ? Qt::white
                                                             : Qt::black;
    if (chosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(glass.lit);
        const double radius = 4 * theme_.scale();
        painter.drawRoundedRect(place.adjusted(1, 1, -1, -1), radius, radius);
        ink = contrast(glass.lit, glass.ink) >= readable ? glass.ink : QColor(Qt::white);
    }
    painter.setPen(ink);
    painter.setFont(font());
    const QFontMetricsF metrics(font());
    const auto columns = text.split(u'\t');
    const double right = place.right() - rowInset * theme_.scale();
    const double figures = columns.size() > 2 ? metrics.horizontalAdvance(columns.at(2)) : 0;
    for (int i = 0; i < columns.size(); ++i) {
        const bool last = i == 2;
        const double start = last ? right - figures : columnStart(i);
        const double end = last ? right : i == 1 ? right - figures - columnGap * theme_.scale() : columnStart(i + 1);
        const QRectF room(start, place.top(), std::max(0.0, end - start), place.height());
        const QString shown = i == 1 ? metrics.elidedText(columns.at(i), Qt::ElideRight, room.width()) : columns.at(i);
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextDontClip, shown);
    }
}

void RowList::paintEvent(QPaintEvent* event) {
    if (ground() != theme_.glass().top) {
        QPainter painter(viewport());
        painter.fillRect(event->rect(), ground());
    }
    QListView::paintEvent(event);
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    if (rowCount() == 0) {
        painter.setPen(theme_.glass().dim);
        painter.setFont(font());
        painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, hint_);
    }
    if (hasFocus() && !ringHidden_) {
        painter.scale(theme_.scale(), theme_.scale());
        theme_.paintFocus(painter, QRectF(QPointF(), QSizeF(viewport()->size()) / theme_.scale()).adjusted(2, 2, -2, -2), 6);
    }
}

void RowList::choose(int row) {
    if (rowCount() > 0 && onChosen) {
        onChosen(std::clamp(row, 0, rowCount() - 1));
    }
}

void RowList::keyPressEvent(QKeyEvent* event) {
    const auto revealed = [this](int row) {
        ringHidden_ = false;
        viewport()->update();
        choose(row);
    };
    switch (event->key()) {
        case Qt::Key_Up:
            revealed(chosen() - 1);
            break;
        case Qt::Key_Down:
            revealed(chosen() + 1);
            break;
        case Qt::Key_PageUp:
            revealed(chosen() - pageRows);
            break;
        case Qt::Key_PageDown:
            revealed(chosen() + pageRows);
            break;
        case Qt::Key_Home:
            revealed(0);
            break;
        case Qt::Key_End:
            revealed(rowCount() - 1);
            break;
        default:
            event->ignore();
    }
}

void RowList::mousePressEvent(QMouseEvent* event) {
    const auto row = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && row.isValid()) {
        choose(row.row());
    }
}

void RowList::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        ringHidden_ = event->reason() == Qt::MouseFocusReason;
    }
    QListView::focusInEvent(event);
}

}  // namespace tessarel::ui
