#include "panels/frmOptions.h"

#include "core/text_lines.h"
#include "core/windows_version.h"
#include "panels/frmSupport.h"
#include "ui_frmOptions.h"

#include <QCloseEvent>
#include <QSignalBlocker>

#include <string>

namespace harvelop
{

namespace
{
constexpr const char* FormCaption = " tallyCore Harvel Options";
constexpr double StandardPosition = 1000; // twips, from the left and from the top
constexpr const char* StandardTimeout = "5";
} // namespace

frmOptions::frmOptions(const OptionsServices& services, QWidget* parent)
    : QDialog(parent, Qt::Window), m_ui(std::make_unique<Ui::frmOptions>()), m_use(services)
{
    m_ui->setupUi(this);
    LabelLists(*this);
    constexpr int NameWidth = 40;
    for (QLineEdit* field : {m_ui->txtSMTPServerName, m_ui->txtSMTPSender, m_ui->txtSMTPUserName, m_ui->txtSMTPPassword,
                             m_ui->txtSMTPSiteID, m_ui->txtFTPServername, m_ui->txtFTPUserName, m_ui->txtFTPPassword,
                             m_ui->txtFTPSiteID, m_ui->txtDesktopDir})
        SetWidthInCharacters(*field, NameWidth);
    constexpr int NumberWidth = 9;
    for (QLineEdit* field : {m_ui->txtSMTPPort, m_ui->txtSMTPTimeout, m_ui->txtFTPTimeout, m_ui->txtSize})
        SetWidthInCharacters(*field, NumberWidth);
    constexpr int HintWidth = 40;
    m_ui->lblAdd->setMinimumWidth(m_ui->lblAdd->fontMetrics().averageCharWidth() * HintWidth);
    m_ui->pageAbout->setAutoFillBackground(false); // the tab's own background shows through
    m_ui->scrollAbout->viewport()->setAutoFillBackground(false);
    QPalette ports; // " All Ports" stands as a placeholder, but is a choice like the others
    ports.setBrush(QPalette::PlaceholderText, m_ui->cbxUnload_Ports->palette().buttonText());
    m_ui->cbxUnload_Ports->setPalette(ports);
    connectChanges();
    connectLists();
    connectButtons();
    connect(m_ui->tsOptions, &QTabWidget::currentChanged, this, &frmOptions::tsOptions_Click);
    updateToolTips();
    for (QWidget* control : findChildren<QWidget*>())
        control->installEventFilter(this);
    m_use.forms.options = this;
}

frmOptions::~frmOptions()
{
    m_use.forms.options = nullptr;
    m_use.state.cbxUnload_Ports.Changed = nullptr;
    m_use.state.cbxUnload_TallyCores.Changed = nullptr;
}

void frmOptions::Load()
{
    if (m_loaded)
        return;
    m_loaded = true;
    AdjustHeight(*this, DescribeWindows(GetVersion()));
    Options& options = m_use.options;
    if (options.OptionsTop != 0 || options.OptionsLeft != 0)
        MoveToTwips(*this, options.OptionsLeft, options.OptionsTop);
    else
        MoveToTwips(*this, StandardPosition, StandardPosition);
    SetCaption(FormCaption);
    m_use.rs232.FillPortLists(true);
    m_use.state.StopLinkWork = false;
    m_use.state.StopSearch = false;
    fillTabs();
    if (options.SMTPTimeout.empty())
        options.SMTPTimeout = StandardTimeout;
    if (options.FTPTimeout.empty())
        options.FTPTimeout = StandardTimeout;
    m_snapshot = TakeSnapshot(options);
    m_use.viewing.RefreshFoundLoggers();
    fillControls();
    fillAccounts();
    if (!m_use.tables.HaveFoundLoggers)
        askFirstUse();
    if (m_use.end.Ended())
        return;
    if (m_use.state.cbxUnload_Ports.Text().empty())
        m_use.state.cbxUnload_Ports.SetText(AllPorts);
    m_ui->cmdApply->setEnabled(false); // the one trace of the handlers that have run
    applyLockControls();
    m_ui->tsOptions->setProperty("HelpContextID", 1100);
    m_use.state.OptionsLoaded = true;
    if (m_use.use.language.LangActive)
        ApplyOptionsLanguage();
    updateToolTips();
}

void frmOptions::fillTabs()
{
    constexpr int FirstTab = 170;
    for (int i = 0; i < m_ui->tsOptions->count(); ++i)
        m_ui->tsOptions->setTabText(i, ToQString(m_use.use.language.Text(FirstTab + i)));
    m_ui->tsOptions->setCurrentIndex(0);
}

void frmOptions::fillControls()
{
    const Options& options = m_use.options;
    // In the order of the page: the first box decides over the second, whose own option must come after it.
    for (const auto& row : m_checks)
        row.box->setChecked(options.*row.option);
    showStored(*m_ui->txtDesktopDir, options.DesktopDir);
    showStored(*m_ui->txtSize, SizeText(options.LogFileSize));

    if (!options.ShowHarvelOnStartup)
        m_ui->chkRunHarvelOnStartup->setChecked(true);
    m_ui->chkRunHarvelOnStartup->setEnabled(options.ShowHarvelOnStartup);
    ApplyAuthenticationState(options.SMTPServerRequiresAuthentication);
    if (const auto stored = AuthenticationRead(options.SMTPAuthenticationType))
        for (const auto& row : m_authentication)
            if (row.kind == *stored)
                row.button->setChecked(true);
    SetFieldEnabled(*m_ui->txtDesktopDir, options.SaveToDesktop);
}

void frmOptions::fillAccounts()
{
    for (QLineEdit* field : {m_ui->txtSMTPSiteID, m_ui->txtFTPSiteID})
        showStored(*field, m_use.options.SiteID);
    ListState& list = m_use.state.cbxUnload_TallyCores;
    list.Select(m_use.options.LastUtallyCore);
    for (const auto& row : m_texts)
        showStored(*row.field, m_use.options.*row.option);
    if (list.Text().empty())
        list.Select(list.Selected() + 1);
}

// No handler runs: what is stored, a character that the filters would drop included, is only shown.
void frmOptions::showStored(QLineEdit& field, std::string_view stored)
{
    const QSignalBlocker loading(field);
    ShowStored(field, stored);
}

void frmOptions::askFirstUse()
{
    const Box question{m_use.use.language.Text(550), boxTitle(), BoxIcon::Question, BoxButtons::YesNo};
    const BoxAnswer answer = ShowInFront(m_use.use, question);
    if (answer == BoxAnswer::Yes) {
        // A port list that has changed since the last search may have nothing chosen.
        if (m_use.state.cbxUnload_Ports.Text().empty())
            m_use.state.cbxUnload_Ports.SetText(AllPorts);
        ShowPlaced(*this);
        FocusOk();
        m_use.use.waiting.WaitMs(100);
        // Not by a click: in a locked installation, too, the user has said Yes.
        m_use.portSearch.cmdUnload_FindTallycores_Click();
        m_use.use.progress.HideMessageForm();
    } else if (!m_use.state.LaunchCommand.empty()) {
        m_use.end.EndProgram();
    }
}

void frmOptions::applyLockControls()
{
    for (QWidget* button : {m_ui->cmdUnload_Add, m_ui->cmdUnload_Delete, m_ui->cmdUnload_FindTallycores})
        button->setEnabled(!m_use.options.LockControls);
}

void frmOptions::SetControlEnabled(std::string_view control, bool enabled)
{
    if (auto* widget = findChild<QWidget*>(ToQString(control)))
        widget->setEnabled(enabled && !(control == "cmdTerminal" && m_use.state.TerminalOpen)); // one at a time
}

void frmOptions::SetFormEnabled(bool enabled)
{
    setEnabled(enabled);
    updateToolTips();
    showEmptyHint(); // a search ends by enabling the panel
}

void frmOptions::SetCaption(const std::string& caption)
{
    ShowCaption(*this, caption);
}

void frmOptions::FocusOk()
{
    if (!isEnabled())
        return; // the loggers' panels have the word
    activateWindow();
    m_ui->cmdOk->setFocus();
}

void frmOptions::closeEvent(QCloseEvent* event)
{
    if (!isEnabled() && !m_use.end.Ended()) {
        event->ignore();
        raisePanels();
        return;
    }
    unload();
    event->accept();
}

void frmOptions::raisePanels()
{
    for (int number = 1; number <= MaxLoggers; ++number)
        if (LoggerPanel* panel = m_use.panels.At(number); panel && panel->IsVisible())
            panel->SetVisible(true);
}

void frmOptions::unload()
{
    if (m_use.end.Ended())
        return;
    m_use.options.OptionsTop = PixelsToTwips(geometry().y(), *this);
    m_use.options.OptionsLeft = PixelsToTwips(geometry().x(), *this);
    m_use.state.StopLinkWork = true;
    m_use.state.StopSearch = true;
    const ListState& ports = m_use.state.cbxUnload_Ports;
    m_use.options.LastSearch = Holds(ports.Text(), "All Ports") ? "0" : std::to_string(ports.Selected());
    m_use.store.SaveOptions();
    m_use.end.EndProgram();
}

void frmOptions::reject()
{
    if (m_ui->cmdCancel->isEnabled())
        cmdCancel_Click();
}

} // namespace harvelop
