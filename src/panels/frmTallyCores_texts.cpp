// What the panel shows of its logger that the user can't change: captions, the model's look and lines.
#include "identify/model_descriptions.h"
#include "panels/frmSupport.h"
#include "panels/frmTallyCores.h"
#include "panels/panel_rules.h"
#include "ui_frmTallyCores.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QTabBar>

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

} // namespace

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

void frmTallyCores::DescribeModel(const std::string& model)
{
    const std::string series = m_use.search.IdentifiedSeries.Get(m_use.state.CurrentLogger);
    const ModelDescription description = harvelop::DescribeModel(model, series, m_use.use.language.LangActive);
    for (const std::string_view name : SpecificationLabels)
        label(name).clear();
    for (const SpecificationLine& line : description.lines) {
        if (line.number == 0)
            label(line.label).setText(ToQString(line.text));
        else
            caption(label(line.label), line.number, line.text);
    }
    for (const std::string_view name : SpecificationLabels)
        label(name).setVisible(!label(name).text().isEmpty());
    m_ui->Frame1->setVisible(!description.lines.empty());
    if (description.flashEnabled)
        for (QPushButton* button : {m_ui->cmdFlash, m_ui->cmdFlashClear})
            enable(*button, *description.flashEnabled,
                   "Of the older tallyCores only those of Series 3 keep programs in Flash RAM.");
}

QLabel& frmTallyCores::label(std::string_view name) const
{
    return *findChild<QLabel*>(ToQString(name));
}

void frmTallyCores::SetSerial(const std::string& serial)
{
    m_ui->lblSerialNumber->setText(ToQString("Serial : " + serial));
}

void frmTallyCores::SetUp(const PanelSetUp& setUp)
{
    showPicture(setUp.picture);
    m_ui->fraKR400Schedules->setVisible(setUp.known && setUp.kr4Schedules);
    m_ui->fraKR200Schedules->setVisible(setUp.known && !setUp.kr4Schedules);
    m_ui->lblModel->setText(ToQString("Model : " + setUp.model));
    m_ui->lblModel->setMinimumWidth(TwipsToPixels(setUp.modelWidth, *this));
    SetSerial(setUp.serial);
    m_ui->lblModel->setVisible(setUp.known);
    m_ui->lblSerialNumber->setVisible(setUp.known);
    m_ui->lblFirmwareVersion->setVisible(!setUp.reduced);
    m_ui->lblHeading->setVisible(setUp.reduced);
    m_ui->lblHeading->setEnabled(setUp.reduced);
    m_ui->tsTallycores->tabBar()->setEnabled(!setUp.reduced);
    if (setUp.reduced) {
        for (QPushButton* button : {m_ui->cmdSetCom, m_ui->cmdCreateIcon})
            enable(*button, false, "This tallyCore is of no known model.");
        m_ui->cmdOk->setFocus();
    }
}

void frmTallyCores::showPicture(int item)
{
    initPictures();
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

} // namespace harvelop
