#include "panels/frmTallyCores.h"

#include "core/text_lines.h"
#include "core/windows_version.h"
#include "panels/frmSupport.h"
#include "panels/frmTallyCoresGrid.h"
#include "ui_frmTallyCores.h"

#include <QCloseEvent>
#include <QPainter>
#include <QSvgRenderer>
#include <QTabBar>

#include <algorithm>

// Outside every namespace, as the macro wants it: the linker leaves out resources of a library that nothing names.
static void initPictures()
{
    Q_INIT_RESOURCE(panels);
}

namespace harvelop
{

namespace
{

constexpr int Tabs = 3;
constexpr int FirstTabText = 50;

// The numbers of the captions that a language file replaces. `fraTallyCore` and `lblCard` follow the model.
struct NumberedControl {
    int number;
    const char* control;
};
constexpr NumberedControl NumberedControls[] = {
    {53, "fraProgram"},
    {54, "cmdProgram"},
    {55, "cmdProgramClear"},
    {56, "lblProgram"},
    {57, "fraCard"},
    {58, "cmdCard"},
    {59, "cmdCardClear"},
    {61, "fraFlash"},
    {62, "cmdFlash"},
    {63, "cmdFlashClear"},
    {64, "lblFlash"},
    {65, "fraKR400Schedules"}, // only this grid's: meant
    {66, "lblRecords8"},
    {67, "lblUnloadDescription"},
    {68, "fraUnload_File"},
    {69, "chkSendUnloadToDisk"},
    {70, "cmdEditDiskList"},
    {71, "fraMdb"},
    {72, "chkMdb"},
    {73, "cmdEditMDB"},
    {74, "fraUnload_Email"},
    {75, "chkSendUnloadViaEmail"},
    {76, "cmdEditEmailList"},
    {77, "fraUnload_FTP"},
    {78, "chkSendUnloadViaFTP"},
    {79, "cmdTallyCoresUnload"},
    {80, "cmdRun"},
    {81, "cmdCommand"},
    {83, "cmdSetCom"},
    {84, "cmdCreateIcon"},
    {85, "cmdUpgradeFirmware"},
    {86, "Frame1"},
    {98, "cmdOk"},
    {99, "cmdCancel"},
    {100, "cmdApply"},
};

// Why a control can't be used, while it can't.
void enableWithReason(QWidget& control, bool enabled, const char* whyNot)
{
    control.setEnabled(enabled);
    control.setToolTip(enabled ? QString() : QString(whyNot));
}

} // namespace

frmTallyCores::frmTallyCores(const PanelServices& services)
    : QDialog(nullptr, Qt::Window), m_use(services), m_ui(std::make_unique<Ui::frmTallyCores>())
{
    initPictures();
    m_ui->setupUi(this);
    // Whether the program goes on is not for the last open window to say.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_gridKR400 = new ScheduleGrid(*m_ui->fraKR400Schedules, "KR400", ScheduleLetters("KR4"), '8');
    m_gridKR200 = new ScheduleGrid(*m_ui->fraKR200Schedules, "KR200", ScheduleLetters(""), '5');
    m_ui->fraKR400Schedules->hide();
    m_ui->fraKR200Schedules->hide();
    m_ui->lblHeading->hide();
    constexpr int DescriptionCharacters = 32;
    m_ui->txtDescription->setMinimumWidth(m_ui->txtDescription->fontMetrics().averageCharWidth() *
                                          DescriptionCharacters);
    enableApply(false);
    connectControls();
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
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmTallyCores::cmdOk_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmTallyCores::Unload);
    connect(m_ui->cmdApply, &QPushButton::clicked, this, &frmTallyCores::cmdApply_Click);
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
    m_ui->cmdCard->setEnabled(!isKR4());
    m_ui->cmdCardClear->setEnabled(!isKR4());
    if (isKR4())
        caption(*m_ui->lblCard, 101);
    if (m_use.use.language.LangActive)
        ApplyPanelLanguage();
}

void frmTallyCores::showLoaded(const PanelValues& values, const LoggerRecord& record)
{
    m_ui->chkMdb->setChecked(values.mdb);
    grid().Show(values);
    m_ui->chkSendUnloadToDisk->setChecked(values.toDisk);
    m_ui->chkSendUnloadViaEmail->setChecked(values.viaEmail);
    m_ui->chkSendUnloadViaFTP->setChecked(values.viaFTP);
    showDelivery(values.emailEnabled, values.ftpEnabled);
    m_ui->cmdSetCom->setEnabled(m_escCancels);
    m_ui->cmdCreateIcon->setEnabled(m_escCancels);
    ShowStored(*m_ui->txtDescription, values.description);
    showTexts(record);
    showStoredData(ScheduleLetters(record.LoggerModel));
    Place(500);
    SelectTab(record.LoggerTab);
}

void frmTallyCores::showTexts(const LoggerRecord& record)
{
    const LanguageTables& language = m_use.use.language;
    m_ui->txtSaveFolder->setText(ToQString(record.LoggerSaveFolder));
    caption(*m_ui->fraTallyCore, 82, " " + record.LoggerModel);
    m_ui->lblFirmwareVersion->setText(ToQString(language.Text(804) + " : " + record.LoggerVersion));
    if (language.LangActive) {
        QTabBar& tabs = *m_ui->tsTallycores->tabBar();
        for (int i = 0; i < Tabs; ++i)
            m_ui->tsTallycores->setTabText(i, ToQString(language.Text(FirstTabText + i)));
        WidgetCaption(tabs).SetFontName(language.LangFontName(FirstTabText));
        WidgetCaption(tabs).SetFontSize(language.LangFontSize(FirstTabText));
    }
    const auto lines = m_ui->Frame1->findChildren<QLabel*>();
    m_ui->Frame1->setVisible(
        std::any_of(lines.begin(), lines.end(), [](QLabel* line) { return !line->text().isEmpty(); }));
}

void frmTallyCores::showStoredData(std::string_view letters)
{
    constexpr int Figures = 7;
    for (int i = 0; i < MaxSchedules; ++i) {
        const QString number = "_" + QString::number(i);
        const bool used = i < static_cast<int>(letters.size());
        auto* letter = findChild<QLabel*>("lblData" + number);
        letter->setVisible(used);
        letter->setText(used ? QString(QChar(letters[static_cast<size_t>(i)])) : QString());
        for (const auto& [name, where] : {std::pair{"txtInternal", ", bytes in internal memory"},
                                          std::pair{"txtCard", ", bytes on the memory card"}}) {
            auto* box = findChild<QLineEdit*>(name + number);
            SetWidthInCharacters(*box, Figures);
            box->setVisible(used);
            box->setAccessibleName("Schedule " + letter->text() + where);
        }
    }
}

PanelValues frmTallyCores::Values() const
{
    PanelValues values;
    grid().Read(values);
    values.mdb = m_ui->chkMdb->isChecked();
    values.toDisk = m_ui->chkSendUnloadToDisk->isChecked();
    values.viaEmail = m_ui->chkSendUnloadViaEmail->isChecked();
    values.viaFTP = m_ui->chkSendUnloadViaFTP->isChecked();
    values.emailEnabled = m_ui->chkSendUnloadViaEmail->isEnabledTo(m_ui->fraUnload_Email);
    values.ftpEnabled = m_ui->chkSendUnloadViaFTP->isEnabledTo(m_ui->fraUnload_FTP);
    values.description = ToText(m_ui->txtDescription->text());
    return values;
}

void frmTallyCores::SetUp(const PanelSetUp& setUp)
{
    showPicture(setUp.picture);
    m_ui->fraKR400Schedules->setVisible(setUp.known && setUp.kr4Schedules);
    m_ui->fraKR200Schedules->setVisible(setUp.known && !setUp.kr4Schedules);
    m_ui->lblModel->setText(ToQString("Model : " + setUp.model));
    m_ui->lblModel->setMinimumWidth(TwipsToPixels(setUp.modelWidth, *this));
    m_ui->lblSerialNumber->setText(ToQString("Serial : " + setUp.serial));
    m_ui->lblModel->setVisible(setUp.known);
    m_ui->lblSerialNumber->setVisible(setUp.known);
    m_ui->lblFirmwareVersion->setVisible(!setUp.reduced);
    m_ui->lblHeading->setVisible(setUp.reduced);
    m_ui->lblHeading->setEnabled(setUp.reduced);
    m_ui->tsTallycores->tabBar()->setEnabled(!setUp.reduced);
    if (setUp.reduced) {
        m_ui->cmdSetCom->setEnabled(false);
        m_ui->cmdCreateIcon->setEnabled(false);
        m_ui->cmdOk->setFocus();
    }
}

void frmTallyCores::showPicture(int item)
{
    constexpr qreal DrawnForDpi = 96;
    QSvgRenderer drawing(ToQString(PictureFile(item)));
    const QSizeF size = QSizeF(drawing.defaultSize()) * logicalDpiX() / DrawnForDpi;
    QPixmap picture((size * devicePixelRatioF()).toSize());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter, QRectF(QPointF(), size));
    painter.end();
    m_ui->imgTallyCores->setPixmap(picture);
    m_ui->imgTallyCores->setProperty("picture", item);
}

void frmTallyCores::SetCaption(const std::string& caption)
{
    setWindowTitle(ToQString(caption));
}

void frmTallyCores::Place(int twips)
{
    constexpr double Unplaced = 1000; // where the options panel opens first
    const auto* options = dynamic_cast<const QWidget*>(m_use.forms.options);
    const bool placed = m_use.options.OptionsLeft != 0 || m_use.options.OptionsTop != 0;
    const double left = options  ? PixelsToTwips(options->geometry().x(), *options)
                        : placed ? m_use.options.OptionsLeft
                                 : Unplaced;
    const double top = options  ? PixelsToTwips(options->geometry().y(), *options)
                       : placed ? m_use.options.OptionsTop
                                : Unplaced;
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

void frmTallyCores::SelectTab(int tab)
{
    m_ui->tsTallycores->setCurrentIndex(tab - 1);
}

void frmTallyCores::tsTallycores_Click(int index)
{
    if (LoggerRecord* shown = record())
        shown->LoggerTab = static_cast<std::int16_t>(index + 1);
}

void frmTallyCores::SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled)
{
    const PanelValues before = Values();
    const bool email = emailEnabled.value_or(before.emailEnabled);
    const bool ftp = ftpEnabled.value_or(before.ftpEnabled);
    m_ui->chkSendUnloadViaEmail->setChecked(before.viaEmail && email);
    m_ui->chkSendUnloadViaFTP->setChecked(before.viaFTP && ftp);
    showDelivery(email, ftp);
    if ((before.viaEmail && !email) || (before.viaFTP && !ftp))
        enableApply(true);
}

void frmTallyCores::showDelivery(bool emailEnabled, bool ftpEnabled)
{
    enableWithReason(*m_ui->chkSendUnloadViaEmail, emailEnabled, "The email account in the options is not filled in.");
    enableWithReason(*m_ui->chkSendUnloadViaFTP, ftpEnabled, "The FTP account in the options is not filled in.");
}

void frmTallyCores::changeGrid(const std::function<void(PanelValues&, int rows)>& rule)
{
    PanelValues values = Values();
    rule(values, grid().Rows());
    grid().Show(values);
    enableApply(true);
}

void frmTallyCores::chkMdb_Click()
{
    const bool on = m_ui->chkMdb->isChecked();
    if (LoggerRecord* shown = record())
        shown->LoggerMdbOn = on ? "1" : "0";
    m_ui->cmdEditMDB->setEnabled(on);
    changeGrid(ApplyMdbRule);
}

void frmTallyCores::txtKR400_Change(QLineEdit* box)
{
    enableApply(true);
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const QString typed = box->text();
    const QPointer<QLineEdit> field(box);
    for (auto wrong = std::count_if(typed.begin(), typed.end(), std::not_fn(isDigit)); wrong > 0 && field; --wrong)
        m_use.use.dialogs.Show({m_use.use.language.Text(533) + ".     ", "", BoxIcon::Critical});
    if (!field)
        return;
    QString kept;
    std::copy_if(typed.begin(), typed.end(), std::back_inserter(kept), isDigit);
    if (kept == typed)
        return;
    const auto caret = std::count_if(typed.begin(), typed.begin() + box->cursorPosition(), isDigit);
    box->setText(kept);
    box->setCursorPosition(static_cast<int>(caret));
}

void frmTallyCores::txtDescription_Change()
{
    enableApply(true);
    const QString text = m_ui->txtDescription->text();
    const int caret = m_ui->txtDescription->cursorPosition();
    const auto allowed = [](QChar c) {
        return c.unicode() < 0x80 && DescriptionChars.find(c.toLatin1()) != std::string_view::npos;
    };
    if (caret > 0 && !allowed(text.at(caret - 1))) {
        m_ui->txtDescription->backspace(); // comes back here with the shorter text
        return;
    }
    enableMdb(!text.isEmpty());
}

// Without a description there is no database to write to.
void frmTallyCores::enableMdb(bool enabled)
{
    enableWithReason(*m_ui->chkMdb, enabled, "Give the tallyCore a description first.");
    if (!enabled && m_ui->chkMdb->isChecked()) {
        m_ui->chkMdb->setChecked(false);
        chkMdb_Click();
    }
}

void frmTallyCores::StripDescription()
{
    const std::string text = ToText(m_ui->txtDescription->text());
    const std::string kept = KeepAllowed(text, DescriptionChars);
    if (kept == text)
        return;
    m_ui->txtDescription->setText(ToQString(kept));
    enableMdb(!kept.empty());
}

void frmTallyCores::ApplyPanelLanguage()
{
    for (const auto& [number, name] : NumberedControls)
        caption(*findChild<QWidget*>(name), number);
    if (!isKR4())
        caption(*m_ui->lblCard, 60);
}

void frmTallyCores::caption(QWidget& control, int number, const std::string& suffix)
{
    const LanguageTables& language = m_use.use.language;
    WidgetCaption captioned(control);
    if (language.LangActive)
        ApplyLangFont(language, captioned, {{number, suffix}});
    else
        captioned.SetCaption(language.Text(number) + suffix);
}

void frmTallyCores::cmdApply_Click()
{
    StripDescription();
    enableApply(false);
    StorePanel(m_use, m_tag);
}

void frmTallyCores::cmdOk_Click()
{
    StripDescription();
    StorePanel(m_use, m_tag);
    Unload();
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
        m_ui->cmdEditMDB->setEnabled(false);
    if (m_ui->txtDescription->text().isEmpty())
        enableWithReason(*m_ui->chkMdb, false, "Give the tallyCore a description first.");
}

void frmTallyCores::enableApply(bool enabled)
{
    enableWithReason(*m_ui->cmdApply, enabled, "Nothing has changed.");
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
