#include "terminal/frmTerminal.h"

#include "panels/frmSupport.h"
#include "terminal/frmReceive.h"
#include "terminal/frmTransmit.h"
#include "ui_frmTerminal.h"

#include <QCloseEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>

namespace harvelop
{

namespace
{
constexpr int LookAtLinkMs = 200;
constexpr int StateChangeMs = 300;
} // namespace

frmTerminal::frmTerminal(const TerminalServices& services, QWidget* parent)
    : QWidget(parent, Qt::Window),
      m_ui(std::make_unique<Ui::frmTerminal>()),
      m_use(services),
      m_receive(new frmReceive(this)),
      m_transmit(new frmTransmit(this))
{
    m_ui->setupUi(this);
    m_ui->splPanes->addWidget(m_receive);
    m_ui->splPanes->addWidget(m_transmit);
    m_ui->splPanes->setStretchFactor(0, 1);
    m_ui->splPanes->setStretchFactor(1, 0);
    m_stateTimer.setSingleShot(true);
    m_stateTimer.setInterval(StateChangeMs);
    m_linkTimer.setInterval(LookAtLinkMs);
    connect(&m_linkTimer, &QTimer::timeout, this, &frmTerminal::watchLink);
    connect(m_ui->splPanes, &QSplitter::splitterMoved, this, [this] { m_borderMoved = true; });
    moveBorderByKeys();
    MakePlainWindowsAccessible();
    connect(m_receive, &frmReceive::ClearAsked, this, [this] {
        ClearReceived();
        m_use.exchange.txtTerminal.clear();
    });
    connect(m_transmit, &frmTransmit::Sent, this,
            [this](const std::string& text) { m_use.exchange.SendToLogger(text); });
}

frmTerminal::~frmTerminal()
{
    if (m_use.forms.terminal == this)
        m_use.forms.terminal = nullptr;
}

void frmTerminal::Load()
{
    if (m_stage != Stage::Closed) {
        raise();
        activateWindow();
        return;
    }
    m_stage = Stage::Loading;
    m_linked = m_use.state.TerminalStarting; // a link that does not come about counts as lost
    m_borderMoved = false;
    m_use.forms.terminal = this;
    ClearReceived();
    m_transmit->Clear();
    m_ui->splPanes->hide();
    showCaptions();
    takePlace();
    ShowPlaced(*this);
    m_use.waiting.WaitMs(100);
    if (m_stage != Stage::Loading || m_use.end.Ended())
        return;
    keepTitleInReach();
    m_ui->splPanes->show();
    setSendHeight(TwipsToPixels(m_use.options.TransmitHeight1, *this));
    m_stage = Stage::Up;
    m_use.state.TerminalOpen = true;
    m_linkTimer.start();
    m_transmit->findChild<QPlainTextEdit*>("txtTransmit")->setFocus();
    if (m_use.state.OptionsLoaded && m_use.forms.options)
        m_use.forms.options->SetControlEnabled("cmdTerminal", false);
}

void frmTerminal::showCaptions()
{
    const struct {
        int number;
        QWidget& window;
        const char* field;
    } captions[] = {{235, *this, ""}, {230, *m_receive, "txtReceive"}, {236, *m_transmit, "txtTransmit"}};
    for (const auto& [number, window, field] : captions) {
        WidgetCaption caption(window);
        if (m_use.language.LangActive)
            ApplyLangFont(m_use.language, caption, {{number, ""}});
        const std::string words = m_use.language.Text(number);
        caption.SetCaption(" " + words);
        if (auto* control = window.findChild<QWidget*>(field))
            control->setAccessibleName(ToQString(words));
    }
}

void frmTerminal::takePlace()
{
    const Options& options = m_use.options;
    const QSize stored(TwipsToPixels(options.TerminalWidth, *this), TwipsToPixels(options.TerminalHeight, *this));
    setWindowState(Qt::WindowNoState);
    setProperty("tag", QString());
    resize(stored.boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
    MoveToTwips(*this, options.TerminalLeft, options.TerminalTop);
}

// The place is that of the contents, 0 if none was ever stored; how thick the frame around them is shows only now.
void frmTerminal::keepTitleInReach()
{
    const int top = screen()->availableGeometry().top();
    if (frameGeometry().top() < top)
        move(frameGeometry().left(), top);
}

void frmTerminal::keepPlace()
{
    const QRect place = isMaximized() && normalGeometry().isValid() ? normalGeometry() : geometry();
    Options& options = m_use.options;
    options.TerminalTop = static_cast<float>(PixelsToTwips(place.y(), *this));
    options.TerminalLeft = static_cast<float>(PixelsToTwips(place.x(), *this));
    options.TerminalWidth = static_cast<float>(PixelsToTwips(place.width(), *this));
    options.TerminalHeight = static_cast<float>(PixelsToTwips(place.height(), *this));
    if (m_borderMoved)
        options.TransmitHeight1 = static_cast<float>(PixelsToTwips(m_transmit->height(), *this));
}

void frmTerminal::setSendHeight(int pixels)
{
    const QSplitter& panes = *m_ui->splPanes;
    const PaneHeights heights = WithSendHeight(panes.height() - panes.handleWidth(), pixels);
    m_ui->splPanes->setSizes({heights.receive, heights.send});
}

// A line at a time, for those who have no mouse.
void frmTerminal::moveBorderByKeys()
{
    for (const auto& [key, lines] : {std::pair{Qt::Key_Up, 1}, std::pair{Qt::Key_Down, -1}}) {
        auto* pressed = new QShortcut(QKeySequence(Qt::ALT | key), this);
        connect(pressed, &QShortcut::activated, this, [this, lines = lines] {
            if (m_stage != Stage::Up)
                return;
            setSendHeight(m_transmit->height() + lines * m_transmit->fontMetrics().lineSpacing());
            m_borderMoved = true;
        });
    }
    m_ui->splPanes->handle(1)->setAccessibleName("Border between the panes");
    m_ui->splPanes->handle(1)->setToolTip("Alt+Up and Alt+Down move it.");
}

void frmTerminal::halve()
{
    const QSplitter& panes = *m_ui->splPanes;
    const PaneHeights heights = HalfEach(panes.height() - panes.handleWidth());
    m_ui->splPanes->setSizes({heights.receive, heights.send});
}

void frmTerminal::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const QString tag = isMaximized() ? "max" : "";
    if (event->type() != QEvent::WindowStateChange || isMinimized() || tag == property("tag").toString())
        return;
    setProperty("tag", tag);
    // The new size comes before or after this.
    m_stateTimer.start();
    halve();
}

void frmTerminal::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_stateTimer.isActive())
        QMetaObject::invokeMethod(this, &frmTerminal::halve, Qt::QueuedConnection); // after the panes have taken it
}

void frmTerminal::SetCaption(const std::string& caption)
{
    ShowCaption(*this, caption);
}

void frmTerminal::Append(const std::string& text)
{
    m_receive->Append(text);
}

void frmTerminal::ClearReceived()
{
    m_receive->Clear();
}

void frmTerminal::Close()
{
    close();
}

// A port that has been unplugged is closed, though its link stands until somebody ends it.
bool frmTerminal::isLinked() const
{
    const std::string& mode = m_use.link.LinkMode;
    return mode == "Ethernet" || (mode == "ComPort" && m_use.rs232.MSComm1.PortOpen());
}

void frmTerminal::watchLink()
{
    if (isLinked()) {
        m_linked = true;
    } else if (m_linked && !m_use.link.LinkMode.empty() && !m_use.state.QuietConnect) {
        m_linked = false;
        SetCaption(" " + m_use.language.Text(394));
    }
}

void frmTerminal::closeEvent(QCloseEvent* event)
{
    if (m_use.end.Ended() || m_stage == Stage::Closed) {
        event->accept();
        return;
    }
    if (m_stage == Stage::Closing) {
        event->ignore(); // it is on its way
        return;
    }
    unload();
    event->accept();
}

void frmTerminal::unload()
{
    m_stage = Stage::Closing;
    ProgramState& state = m_use.state;
    state.TerminalOpen = false;
    m_linkTimer.stop();
    m_use.waiting.WaitMs(300);
    keepPlace();
    if (m_use.link.ConnectionKind == "Ethernet")
        m_use.ethernet.CloseEthernet();
    else
        m_use.rs232.CloseLink();
    if (!state.QuietConnect && state.OptionsLoaded && m_use.forms.options)
        m_use.forms.options->SetControlEnabled("cmdTerminal", true);
    m_use.exchange.txtTerminal.clear();
    m_use.store.SaveOptions();
    m_use.forms.terminal = nullptr;
    m_stage = Stage::Closed;
    if (state.TerminalOnly || m_use.endsProgram)
        m_use.end.EndProgram();
}

} // namespace harvelop
