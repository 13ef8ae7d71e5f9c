#pragma once
#include <QListView>
#include <functional>
#include <vector>

#include "forms/property.h"
#include "ui/theme.h"

namespace tessarel::ui {

/// Rows of text on glass, in columns that tabs begin; one may be selected. What a person selects is told, and shown when the
/// program has taken it over.
class RowList : public QListView {
public:
    struct Font {
        QString name;  ///< empty for the window's own
        int points = 0;
        bool bold = false;
        bool italic = false;
        bool underline = false;
        bool operator==(const Font&) const = default;
    };

    RowList(const Theme& theme, QWidget* parent);

    /// In design units of the window.
    void place(const QRectF& design);
    void setRows(const QStringList& rows);
    /// -1 for none.
    void setChosen(int row);
    /// Where columns begin; the last stop is the right edge.
    void setTabStops(const std::vector<int>& stops);
    void setLetters(const Font& font);
    void setColors(Color fore, Color back);
    /// Shown while there are no rows.
    void setHint(const QString& hint) { hint_ = hint; }

    int rowCount() const;
    int chosen() const { return currentIndex().row(); }
    /// The left end of a column in pixels of the list.
    double columnStart(int column) const;

    std::function<void(int row)> onChosen;

    void keep(forms::Subscription subscription) { subscriptions_.push_back(std::move(subscription)); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* /*event*/) override {}
    void focusInEvent(QFocusEvent* event) override;

private:
    class Rows;
    class Painter;

    void choose(int row);
    void takeFont();
    void paintRow(QPainter& painter, const QRectF& place, const QString& text, bool chosen) const;
    QColor ground() const;

    const Theme& theme_;
    Rows* rows_;
    std::vector<int> stops_;
    double numbersWidth_ = 0;  ///< of the widest first column
    Font letters_;
    Color fore_ = colors::white;
    Color back_ = colors::black;
    QString hint_;
    bool ringHidden_ = true;
    std::vector<forms::Subscription> subscriptions_;
};

}  // namespace tessarel::ui
