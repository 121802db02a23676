#include "terminal/frmReceive.h"

#include "panels/frmSupport.h"
#include "ui_frmReceive.h"

#include <QElapsedTimer>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>

namespace harvelop
{

namespace
{
constexpr int CollectMs = 30;
constexpr int PortionMs = 12;             // in one go; what is left waits for other events
constexpr std::size_t PieceLength = 8192; // bytes
} // namespace

frmReceive::frmReceive(QWidget* parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::frmReceive>())
{
    m_ui->setupUi(this);
    m_ui->txtReceive->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->txtReceive->installEventFilter(this);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &frmReceive::showPortion);
}

frmReceive::~frmReceive() = default;

void frmReceive::Append(const std::string& text)
{
    m_waiting += text;
    m_tailWaited = false;
    if (!m_timer.isActive())
        m_timer.start(CollectMs);
}

void frmReceive::Clear()
{
    m_waiting.clear();
    m_shown = 0;
    m_rows = {};
    m_timer.stop();
    m_ui->txtReceive->clear();
}

void frmReceive::showPortion()
{
    QElapsedTimer clock;
    clock.start();
    const auto rest = [this] { return std::string_view(m_waiting).substr(m_shown); };
    while (!rest().empty() && clock.elapsed() < PortionMs) {
        const std::string_view piece = rest().substr(0, PieceLength);
        std::size_t whole = WholeCharacters(piece);
        if (whole == 0 && !m_tailWaited) {
            m_tailWaited = true;
            break;
        }
        whole = whole == 0 ? piece.size() : whole;
        showRows(m_rows.Take(piece.substr(0, whole)));
        m_shown += whole;
    }
    if (rest().empty()) {
        m_waiting.clear();
        m_shown = 0;
    } else {
        m_timer.start(m_tailWaited ? CollectMs : 0);
    }
}

void frmReceive::showRows(const ReceivedRows::Rows& rows)
{
    QPlainTextEdit& pane = *m_ui->txtReceive;
    QScrollBar& bar = *pane.verticalScrollBar();
    const bool follows = bar.value() >= bar.maximum();
    QTextCursor end(pane.document());
    end.movePosition(QTextCursor::End);
    const int first = end.blockNumber();
    end.insertText(ToQString(rows.text));
    for (const std::size_t row : rows.continuing)
        pane.document()->findBlockByNumber(first + static_cast<int>(row)).setUserState(ReceivePane::GoesOn);
    if (!follows)
        return;
    if (!pane.textCursor().hasSelection())
        pane.moveCursor(QTextCursor::End);
    pane.horizontalScrollBar()->setValue(0);
    bar.setValue(bar.maximum());
}

bool frmReceive::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyRelease) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() == Qt::Key_C && key.modifiers() == Qt::AltModifier && !key.isAutoRepeat())
            emit ClearAsked();
    }
    return QGroupBox::eventFilter(watched, event);
}

} // namespace harvelop
