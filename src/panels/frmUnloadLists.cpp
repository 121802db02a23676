#include "panels/frmUnloadLists.h"

#include "core/text_lines.h"
#include "panels/frmSupport.h"
#include "panels/list_rules.h"
#include "ui_frmUnloadLists.h"

#include <QFontMetrics>
#include <QStyle>
#include <QTextCursor>

#include <algorithm>

namespace harvelop
{

namespace
{

// The numbers of the captions that a language file replaces.
struct NumberedControl {
    int number;
    const char* control;
};
constexpr NumberedControl NumberedControls[] = {
    {241, "cmdDeleteAllEmails"},
    {242, "lblDescription"},
    {243, "lblEmailAddresses"},
    {244, "cmdOk"},
};

// The width that shows the whole title beside what else a title bar holds; of a very long one it shows the beginning.
int widthForTitle(const QWidget& window)
{
    constexpr int LongestTitle = 80; // in characters
    constexpr int OtherParts = 5;    // the icon, the buttons and the gaps, each about as wide as the bar is high
    QFont font = window.font();
    font.setBold(true);
    const QFontMetrics metrics(font);
    const int title =
        std::min(metrics.horizontalAdvance(window.windowTitle()), metrics.averageCharWidth() * LongestTitle);
    return title + OtherParts * window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

// In the editor a line ends in one character of its own.
bool isAllowed(QChar c)
{
    return c == QChar::ParagraphSeparator || c == QChar::LineSeparator ||
           (c.unicode() < 0x80 && AddressChars.find(c.toLatin1()) != std::string_view::npos);
}

} // namespace

frmUnloadLists::frmUnloadLists(const PanelServices& services, QWidget* owner)
    : QDialog(owner), m_use(services), m_ui(std::make_unique<Ui::frmUnloadLists>())
{
    constexpr int AddressCharacters = 56;
    m_ui->setupUi(this);
    LabelLists(*this);
    m_ui->txtList->setMinimumWidth(m_ui->txtList->fontMetrics().averageCharWidth() * AddressCharacters);
    load();
    resize(sizeHint().expandedTo(QSize(widthForTitle(*this), 0)));
    connect(m_ui->cbxSchedules, &QComboBox::currentIndexChanged, this, &frmUnloadLists::cbxSchedules_Click);
    connect(m_ui->txtList, &QPlainTextEdit::textChanged, this, &frmUnloadLists::txtList_Change);
    connect(m_ui->cmdDeleteAllEmails, &QPushButton::clicked, this, &frmUnloadLists::cmdDeleteAllEmails_Click);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmUnloadLists::cmdOk_Click);
}

frmUnloadLists::~frmUnloadLists() = default;

void frmUnloadLists::load()
{
    const LanguageTables& language = m_use.use.language;
    const std::string& kind = m_use.state.ListKind;
    setWindowTitle(ToQString(" " + kind + " " + language.Text(240) + " " + m_use.link.LinkDescription));
    const LoggerRecord* logger = record();
    for (const std::string& caption : ListCaptions(logger ? logger->LoggerModel : ""))
        m_ui->cbxSchedules->addItem(ToQString(caption));
    m_ui->cbxSchedules->setMaxVisibleItems(m_ui->cbxSchedules->count());
    if (kind == "Email" && !m_use.lists.ReadDeliveryList(ListNumber(logger ? logger->LoggerIconKey : "")))
        lock();
    showSchedule(0);
    if (language.LangActive)
        applyLanguage();
    m_ui->txtList->setFocus();
}

void frmUnloadLists::lock()
{
    constexpr const char* Reason = "The file that keeps these lists can't be read.";
    for (QWidget* control : {static_cast<QWidget*>(m_ui->txtList), static_cast<QWidget*>(m_ui->txtDescription),
                             static_cast<QWidget*>(m_ui->cmdDeleteAllEmails)})
        EnableWithReason(*control, false, Reason);
    m_ui->txtList->setPlaceholderText(Reason);
}

void frmUnloadLists::applyLanguage()
{
    for (const auto& [number, name] : NumberedControls) {
        WidgetCaption caption(*findChild<QWidget*>(name));
        ApplyLangFont(m_use.use.language, caption, {{number, ""}});
    }
}

void frmUnloadLists::showSchedule(int schedule)
{
    m_schedule = schedule;
    const auto index = static_cast<size_t>(schedule);
    const LoggerLists* shown = lists();
    m_ui->txtList->setPlainText(shown ? ToQString(AddressText(shown->at(index))) : QString());
    m_ui->txtList->moveCursor(QTextCursor::End);
    ShowStored(*m_ui->txtDescription, m_use.lists.Tables().ListDescriptions.at(index));
}

void frmUnloadLists::storeText()
{
    const auto index = static_cast<size_t>(m_schedule);
    const std::string text = ToText(m_ui->txtList->toPlainText().replace("\n", "\r\n"));
    if (LoggerLists* edited = lists())
        edited->at(index) = AddressesIn(KeepAllowed(text, AddressChars));
    m_use.lists.Tables().ListDescriptions.at(index) = OneLine(ToText(m_ui->txtDescription->text()));
}

void frmUnloadLists::cbxSchedules_Click(int schedule)
{
    storeText();
    showSchedule(schedule);
}

// Takes back what the user just typed if it is not allowed. What undo brings back stays until the text is stored, or
// there would be no undoing beyond it.
void frmUnloadLists::txtList_Change()
{
    const QTextDocument& text = *m_ui->txtList->document();
    QTextCursor taken = m_ui->txtList->textCursor();
    const int caret = taken.position();
    int kept = caret;
    while (kept > 0 && !isAllowed(text.characterAt(kept - 1)))
        --kept;
    if (kept == caret || text.isRedoAvailable())
        return;
    taken.setPosition(kept);
    taken.setPosition(caret, QTextCursor::KeepAnchor);
    taken.removeSelectedText();
}

void frmUnloadLists::cmdDeleteAllEmails_Click()
{
    const QPointer<frmUnloadLists> self(this);
    const Essentials use = m_use.use;
    const BoxAnswer answer = ShowInFront(use, DeleteAllQuestion(use.language));
    if (answer != BoxAnswer::Yes || !self || !isVisible()) // it can be closed while the question stands
        return;
    m_use.lists.Tables().Clear(); // only this logger's lists are in memory
    showSchedule(m_schedule);
}

void frmUnloadLists::cmdOk_Click()
{
    storeText();
    m_use.lists.WriteDeliveryList();
    close();
}

} // namespace harvelop
