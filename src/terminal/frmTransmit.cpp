#include "terminal/frmTransmit.h"

#include "panels/frmSupport.h"
#include "ui_frmTransmit.h"

#include <QKeyEvent>
#include <QTextCursor>

namespace harvelop
{

frmTransmit::frmTransmit(QWidget* parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::frmTransmit>())
{
    m_ui->setupUi(this);
    QFont font("Courier New");
    font.setStyleHint(QFont::Monospace);
    m_ui->txtTransmit->setFont(font);
    m_ui->txtTransmit->installEventFilter(this);
}

frmTransmit::~frmTransmit() = default;

void frmTransmit::Clear()
{
    m_ui->txtTransmit->clear();
    m_pressed = 0;
}

frmTransmit::Rule frmTransmit::ruleOf(const QKeyEvent& key)
{
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (enter)
        return key.modifiers().testFlag(Qt::ShiftModifier) ? nullptr : &SendCurrentLine;
    if (key.modifiers() != Qt::AltModifier)
        return nullptr;
    return key.key() == Qt::Key_A ? &SendWholePane : key.key() == Qt::Key_C ? &EmptySendPane : nullptr;
}

bool frmTransmit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut)
        m_pressed = 0;
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return QGroupBox::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const Rule rule = ruleOf(key);
    if (event->type() == QEvent::KeyPress) {
        if (!key.isAutoRepeat())
            m_pressed = rule ? key.key() : 0;
        return rule; // the editor puts nothing in: no line break has to be taken back
    }
    if (!key.isAutoRepeat() && rule && key.key() == m_pressed) {
        m_pressed = 0;
        apply(rule);
    }
    return QGroupBox::eventFilter(watched, event);
}

void frmTransmit::apply(Rule rule)
{
    QPlainTextEdit& editor = *m_ui->txtTransmit;
    const auto caret = static_cast<std::size_t>(editor.textCursor().position());
    const SendOutcome outcome = rule(PaneOfEditor(editor.toPlainText().toStdU16String(), caret));
    QString text = QString::fromStdU16String(outcome.pane.text).remove('\r');
    if (text != editor.toPlainText()) {
        // As typed, so that undo brings it back.
        QTextCursor all(editor.document());
        all.select(QTextCursor::Document);
        all.insertText(text);
    }
    QTextCursor cursor = editor.textCursor();
    cursor.setPosition(static_cast<int>(EditorCaret(outcome.pane)));
    editor.setTextCursor(cursor);
    if (outcome.sent)
        emit Sent(ToText(QString::fromStdU16String(*outcome.sent)));
}

} // namespace harvelop
