#include "terminal/frmReceivePane.h"

#include "panels/frmSupport.h"
#include "terminal/frmReceiveAccess.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QTimerEvent>

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr int FrameMs = 16;
constexpr int Margin = 4; // pixels, as in the toolkit's own editors

// What stands for a character that has no shape of its own.
QString shapeOf(const std::string& bytes)
{
    constexpr char16_t Unknown = 0xFFFD;
    const QString text = ToQString(bytes);
    const bool shown = text.size() == 1 ? text.front().isPrint() : text.size() == 2 && text.isValidUtf16();
    return shown ? text : QString(QChar(Unknown));
}

} // namespace

ReceivePane::ReceivePane(QWidget* parent)
    : QAbstractScrollArea(parent), m_metrics(QFontDatabase::systemFont(QFontDatabase::FixedFont))
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // its coming would change the width of all rows
    viewport()->setCursor(Qt::IBeamCursor);
    MakeReceivePaneAccessible();
}

void ReceivePane::Append(std::string_view text)
{
    m_text.Append(text);
    if (!m_frame.isActive())
        m_frame.start(FrameMs, Qt::PreciseTimer, this);
}

void ReceivePane::Clear()
{
    m_text.Clear();
    m_anchor = m_caret = 0;
    takeLength(true);
}

QString ReceivePane::Text() const
{
    return ToQString(m_text.Text());
}

QString ReceivePane::SelectedText() const
{
    return ToQString(m_text.Text(selection()));
}

QString ReceivePane::TextInView() const
{
    const std::size_t last = topRow() + rowsInView();
    return ToQString(m_text.Text(
        {m_text.PositionAt({topRow(), 0}), last < m_text.Rows() ? m_text.PositionAt({last, 0}) : m_text.Size()}));
}

ReceivedText::Range ReceivePane::selection() const
{
    return {std::min(m_anchor, m_caret), std::max(m_anchor, m_caret)};
}

void ReceivePane::select(std::size_t anchor, std::size_t caret)
{
    m_anchor = anchor;
    m_caret = caret;
    viewport()->update();
}

void ReceivePane::SelectAll()
{
    select(0, m_text.Size());
}

void ReceivePane::Copy() const
{
    if (hasSelection())
        QApplication::clipboard()->setText(SelectedText());
}

bool ReceivePane::atEnd() const
{
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

std::size_t ReceivePane::topRow() const
{
    return static_cast<std::size_t>(verticalScrollBar()->value());
}

std::size_t ReceivePane::rowsInView() const
{
    const qreal rows = (viewport()->height() - 2 * Margin) / m_metrics.lineSpacing();
    return static_cast<std::size_t>(std::max(rows, 1.0));
}

void ReceivePane::takeWidth()
{
    const bool toTheEnd = atEnd();
    const std::size_t top = m_text.PositionAt({topRow(), 0});
    const qreal columns = (viewport()->width() - 2 * Margin) / m_metrics.horizontalAdvance('0');
    m_text.SetColumns(static_cast<std::size_t>(std::max(columns, 1.0)));
    takeLength(toTheEnd);
    if (!toTheEnd)
        verticalScrollBar()->setValue(static_cast<int>(m_text.PlaceOf(top).row));
}

void ReceivePane::takeLength(bool toTheEnd)
{
    QScrollBar& bar = *verticalScrollBar();
    const std::size_t inView = rowsInView();
    bar.setPageStep(static_cast<int>(inView));
    bar.setRange(0, static_cast<int>(std::max(m_text.Rows(), inView) - inView));
    if (toTheEnd) {
        bar.setValue(bar.maximum());
        if (!hasSelection())
            m_anchor = m_caret = m_text.Size();
    }
    viewport()->update();
}

void ReceivePane::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_frame.timerId()) {
        m_frame.stop();
        takeLength(atEnd() && !(m_selecting && hasSelection()));
        TellReceivePaneChanged(*this);
    } else if (event->timerId() == m_scroller.timerId()) {
        selectToMouse();
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

void ReceivePane::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    takeWidth();
}

void ReceivePane::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        m_metrics = QFontMetricsF(font());
        takeWidth();
    }
}

void ReceivePane::scrollContentsBy(int, int)
{
    viewport()->update();
}

void ReceivePane::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.setFont(font());
    const qreal height = m_metrics.lineSpacing();
    const auto [from, to] = selection();
    const ReceivedText::Place first = m_text.PlaceOf(from);
    const ReceivedText::Place last = m_text.PlaceOf(to);
    const std::size_t end = std::min(topRow() + rowsInView() + 1, m_text.Rows()); // one may be seen in part
    qreal top = Margin;
    for (std::size_t row = topRow(); row < end; ++row, top += height) {
        painter.setPen(palette().color(QPalette::Text));
        drawRow(painter, row, top);
        if (from == to || row < first.row || row > last.row)
            continue;
        const qreal cell = m_metrics.horizontalAdvance('0');
        const qreal left = Margin + cell * static_cast<qreal>(row == first.row ? first.column : 0);
        const qreal right = Margin + cell * static_cast<qreal>(row == last.row ? last.column : m_text.Columns());
        painter.setClipRect(QRectF(left, top, right - left, height));
        painter.fillRect(painter.clipBoundingRect(), palette().color(QPalette::Highlight));
        painter.setPen(palette().color(QPalette::HighlightedText));
        drawRow(painter, row, top);
        painter.setClipping(false);
    }
    if (hasFocus())
        painter.fillRect(caretRect(), palette().color(QPalette::Text));
}

void ReceivePane::drawRow(QPainter& painter, std::size_t row, qreal top) const
{
    for (const auto& [column, text] : m_text.PiecesOf(row)) {
        const QPointF base(Margin + m_metrics.horizontalAdvance('0') * static_cast<qreal>(column),
                           top + m_metrics.ascent());
        const bool plain = text.front() >= ' ' && text.front() <= '~';
        painter.drawText(base, plain ? QString::fromStdString(text) : shapeOf(text));
    }
}

QRectF ReceivePane::caretRect() const
{
    const auto [row, column] = m_text.PlaceOf(m_caret);
    const auto rowsDown = static_cast<std::ptrdiff_t>(row) - static_cast<std::ptrdiff_t>(topRow());
    return {Margin + m_metrics.horizontalAdvance('0') * static_cast<qreal>(column),
            Margin + m_metrics.lineSpacing() * static_cast<qreal>(rowsDown),
            static_cast<qreal>(style()->pixelMetric(QStyle::PM_TextCursorWidth)), m_metrics.lineSpacing()};
}

std::size_t ReceivePane::positionAt(const QPoint& point) const
{
    const qreal row = static_cast<qreal>(topRow()) + (point.y() - Margin) / m_metrics.lineSpacing();
    const qreal column = (point.x() - Margin) / m_metrics.horizontalAdvance('0') + 0.5;
    return m_text.PositionAt(
        {static_cast<std::size_t>(std::max(row, 0.0)), static_cast<std::size_t>(std::max(column, 0.0))});
}

} // namespace harvelop
