#include "panels/frmTallyCores.h"

#include "core/windows_version.h"
#include "panels/frmSupport.h"
#include "panels/frmTallyCoresGrid.h"
#include "ui_frmTallyCores.h"

#include <QCloseEvent>

namespace harvelop
{

frmTallyCores::frmTallyCores(const PanelServices& services)
    : QDialog(nullptr, Qt::Window), m_use(services), m_ui(std::make_unique<Ui::frmTallyCores>())
{
    m_ui->setupUi(this);
    // Whether the program goes on is not for the last open window to say.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_gridKR400 = new ScheduleGrid(*m_ui->fraKR400Schedules, "KR400", ScheduleLetters("KR4"), '8');
    m_gridKR200 = new ScheduleGrid(*m_ui->fraKR200Schedules, "KR200", ScheduleLetters(""), '5');
    m_grid = m_gridKR200;
    m_ui->fraKR400Schedules->hide();
    m_ui->fraKR200Schedules->hide();
    m_ui->lblHeading->hide();
    constexpr int DescriptionCharacters = 32;
    m_ui->txtDescription->setMinimumWidth(m_ui->txtDescription->fontMetrics().averageCharWidth() *
                                          DescriptionCharacters);
    for (QLineEdit* field : findChildren<QLineEdit*>())
        if (field->isReadOnly())
            LookReadOnly(*field);
    enableApply(false);
    connectControls();
    connectButtons();
}

frmTallyCores::~frmTallyCores()
{
    m_use.panels.Forget(this);
}

void frmTallyCores::connectControls()
{
    const auto changed = [this] { enableApply(true); };
    for (ScheduleGrid* grid : {m_gridKR400, m_gridKR200}) {
        connect(grid, &ScheduleGrid::BoxClicked, this, changed);
        connect(grid, &ScheduleGrid::HtmlClicked, this, [this] { changeGrid(ApplyHtmlRule); });
        connect(grid, &ScheduleGrid::HeadingClicked, this, [this, grid](GridColumn column) {
            PanelValues values = Values();
            if (ToggleColumn(values, grid->Rows(), column))
                changeGrid([&values](PanelValues& shown, int) { shown = values; });
        });
    }
    connect(m_gridKR400, &ScheduleGrid::RecordsChanged, this, &frmTallyCores::txtKR400_Change);
    connect(m_gridKR200, &ScheduleGrid::RecordsChanged, this, changed); // its text is not checked: meant
    connect(m_ui->chkMdb, &QCheckBox::clicked, this, &frmTallyCores::chkMdb_Click);
    connect(m_ui->chkSendUnloadViaEmail, &QCheckBox::clicked, this, changed);
    connect(m_ui->chkSendUnloadViaFTP, &QCheckBox::clicked, this, changed);
    connect(m_ui->txtDescription, &QLineEdit::textEdited, this, &frmTallyCores::txtDescription_Change);
    connect(m_ui->tsTallycores, &QTabWidget::currentChanged, this, &frmTallyCores::tsTallycores_Click);
}

void frmTallyCores::Load()
{
    m_tag = m_use.state.CurrentLogger;
    AdjustHeight(*this, DescribeWindows(GetVersion()));
    m_escCancels = !m_use.state.SearchRunning && !m_use.state.AddingLogger;
    LoadPanel(m_use, m_tag, [this](const PanelValues& values) {
        if (const LoggerRecord* shown = record())
            showLoaded(values, *shown);
    });
    for (QPushButton* button : {m_ui->cmdCard, m_ui->cmdCardClear})
        enable(*button, !isKR4(), "The memory card follows the internal memory by itself.");
    if (isKR4())
        caption(*m_ui->lblCard, 101);
    if (m_use.use.language.LangActive)
        ApplyPanelLanguage();
}

void frmTallyCores::showLoaded(const PanelValues& values, const LoggerRecord& record)
{
    m_ui->chkMdb->setChecked(values.mdb);
    m_grid = isKR4() ? m_gridKR400 : m_gridKR200;
    m_grid->Show(values);
    m_ui->chkSendUnloadToDisk->setChecked(values.toDisk);
    m_ui->chkSendUnloadViaEmail->setChecked(values.viaEmail);
    m_ui->chkSendUnloadViaFTP->setChecked(values.viaFTP);
    showDelivery(values.emailEnabled, values.ftpEnabled);
    for (QPushButton* button : {m_ui->cmdSetCom, m_ui->cmdCreateIcon})
        enable(*button, m_escCancels, "Close this panel and view the tallyCore again first.");
    ShowStored(*m_ui->txtDescription, values.description);
    if (!values.description.empty())
        m_use.state.AllowedChars = DescriptionChars; // a text that is filled in counts as a change
    showTexts(record);
    showStoredData(ScheduleLetters(record.LoggerModel));
    Place(500);
    DescribeModel(record.LoggerModel);
    SelectTab(record.LoggerTab);
}

PanelValues frmTallyCores::Values() const
{
    PanelValues values;
    m_grid->Read(values);
    values.mdb = m_ui->chkMdb->isChecked();
    values.toDisk = m_ui->chkSendUnloadToDisk->isChecked();
    values.viaEmail = m_ui->chkSendUnloadViaEmail->isChecked();
    values.viaFTP = m_ui->chkSendUnloadViaFTP->isChecked();
    values.emailEnabled = m_ui->chkSendUnloadViaEmail->isEnabledTo(m_ui->fraUnload_Email);
    values.ftpEnabled = m_ui->chkSendUnloadViaFTP->isEnabledTo(m_ui->fraUnload_FTP);
    values.description = ToText(m_ui->txtDescription->text());
    return values;
}

void frmTallyCores::SetCaption(const std::string& caption)
{
    ShowCaption(*this, caption);
}

void frmTallyCores::Place(int twips)
{
    constexpr double Unplaced = 1000; // where the options panel opens first
    const auto* options = dynamic_cast<const QWidget*>(m_use.forms.options);
    double left = m_use.options.OptionsLeft;
    double top = m_use.options.OptionsTop;
    if (options) {
        left = PixelsToTwips(options->geometry().x(), *options);
        top = PixelsToTwips(options->geometry().y(), *options);
    } else if (left == 0 && top == 0) {
        left = top = Unplaced;
    }
    MoveToTwips(*this, left + twips, top + twips);
}

void frmTallyCores::SetVisible(bool visible)
{
    if (!visible) {
        hide();
        return;
    }
    ShowPlaced(*this);
    raise();
    activateWindow();
}

void frmTallyCores::SetControlEnabled(std::string_view control, bool enabled)
{
    auto* widget = findChild<QWidget*>(ToQString(control));
    // One that can't be used anyway keeps its own reason.
    if (widget && widget->isEnabledTo(widget->parentWidget()) != enabled)
        enable(*widget, enabled, "Wait until the work in hand is done.");
}

// A button that does nothing here goes on saying so.
void frmTallyCores::enable(QWidget& control, bool enabled, const char* whyNot)
{
    const QString tip = control.toolTip();
    EnableWithReason(control, enabled, whyNot);
    if (tip == NotAvailable)
        control.setToolTip(tip);
}

void frmTallyCores::SelectTab(int tab)
{
    m_ui->tsTallycores->setCurrentIndex(tab - 1);
}

void frmTallyCores::tsTallycores_Click(int index)
{
    if (LoggerRecord* shown = record())
        shown->LoggerTab = static_cast<std::int16_t>(index + 1);
}

void frmTallyCores::Unload()
{
    if (m_closed)
        return;
    m_closed = true;
    ClosePanel(m_use, m_tag, m_ui->chkMdb->isChecked());
    hide();
    m_use.panels.Forget(this);
    deleteLater();
}

void frmTallyCores::Replaced()
{
    if (isVisible() || m_closed)
        return;
    m_closed = true;
    deleteLater();
}

void frmTallyCores::reject()
{
    if (m_escCancels)
        m_ui->cmdCancel->click();
}

void frmTallyCores::closeEvent(QCloseEvent* event)
{
    Unload();
    event->accept();
}

void frmTallyCores::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    settle();
}

void frmTallyCores::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    settle();
}

// Clears the traces that loading leaves. That a resize does the same, and so makes Apply forget a change, is meant.
void frmTallyCores::settle()
{
    enableApply(false);
    if (!m_ui->chkMdb->isChecked())
        enable(*m_ui->cmdEditMDB, false, OnlyWithMdb);
    if (m_ui->txtDescription->text().isEmpty())
        EnableWithReason(*m_ui->chkMdb, false, "Give the tallyCore a description first.");
}

void frmTallyCores::enableApply(bool enabled)
{
    EnableWithReason(*m_ui->cmdApply, enabled, "Nothing has changed.");
}

bool frmTallyCores::isKR4() const
{
    const LoggerRecord* shown = record();
    return shown && IsKR4(shown->LoggerModel);
}

TallyCorePanels::TallyCorePanels(const PanelServices& services) : m_services(services)
{
    m_services.panels.Make = [this](int) { return make(); };
}

TallyCorePanels::~TallyCorePanels()
{
    m_services.panels.Make = nullptr;
    for (const auto& panel : m_made)
        delete panel.data();
}

LoggerPanel* TallyCorePanels::make()
{
    std::erase_if(m_made, [](const auto& panel) { return panel.isNull(); });
    m_made.emplace_back(new frmTallyCores(m_services));
    return m_made.back().data();
}

} // namespace harvelop
