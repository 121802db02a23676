#include "panels/frmAddTallyCore.h"

#include "panels/frmSupport.h"
#include "ui_frmAddTallyCore.h"

#include <QWindow>

#include <algorithm>
#include <utility>

namespace harvelop
{

namespace
{

constexpr const char* Dialup = "Dialup";
constexpr const char* Ethernet = "Ethernet";

constexpr int TimeoutFigures = 6;

constexpr const char* Busy = "A test is running. Cancel ends it.";
constexpr const char* ModelStays = "The model of a stored tallyCore can't be changed.";

// The controls that a language file names, by number from 1.
constexpr const char* NumberedControls[] = {"lblModel",
                                            "lblSerial",
                                            "lblPassword",
                                            "fraConnection",
                                            "optRS232",
                                            "optDialup",
                                            "optEthernet",
                                            "cmdTest",
                                            "cmdResetModem",
                                            "fraComPort",
                                            "lblComport_Number",
                                            "lblComPort_BAUD",
                                            "lblComport_Parity",
                                            "lblComPort_DataBits",
                                            "lblComPort_StopBits",
                                            "lblComPort_FlowControl",
                                            "fraDialup",
                                            "lblModem_ComPort",
                                            "lblModem_Number",
                                            "lblModem_Baud",
                                            "lblModem_InitString",
                                            "fraEthernet",
                                            "lblEthernet_IP",
                                            "lblEthernet_TCPPort",
                                            "cmdCancel",
                                            "cmdOk"};

// What can't be used while a test or a reset runs: all but Cancel. The models come back for a new logger only.
constexpr const char* LockedControls[] = {"cmdTest",       "cmdOk",          "optRS232",
                                          "optDialup",     "optEthernet",    "cbxBaud",
                                          "cbxDataBits",   "cbxFlowControl", "cbxParity",
                                          "cbxPort",       "cbxStopBits",    "txtSerial",
                                          "txtPassword",   "txtIP",          "txtTCPPort",
                                          "cbxModemPort",  "cbxModemBaud",   "txtPhoneNumber",
                                          "txtInitString", "cmdResetModem",  "txtConnectionTimeout"};
constexpr const char* ModelControls[] = {"cbxModel", "cbxSeries"};

} // namespace

frmAddTallyCore::frmAddTallyCore(const AddServices& services, QWidget* owner)
    : QDialog(owner),
      m_use(services),
      m_ui(std::make_unique<Ui::frmAddTallyCore>()),
      m_changing(services.state.EditingExisting)
{
    m_ui->setupUi(this);
    LabelLists(*this);
    setAttribute(Qt::WA_QuitOnClose, false);
    fillLists();
    connectControls();
    m_ui->optRS232->setChecked(true);
    opt_Click("RS232");
    const LoggerRecord* record = m_use.tables.Record(m_use.state.CurrentLogger);
    if (m_changing) {
        m_use.state.AddRebuildPending = false; // left by an adding that was cancelled
        SetCaption(" Change Settings");
        showStored(ValuesOf(record ? *record : LoggerRecord(), values()));
    }
    if (record)
        ShowStored(*m_ui->txtConnectionTimeout, record->LoggerTimeout);
    if (m_use.use.language.LangActive)
        applyLanguage();
    m_use.forms.add = this;
    m_use.state.AddDialogOpen = true;
}

frmAddTallyCore::~frmAddTallyCore()
{
    Unload();
}

void frmAddTallyCore::connectControls()
{
    connect(m_ui->optRS232, &QRadioButton::clicked, this, [this] { opt_Click("RS232"); });
    connect(m_ui->optDialup, &QRadioButton::clicked, this, [this] { opt_Click(Dialup); });
    connect(m_ui->optEthernet, &QRadioButton::clicked, this, [this] { opt_Click(Ethernet); });
    connect(m_ui->cbxModel, &QComboBox::currentIndexChanged, this, &frmAddTallyCore::cbxModel_Click);
    connect(m_ui->cmdTest, &QPushButton::clicked, this, &frmAddTallyCore::cmdTest_Click);
    connect(m_ui->cmdResetModem, &QPushButton::clicked, this, &frmAddTallyCore::cmdResetModem_Click);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmAddTallyCore::cmdOk_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmAddTallyCore::cmdCancel_Click);
    QLineEdit& timeout = *m_ui->txtConnectionTimeout;
    SetWidthInCharacters(timeout, TimeoutFigures);
    connect(&timeout, &QLineEdit::textEdited, this, [&timeout] { TakeBackTyped(timeout, TimeoutChars); });
}

void frmAddTallyCore::applyLanguage()
{
    int number = 0;
    for (const char* name : NumberedControls) {
        WidgetCaption control(*findChild<QWidget*>(name));
        ApplyLangFont(m_use.use.language, control, {{++number, ""}});
    }
}

void frmAddTallyCore::showStored(const AddValues& values)
{
    showValues(values);
    for (QComboBox* list : {m_ui->cbxModel, m_ui->cbxSeries})
        EnableWithReason(*list, false, ModelStays);
    for (const auto& [button, kind] : {std::pair{m_ui->optDialup, Dialup}, std::pair{m_ui->optEthernet, Ethernet}})
        if (values.kind == kind) {
            button->setChecked(true);
            opt_Click(kind);
        }
}

void frmAddTallyCore::opt_Click(const char* kind)
{
    m_kind = kind;
    m_use.link.ConnectionKind = kind;
    const bool modem = kind == std::string_view(Dialup);
    const bool network = kind == std::string_view(Ethernet);
    QWidget* const shown = network ? m_ui->fraEthernet : modem ? m_ui->fraDialup : m_ui->fraComPort;
    // Two at a time would need a larger window; the one that stands already keeps the focus in it.
    for (QWidget* frame : {m_ui->fraComPort, m_ui->fraDialup, m_ui->fraEthernet})
        if (frame != shown)
            frame->hide();
    shown->show();
    m_ui->txtPassword->setVisible(!network);
    m_ui->lblPassword->setVisible(!network);
    m_ui->cmdResetModem->setVisible(modem);
}

void frmAddTallyCore::cbxModel_Click()
{
    m_ui->cbxSeries->setVisible(!IsKR4(ToText(m_ui->cbxModel->currentText())));
}

void frmAddTallyCore::cmdTest_Click()
{
    runLocked(TestConnection);
}

void frmAddTallyCore::cmdResetModem_Click()
{
    runLocked(ResetModem);
}

void frmAddTallyCore::runLocked(void (*work)(AddServices, const AddValues&))
{
    const QPointer<frmAddTallyCore> self(this);
    const QPointer<QWidget> focused = focusWidget();
    setControlsEnabled(false);
    setFocus(); // not to Cancel: a key held down on the button that was pressed would press it at once
    work(m_use, values());
    if (!self || m_unloaded)
        return;
    setControlsEnabled(true);
    if (focused)
        focused->setFocus();
}

void frmAddTallyCore::setControlsEnabled(bool enabled)
{
    for (const char* name : LockedControls)
        EnableWithReason(*findChild<QWidget*>(name), enabled, Busy);
    for (const char* name : ModelControls)
        EnableWithReason(*findChild<QWidget*>(name), enabled && !m_changing, m_changing ? ModelStays : Busy);
}

void frmAddTallyCore::cmdOk_Click()
{
    if (m_ui->txtConnectionTimeout->text().isEmpty())
        m_ui->txtConnectionTimeout->setText(ToQString(DefaultAddTimeout));
    const QPointer<frmAddTallyCore> self(this);
    StoreLogger(m_use, values());
    if (self)
        Unload();
}

void frmAddTallyCore::cmdCancel_Click()
{
    m_use.state.AbortWait = true;
    m_use.state.StopSearch = true;
    Unload();
}

void frmAddTallyCore::Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    CloseAddDialog(m_use);
    m_use.forms.add = nullptr;
    done(Rejected);
}

void frmAddTallyCore::reject()
{
    m_ui->cmdCancel->click();
}

void frmAddTallyCore::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    SetTopmost(true);
    m_ui->cmdOk->setFocus();
}

// On the window itself: a change of the widget's flags would hide it, and so end its showing.
void frmAddTallyCore::SetTopmost(bool topmost)
{
    if (QWindow* window = windowHandle())
        window->setFlag(Qt::WindowStaysOnTopHint, topmost);
}

std::string frmAddTallyCore::Caption() const
{
    return ToText(windowTitle());
}

void frmAddTallyCore::SetCaption(const std::string& caption)
{
    ShowCaption(*this, caption);
}

} // namespace harvelop
