#include "panels/frmEditMDB.h"

#include "core/text_lines.h"
#include "panels/frmSupport.h"
#include "panels/table_name_rules.h"
#include "ui_frmEditMDB.h"

namespace harvelop
{

namespace
{

constexpr int RoomForWideLetters = 8;

} // namespace

frmEditMDB::frmEditMDB(const PanelServices& services, QWidget* owner)
    : QDialog(owner), m_use(services), m_ui(std::make_unique<Ui::frmEditMDB>()), m_logger(services.state.CurrentLogger)
{
    m_ui->setupUi(this);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmEditMDB::cmdOk_Click);
    const LoggerRecord* record = m_use.tables.Record(m_logger);
    showRows(record ? *record : LoggerRecord());
    showTexts();
}

frmEditMDB::~frmEditMDB() = default;

void frmEditMDB::showRows(const LoggerRecord& record)
{
    const std::vector<std::string> captions = ScheduleCaptions(record.LoggerModel);
    for (size_t i = 0; i < record.LoggerTableNames.size(); ++i) {
        const QString number = "_" + QString::number(i);
        auto* label = findChild<QLabel*>("lblSchedule" + number);
        auto* name = findChild<QLineEdit*>("txtMDBTableNames" + number);
        label->setVisible(i < captions.size());
        name->setVisible(i < captions.size());
        if (i >= captions.size())
            continue;
        QString caption = ToQString(captions[i]);
        label->setText(caption.insert(caption.size() - 1, '&')); // its letter is its key
        name->setMaxLength(TableNameLength);
        SetWidthInCharacters(*name, TableNameLength + RoomForWideLetters);
        // A text that is filled in counts as a change too, but only what is typed is looked at.
        connect(name, &QLineEdit::textChanged, this, [this] { m_use.state.AllowedChars = TableNameChars; });
        connect(name, &QLineEdit::textEdited, this, [name] { TakeBackTyped(*name, TableNameChars); });
        ShowStored(*name, ShownEntry(record.LoggerTableNames[i]));
        m_names.push_back(name);
    }
}

void frmEditMDB::showTexts()
{
    const LanguageTables& language = m_use.use.language;
    setWindowTitle(ToQString(language.Text(160)));
    WidgetCaption ok(*m_ui->cmdOk);
    if (language.LangActive)
        ApplyLangFont(language, ok, {{161, ""}});
}

void frmEditMDB::cmdOk_Click()
{
    if (LoggerRecord* record = m_use.tables.Record(m_logger)) {
        storeNames(*record);
        if (const auto duplicate = FirstDuplicate(record->LoggerTableNames)) {
            tellDuplicate(*duplicate);
            return;
        }
    }
    m_use.records.BuildLoggerSettings(m_logger);
    m_use.store.SaveOptions();
    accept();
}

void frmEditMDB::storeNames(LoggerRecord& record)
{
    for (size_t i = 0; i < m_names.size(); ++i) {
        const std::string kept = KeepAllowed(ToText(m_names[i]->text()), m_use.state.AllowedChars);
        m_names[i]->setText(ToQString(kept));
        record.LoggerTableNames[i] = kept;
    }
}

void frmEditMDB::tellDuplicate(size_t entry)
{
    const QPointer<QLineEdit> name = entry < m_names.size() ? m_names[entry] : nullptr;
    m_use.use.progress.HideMessageForm();
    m_use.use.dialogs.Show({m_use.use.language.Text(162) + ".     ", " tallyCore Harvel", BoxIcon::Critical});
    if (!name)
        return;
    name->setFocus();
    name->selectAll();
}

} // namespace harvelop
