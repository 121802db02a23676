#include "panels/frmIcon.h"

#include "panels/frmSupport.h"
#include "ui_frmIcon.h"

namespace harvelop
{

frmIcon::frmIcon(const IconQuestion& question, QWidget* owner)
    : QDialog(owner),
      m_language(question.language),
      m_defaultName(question.defaultName),
      m_icon(question.answer),
      m_ui(std::make_unique<Ui::frmIcon>())
{
    constexpr int Characters = 32;
    m_icon = {};
    m_ui->setupUi(this);
    for (QLineEdit* field : {m_ui->txtName, m_ui->txtCommand}) {
        SetWidthInCharacters(*field, Characters);
        field->setMaximumWidth(QWIDGETSIZE_MAX); // a window made larger shows more of long commands
    }
    if (m_language.LangActive)
        applyLanguage();
    showKind();
    connect(m_ui->optCommand, &QRadioButton::toggled, this, &frmIcon::optCommand_Click);
    connect(m_ui->optUnload, &QRadioButton::toggled, this, &frmIcon::optUnload_Click);
    connect(m_ui->chkTerminal, &QCheckBox::toggled, this, &frmIcon::chkTerminal_Click);
    connect(m_ui->txtName, &QLineEdit::textChanged, this, &frmIcon::txtName_Change);
    connect(m_ui->txtCommand, &QLineEdit::textChanged, this, &frmIcon::txtCommand_Change);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmIcon::cmdOk_Click);
}

frmIcon::~frmIcon() = default;

void frmIcon::applyLanguage()
{
    const std::pair<int, QWidget*> captions[] = {
        {564, m_ui->lblName},   {565, m_ui->fraIconType}, {566, m_ui->optCommand},
        {567, m_ui->optUnload}, {568, m_ui->chkTerminal}, {569, m_ui->cmdOk},
    };
    setWindowTitle(ToQString(" " + m_language.Text(563)));
    for (const auto& [number, control] : captions) {
        WidgetCaption caption(*control);
        ApplyLangFont(m_language, caption, {{number, ""}});
    }
}

void frmIcon::optCommand_Click()
{
    if (m_ui->optCommand->isChecked())
        m_icon.IconKind = "Command";
    showKind();
}

void frmIcon::optUnload_Click()
{
    if (m_ui->optUnload->isChecked())
        m_icon.IconKind = "Data";
    showKind();
}

void frmIcon::chkTerminal_Click()
{
    m_icon.IconTerminalMark = m_ui->chkTerminal->isChecked() ? "%" : "";
}

void frmIcon::txtName_Change()
{
    m_icon.IconName = ToText(m_ui->txtName->text());
}

void frmIcon::txtCommand_Change()
{
    m_icon.IconName = ToText(m_ui->txtName->text());
    showOk();
}

void frmIcon::cmdOk_Click()
{
    m_icon.IconCommand = ToText(m_ui->txtCommand->text());
    m_icon.IconCancelled = false;
    close();
}

void frmIcon::showKind()
{
    const bool sends = m_ui->optCommand->isChecked();
    const char* const onlyCommands = "Only for an icon that sends commands.";
    SetFieldEnabled(*m_ui->txtCommand, sends);
    EnableWithReason(*m_ui->txtCommand, sends, onlyCommands);
    EnableWithReason(*m_ui->chkTerminal, sends, onlyCommands);
    showOk();
}

// What Ok would make: whether it can, and under which name of its own.
void frmIcon::showOk()
{
    IconChoice choice = m_icon;
    choice.IconCommand = ToText(m_ui->txtCommand->text());
    const bool chosen = !choice.IconKind.empty();
    const bool ready = chosen && (choice.IconKind == "Data" || !choice.IconCommand.empty());
    m_ui->txtName->setPlaceholderText(ready ? ToQString(UnnamedIcon(choice, m_defaultName)) : QString());
    EnableWithReason(*m_ui->cmdOk, ready,
                     chosen ? "Type the commands to send first." : "Choose what the icon is to do first.");
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the panel that it came from may go meanwhile
void CreateIcon(PanelServices services, QWidget& owner, int number)
{
    MakeIcon(services, number, [&](const std::string& defaultName) {
        IconChoice choice;
        ShowModally<frmIcon>(IconQuestion{services.use.language, defaultName, choice}, owner);
        return choice;
    });
}

} // namespace harvelop
