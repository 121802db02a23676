// The text box that shows what a logger says.
#pragma once

#include "terminal/received_text.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QPoint>
#include <QRectF>
#include <QString>

#include <string>
#include <string_view>

namespace harvelop
{

// Shows a text of any length, in rows as wide as the pane; what is copied has its lines whole again. Text is taken in
// at once and painted once a frame, so that however fast it comes there is time for everything else. The pane follows
// the output unless the user has scrolled up. Mouse and keyboard select as in an editor, but nothing can be changed.
class ReceivePane : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit ReceivePane(QWidget* parent = nullptr);

    void Append(std::string_view text);
    void Clear();

    const ReceivedText& Received() const { return m_text; }
    // The text as it was received, but for the kind of its line ends.
    QString Text() const;
    QString SelectedText() const;
    QString TextInView() const; // row by row, for those who can't see it

    void SelectAll();
    void Copy() const; // to the clipboard; nothing happens without a selection

signals:
    void ClearAsked(); // Alt+C, or by the menu

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool hasSelection() const { return m_caret != m_anchor; }
    ReceivedText::Range selection() const;
    void select(std::size_t anchor, std::size_t caret);
    void select(ReceivedText::Range range) { select(range.from, range.to); }
    void showCaret(); // scrolls to it
    void selectToMouse();

    void takeWidth();               // lays the text out anew if the width has changed
    void takeLength(bool toTheEnd); // brings the scroll bar up to date
    bool atEnd() const;
    std::size_t topRow() const;
    std::size_t rowsInView() const; // whole ones; at least 1
    void drawRow(QPainter& painter, std::size_t row, qreal top) const;

    std::size_t positionAt(const QPoint& point) const;
    QRectF caretRect() const;

    struct Key;
    std::size_t rowsOn(std::ptrdiff_t rows) const; // the position so many rows below the caret

    ReceivedText m_text;
    std::size_t m_anchor = 0; // the end of the selection that stays
    std::size_t m_caret = 0;
    QFontMetricsF m_metrics;
    QBasicTimer m_frame;    // runs while something new waits to be painted
    QBasicTimer m_scroller; // runs while the mouse selects beyond the edge
    QPoint m_mouse;
    bool m_selecting = false;    // with the mouse
    QElapsedTimer m_sinceDouble; // a third click soon after a double one selects the line
};

} // namespace harvelop
