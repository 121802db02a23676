#include "core/frmMessages.h"

#include "panels/frmSupport.h"
#include "ui_frmMessages.h"

#include <QCloseEvent>

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr double BelowTop = 2300; // twips from the top of the options panel
constexpr int WidthInCharacters = 52;
constexpr const char* Arrow = "<- "; // stands in front of a step in the caption, not in the bar

// The bar's text: "%" would begin a value of its own, so it is followed by an invisible joiner.
QString barText(const std::string& caption)
{
    const std::string_view step = caption;
    const bool named = step.starts_with(Arrow);
    QString text = named ? ToQString(step.substr(std::string_view(Arrow).size())) : QString();
    return text.replace('%', QString("%") + QChar(0x2060));
}

} // namespace

frmMessages::frmMessages(const MessagesServices& services, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowCloseButtonHint),
      m_ui(std::make_unique<Ui::frmMessages>()),
      m_use(services)
{
    m_ui->setupUi(this);
    MakePlainWindowsAccessible();
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_ui->pbMessages->setFormat(QString());
    m_ui->pbMessages->setMinimumWidth(fontMetrics().averageCharWidth() * WidthInCharacters);
}

frmMessages::~frmMessages() = default;

void frmMessages::Load()
{
    m_use.controls.DisableOptionsControls();
    const Options& options = m_use.options;
    if (options.MessagesTop != 0 || options.MessagesLeft != 0)
        MoveToTwips(*this, options.MessagesLeft, options.MessagesTop);
    else
        takeFirstPlace();
    SetBar(0, m_ui->pbMessages->maximum());
}

void frmMessages::takeFirstPlace()
{
    const QRect options = m_use.OptionsPlace();
    const QRect over = options.isNull() ? screen()->availableGeometry() : options;
    const int left = over.left() + over.width() / 2 - sizeHint().width() / 2;
    const double top = options.isNull() ? PixelsToTwips(over.center().y() - sizeHint().height() / 2, *this)
                                        : PixelsToTwips(over.top(), *this) + BelowTop;
    MoveToTwips(*this, PixelsToTwips(left, *this), top);
}

void frmMessages::SetVisible(bool visible)
{
    if (visible)
        ShowPlaced(*this);
    else
        hide();
}

void frmMessages::SetCaption(const std::string& caption)
{
    ShowCaption(*this, caption);
    const QString text = barText(caption);
    m_ui->pbMessages->setFormat(text);
    m_ui->pbMessages->setAccessibleDescription(text);
    // A longer step makes the window wider, and a shorter one leaves it so: it would flicker otherwise.
    const int wanted = fontMetrics().horizontalAdvance(text) + 4 * fontMetrics().averageCharWidth();
    m_ui->pbMessages->setMinimumWidth(std::max(m_ui->pbMessages->minimumWidth(), wanted));
}

void frmMessages::SetBar(int value, int max)
{
    m_ui->pbMessages->setRange(0, std::max(max, 1)); // a range of 0 would show as a busy animation
    m_ui->pbMessages->setValue(value);
}

void frmMessages::closeEvent(QCloseEvent* event)
{
    if (!m_use.end.Ended())
        unload();
    event->accept();
}

void frmMessages::unload()
{
    if (m_unloading)
        return;
    m_unloading = true;
    m_use.options.MessagesTop = PixelsToTwips(geometry().y(), *this);
    m_use.options.MessagesLeft = PixelsToTwips(geometry().x(), *this);
    m_use.progress.ShowProgressText(m_use.language.Text(540) + " ...");
    m_use.progress.Unloaded();
    m_use.store.SaveOptions();
    m_use.waiting.WaitMs(1000);
    m_use.end.EndProgram();
}

} // namespace harvelop
