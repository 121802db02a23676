// Mouse and keyboard of the receive pane.
#include "terminal/frmReceivePane.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <array>

namespace harvelop
{

// A key that moves the caret, one that selects so far as well, and where they take it.
struct ReceivePane::Key {
    QKeySequence::StandardKey move;
    QKeySequence::StandardKey select;
    std::size_t (*target)(const ReceivePane& pane);

    static const std::array<Key, 10> All;
};

const std::array<ReceivePane::Key, 10> ReceivePane::Key::All = {{
    {QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar,
     [](const ReceivePane& pane) { return pane.m_text.Previous(pane.m_caret); }},
    {QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar,
     [](const ReceivePane& pane) { return pane.m_text.Next(pane.m_caret); }},
    {QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine,
     [](const ReceivePane& pane) { return pane.rowsOn(-1); }},
    {QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine,
     [](const ReceivePane& pane) { return pane.rowsOn(1); }},
    {QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage,
     [](const ReceivePane& pane) { return pane.rowsOn(-static_cast<std::ptrdiff_t>(pane.rowsInView())); }},
    {QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage,
     [](const ReceivePane& pane) { return pane.rowsOn(static_cast<std::ptrdiff_t>(pane.rowsInView())); }},
    {QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine,
     [](const ReceivePane& pane) { return pane.m_text.LineAt(pane.m_caret).from; }},
    {QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine,
     [](const ReceivePane& pane) { return pane.m_text.LineAt(pane.m_caret).to; }},
    {QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument,
     [](const ReceivePane&) -> std::size_t { return 0; }},
    {QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument,
     [](const ReceivePane& pane) { return pane.m_text.Size(); }},
}};

std::size_t ReceivePane::rowsOn(std::ptrdiff_t rows) const
{
    auto [row, column] = m_text.PlaceOf(m_caret);
    const std::ptrdiff_t target = static_cast<std::ptrdiff_t>(row) + rows;
    if (target < 0)
        return 0;
    if (target >= static_cast<std::ptrdiff_t>(m_text.Rows()))
        return m_text.Size();
    return m_text.PositionAt({static_cast<std::size_t>(target), column});
}

void ReceivePane::showCaret()
{
    const auto row = static_cast<int>(m_text.PlaceOf(m_caret).row);
    const int lastTop = row + 1 - static_cast<int>(rowsInView());
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(std::clamp(bar.value(), std::max(lastTop, 0), row));
}

bool ReceivePane::event(QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        viewport()->update();
    if (event->type() == QEvent::ShortcutOverride) {
        auto& key = static_cast<QKeyEvent&>(*event);
        if (key.matches(QKeySequence::Copy) || key.matches(QKeySequence::SelectAll))
            key.accept();
    }
    return QAbstractScrollArea::event(event);
}

void ReceivePane::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        return Copy();
    if (event->matches(QKeySequence::SelectAll))
        return SelectAll();
    for (const auto& [move, extend, target] : Key::All) {
        const bool selects = event->matches(extend);
        if (!selects && !event->matches(move))
            continue;
        const std::size_t caret = target(*this);
        select(selects ? m_anchor : caret, caret);
        showCaret();
        return;
    }
    event->ignore();
}

void ReceivePane::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_C && event->modifiers() == Qt::AltModifier && !event->isAutoRepeat())
        emit ClearAsked();
    else
        event->ignore();
}

void ReceivePane::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    const std::size_t position = positionAt(event->position().toPoint());
    m_mouse = event->position().toPoint();
    m_selecting = true;
    if (m_sinceDouble.isValid() && m_sinceDouble.elapsed() < QApplication::doubleClickInterval())
        select(m_text.LineAt(position));
    else
        select(event->modifiers() & Qt::ShiftModifier ? m_anchor : position, position);
    m_sinceDouble.invalidate();
}

void ReceivePane::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    select(m_text.WordAt(positionAt(event->position().toPoint())));
    m_sinceDouble.start();
}

void ReceivePane::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_selecting)
        return event->ignore();
    constexpr int ScrollMs = 50;
    m_mouse = event->position().toPoint();
    selectToMouse();
    if (viewport()->rect().contains(m_mouse))
        m_scroller.stop();
    else if (!m_scroller.isActive())
        m_scroller.start(ScrollMs, this);
}

// Beyond the edge the text comes by, the faster the farther the mouse is out.
void ReceivePane::selectToMouse()
{
    const int height = viewport()->height();
    const int beyond = m_mouse.y() < 0 ? m_mouse.y() : std::max(m_mouse.y() - height, 0);
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(bar.value() + static_cast<int>(beyond / m_metrics.lineSpacing()) + (beyond > 0) - (beyond < 0));
    select(m_anchor, positionAt({m_mouse.x(), std::clamp(m_mouse.y(), 0, height)}));
}

void ReceivePane::mouseReleaseEvent(QMouseEvent* event)
{
    m_selecting = false;
    m_scroller.stop();
    QClipboard& clipboard = *QApplication::clipboard();
    if (event->button() == Qt::LeftButton && hasSelection() && clipboard.supportsSelection())
        clipboard.setText(SelectedText(), QClipboard::Selection);
}

void ReceivePane::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* copy = menu->addAction("&Copy", this, &ReceivePane::Copy);
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(hasSelection());
    QAction* all = menu->addAction("Select &All", this, &ReceivePane::SelectAll);
    all->setShortcut(QKeySequence::SelectAll);
    menu->addSeparator();
    QAction* clear = menu->addAction("C&lear", this, &ReceivePane::ClearAsked);
    clear->setShortcut(Qt::ALT | Qt::Key_C);
    for (QAction* action : {all, clear})
        action->setEnabled(m_text.Size() > 0);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    menu->popup(byKey ? viewport()->mapToGlobal(caretRect().bottomLeft().toPoint()) : event->globalPos());
}

} // namespace harvelop
