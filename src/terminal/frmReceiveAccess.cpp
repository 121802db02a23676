#include "terminal/frmReceiveAccess.h"

#include "terminal/frmReceivePane.h"

#include <QAccessibleWidget>

#include <algorithm>

namespace harvelop
{

namespace
{

// Offsets count the characters in view. The caret and the selection may be elsewhere: there is none of either here.
class ReceiveAccess : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit ReceiveAccess(ReceivePane& pane) : QAccessibleWidget(&pane, QAccessible::EditableText), m_pane(pane) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = state.multiLine = state.selectableText = true;
        return state;
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_pane.TextInView() : QAccessibleWidget::text(kind);
    }

    QString text(int from, int to) const override { return m_pane.TextInView().mid(from, to - from); }
    int characterCount() const override { return static_cast<int>(m_pane.TextInView().size()); }
    int cursorPosition() const override { return characterCount(); }
    void setCursorPosition(int) override {}
    int selectionCount() const override { return 0; }
    void selection(int, int* from, int* to) const override { *from = *to = 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint&) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* from, int* to) const override
    {
        *from = 0;
        *to = characterCount();
        return {};
    }

private:
    ReceivePane& m_pane;
};

QAccessibleInterface* accessOf(const QString&, QObject* object)
{
    auto* pane = qobject_cast<ReceivePane*>(object);
    return pane ? new ReceiveAccess(*pane) : nullptr;
}

} // namespace

void MakeReceivePaneAccessible()
{
    QAccessible::installFactory(accessOf);
}

void TellReceivePaneChanged(ReceivePane& pane)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleTextUpdateEvent changed(&pane, 0, {}, pane.TextInView());
    QAccessible::updateAccessibility(&changed);
}

} // namespace harvelop
