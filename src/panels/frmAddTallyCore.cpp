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

// What can't be used while a test or a reset runs. The models come back for a new logger only.
constexpr const char* LockedControls[] = {
    "cmdTest",        "cmdOk",        "optRS232",       "optDialup",     "optEthernet",  "cbxBaud", "cbxDataBits",
    "cbxFlowControl", "cbxParity",    "cbxPort",        "cbxStopBits",   "txtSerial",    "txtIP",   "txtTCPPort",
    "cbxModemPort",   "cbxModemBaud", "txtPhoneNumber", "txtInitString", "cmdResetModem"};
constexpr const char* ModelControls[] = {"cbxModel", "cbxSeries"};

template <typename Entries> void fill(QComboBox& list, const Entries& entries)
{
    for (const auto& entry : entries)
        list.addItem(ToQString(entry));
    list.setCurrentIndex(list.count() > 0 ? 0 : -1);
}

enum class IfMissing { Add, Leave };

// Selects an entry. A stored value that the list lacks is added, so that Ok changes nothing the user didn't.
void choose(QComboBox& list, const std::string& stored, IfMissing ifMissing = IfMissing::Add)
{
    const QString text = ToQString(stored);
    if (list.findText(text) < 0 && (text.isEmpty() || ifMissing == IfMissing::Leave))
        return;
    if (list.findText(text) < 0)
        list.insertItem(0, text);
    list.setCurrentIndex(list.findText(text));
}

std::string chosen(const QComboBox& list)
{
    return ToText(list.currentText());
}

std::string typed(const QLineEdit& field)
{
    return ToText(field.text());
}

} // namespace

frmAddTallyCore::frmAddTallyCore(const AddServices& services, QWidget* owner)
    : QDialog(owner),
      m_use(services),
      m_ui(std::make_unique<Ui::frmAddTallyCore>()),
      m_changing(services.state.EditingExisting)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    fillLists();
    connectControls();
    m_ui->optRS232->setChecked(true);
    opt_Click("RS232");
    const LoggerRecord* record = m_use.tables.Record(m_use.state.CurrentLogger);
    if (m_changing) {
        m_use.state.AddRebuildPending = false; // left by an adding that was cancelled
        SetCaption(" Change Settings");
        showValues(ValuesOf(record ? *record : LoggerRecord(), values()));
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

void frmAddTallyCore::fillLists()
{
    fill(*m_ui->cbxModel, AddModels);
    fill(*m_ui->cbxSeries, AddSeries);
    for (QComboBox* ports : {m_ui->cbxPort, m_ui->cbxModemPort})
        fill(*ports, AddPorts(m_use.options.AvailablePorts));
    for (QComboBox* bauds : {m_ui->cbxBaud, m_ui->cbxModemBaud})
        fill(*bauds, AddBauds);
    fill(*m_ui->cbxParity, AddParities);
    fill(*m_ui->cbxDataBits, AddDataBits);
    fill(*m_ui->cbxStopBits, AddStopBits);
    fill(*m_ui->cbxFlowControl, AddFlows);
    const AddValues first;
    choose(*m_ui->cbxBaud, first.baud);
    choose(*m_ui->cbxModemBaud, first.modemBaud);
    choose(*m_ui->cbxDataBits, first.dataBits);
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

void frmAddTallyCore::showValues(const AddValues& values)
{
    for (const auto& [list, text] :
         {std::pair{m_ui->cbxModel, &values.model}, std::pair{m_ui->cbxSeries, &values.series}}) {
        list->insertItem(0, ToQString(*text));
        list->setCurrentIndex(0);
        EnableWithReason(*list, false, ModelStays);
    }
    for (const auto& [button, kind] : {std::pair{m_ui->optDialup, Dialup}, std::pair{m_ui->optEthernet, Ethernet}})
        if (values.kind == kind) {
            button->setChecked(true);
            opt_Click(kind);
        }
    for (const auto& [field, text] :
         {std::pair{m_ui->txtSerial, &values.serial}, std::pair{m_ui->txtPassword, &values.password},
          std::pair{m_ui->txtPhoneNumber, &values.phone}, std::pair{m_ui->txtInitString, &values.init},
          std::pair{m_ui->txtIP, &values.address}, std::pair{m_ui->txtTCPPort, &values.tcpPort}})
        ShowStored(*field, *text);
    for (const auto& [list, text] :
         {std::pair{m_ui->cbxPort, &values.port}, std::pair{m_ui->cbxBaud, &values.baud},
          std::pair{m_ui->cbxParity, &values.parity}, std::pair{m_ui->cbxDataBits, &values.dataBits},
          std::pair{m_ui->cbxStopBits, &values.stopBits}, std::pair{m_ui->cbxFlowControl, &values.flow},
          std::pair{m_ui->cbxModemPort, &values.modemPort}})
        choose(*list, *text);
    choose(*m_ui->cbxModemBaud, values.modemBaud, IfMissing::Leave); // what adding has stored there is no speed
}

AddValues frmAddTallyCore::values() const
{
    AddValues values;
    values.model = chosen(*m_ui->cbxModel);
    values.series = chosen(*m_ui->cbxSeries);
    values.serial = typed(*m_ui->txtSerial);
    values.password = typed(*m_ui->txtPassword);
    values.kind = m_kind;
    values.port = chosen(*m_ui->cbxPort);
    values.baud = chosen(*m_ui->cbxBaud);
    values.parity = chosen(*m_ui->cbxParity);
    values.dataBits = chosen(*m_ui->cbxDataBits);
    values.stopBits = chosen(*m_ui->cbxStopBits);
    values.flow = chosen(*m_ui->cbxFlowControl);
    values.modemPort = chosen(*m_ui->cbxModemPort);
    values.phone = typed(*m_ui->txtPhoneNumber);
    values.modemBaud = chosen(*m_ui->cbxModemBaud);
    values.init = typed(*m_ui->txtInitString);
    values.address = typed(*m_ui->txtIP);
    values.tcpPort = typed(*m_ui->txtTCPPort);
    values.timeout = typed(*m_ui->txtConnectionTimeout);
    return values;
}

void frmAddTallyCore::opt_Click(const char* kind)
{
    m_kind = kind;
    m_use.link.ConnectionKind = kind;
    const bool modem = kind == std::string_view(Dialup);
    const bool network = kind == std::string_view(Ethernet);
    m_ui->fraComPort->setVisible(!modem && !network);
    m_ui->fraDialup->setVisible(modem);
    m_ui->fraEthernet->setVisible(network);
    m_ui->txtPassword->setVisible(!network);
    m_ui->lblPassword->setVisible(!network);
    m_ui->cmdResetModem->setVisible(modem);
}

void frmAddTallyCore::cbxModel_Click()
{
    m_ui->cbxSeries->setVisible(!IsKR4(chosen(*m_ui->cbxModel)));
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
    m_ui->cmdCancel->setFocus();
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
    setWindowTitle(ToQString(caption));
}

} // namespace harvelop
