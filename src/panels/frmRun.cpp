#include "panels/frmRun.h"

#include "panels/frmSupport.h"
#include "panels/run_rules.h"
#include "panels/table_name_rules.h"
#include "ui_frmRun.h"

namespace harvelop
{

frmRun::frmRun(const PanelServices& services, QWidget* owner)
    : QDialog(owner),
      m_use(services),
      m_ui(std::make_unique<Ui::frmRun>()),
      m_logger(services.state.CurrentLogger),
      m_program(services.state.RunEditKind == "Program"),
      m_stored(m_program ? &LoggerRecord::LoggerRunProgram : &LoggerRecord::LoggerRunCommand)
{
    m_ui->setupUi(this);
    setWindowTitle(ToQString(" " + m_use.use.language.Text(m_program ? 231 : 232)));
    constexpr int UsualCharacters = 60;
    QLineEdit& field = *m_ui->txtRun;
    field.setMinimumWidth(field.fontMetrics().averageCharWidth() * UsualCharacters);
    field.setAccessibleName(windowTitle().trimmed());
    field.setReadOnly(m_program);
    connect(&field, &QLineEdit::textChanged, this, &frmRun::txtRun_Change);
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, &frmRun::cmdEdit_Click);
    if (const LoggerRecord* record = m_use.tables.Record(m_logger))
        ShowStored(field, ShownEntry(record->*m_stored));
    showWord(m_program ? Word::Edit : Word::Ok);
    if (m_program)
        m_ui->cmdEdit->setFocus();
}

frmRun::~frmRun() = default;

void frmRun::cmdEdit_Click()
{
    if (m_word == Word::Edit) {
        chooseProgram();
        return;
    }
    if (LoggerRecord* record = m_use.tables.Record(m_logger))
        record->*m_stored = text();
    accept();
}

void frmRun::chooseProgram()
{
    const QPointer<frmRun> self(this);
    m_ui->cmdEdit->setEnabled(false); // one chooser at a time
    const std::string path =
        m_use.use.dialogs.OpenFile(" Choose a Program to Run After Unload  ...", m_use.state.AppPath, "exe");
    if (!self)
        return;
    m_ui->cmdEdit->setEnabled(true);
    m_ui->cmdEdit->setFocus();
    if (path.empty())
        return;
    ShowStored(*m_ui->txtRun, path);
    if (WhyNotStored(path).empty()) // otherwise another one can be chosen
        showWord(Word::Ok);
}

// What is shown is what is stored: a line edit keeps the line ends of a paste and draws them as blanks. Those that undo
// brings back stay until the text is stored, or there would be no undoing beyond them.
void frmRun::txtRun_Change()
{
    QLineEdit& field = *m_ui->txtRun;
    const std::string line = text();
    if (line != ToText(field.text()) && !field.isRedoAvailable()) {
        const std::string before = WithoutLineEnds(ToText(field.text().left(field.cursorPosition())));
        field.selectAll();
        field.insert(ToQString(line));
        field.setCursorPosition(static_cast<int>(ToQString(before).size()));
    }
    showHint();
}

void frmRun::showWord(Word word)
{
    m_word = word;
    const LanguageTables& language = m_use.use.language;
    const int number = static_cast<int>(word);
    WidgetCaption button(*m_ui->cmdEdit);
    if (language.LangActive)
        ApplyLangFont(language, button, {{number, ""}});
    else
        button.SetCaption(language.Text(number));
    showHint();
}

void frmRun::showHint()
{
    const std::string why(WhyNotStored(text()));
    m_ui->lblHint->setText(ToQString(why));
    m_ui->txtRun->setAccessibleDescription(ToQString(why));
    EnableWithReason(*m_ui->cmdEdit, m_word == Word::Edit || why.empty(), why.c_str());
}

std::string frmRun::text() const
{
    const std::string shown = ToText(m_ui->txtRun->text());
    return m_program ? shown : WithoutLineEnds(shown);
}

} // namespace harvelop
