#include "loading/frmDelJob.h"

#include "loading/clearing.h"
#include "panels/frmSupport.h"
#include "ui_frmDelJob.h"

#include <QWindow>

namespace harvelop
{

namespace
{

// Text that is marked up to stand in the font which the language file gives to its number.
QString inItsFont(const LanguageTables& language, int number, const QString& text)
{
    QString style;
    if (const std::string name = language.LangFontName(number); !name.empty())
        style += "font-family:'" + ToQString(name).remove('\'') + "';";
    if (const int points = language.LangFontSize(number); points > 0)
        style += "font-size:" + QString::number(points) + "pt;";
    return "<span style=\"" + style.toHtmlEscaped() + "\">" + text.toHtmlEscaped().replace('\r', "<br>") + "</span>";
}

} // namespace

frmDelJob::frmDelJob(const DelJobServices& services) : m_use(services), m_ui(std::make_unique<Ui::frmDelJob>())
{
    m_ui->setupUi(this);
    LabelLists(*this);
    const int iconSize = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    m_ui->Image1->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize));
    showInstructions();
    setWindowTitle(ToQString(m_use.language.Text(150)));
    if (m_use.language.LangActive) {
        WidgetCaption yes(*m_ui->cmdYes);
        WidgetCaption no(*m_ui->cmdNo);
        ApplyLangFont(m_use.language, yes, {{154, ""}});
        ApplyLangFont(m_use.language, no, {{155, ""}});
    }
    connect(m_ui->cmdYes, &QPushButton::clicked, this, &frmDelJob::cmdYes_Click);
    connect(m_ui->cmdNo, &QPushButton::clicked, this, &frmDelJob::cmdNo_Click);
}

frmDelJob::~frmDelJob() = default;

void frmDelJob::showInstructions()
{
    constexpr int LineCharacters = 58;
    QLabel& label = *m_ui->lblDeljob;
    label.setMinimumWidth(label.fontMetrics().averageCharWidth() * LineCharacters);
    const bool translated = m_use.language.LangActive;
    QString instructions;
    for (const auto& [number, suffix] : JobInstructions(m_use.logger)) {
        const QString piece = ToQString(m_use.language.Text(number) + suffix);
        instructions += translated ? inItsFont(m_use.language, number, piece) : QString(piece).replace('\r', '\n');
    }
    label.setTextFormat(translated ? Qt::RichText : Qt::PlainText);
    label.setText(instructions);
    label.setMinimumHeight(label.heightForWidth(label.minimumWidth())); // a window is not made as high as it asks for
}

void frmDelJob::Show(const std::vector<std::string>& jobs)
{
    m_use.progress.HideMessageForm();
    m_ui->cbxJobs->clear();
    for (const std::string& job : jobs)
        m_ui->cbxJobs->addItem(ToQString(job));
    m_ui->cbxJobs->setCurrentIndex(0);
    m_ui->cbxJobs->setFocus();
    winId(); // makes the window, which then can be told over which one it stands
    if (m_use.over)
        windowHandle()->setTransientParent(m_use.over->windowHandle());
    show();
    raise();
    activateWindow();
}

void frmDelJob::cmdYes_Click()
{
    m_use.loading.JobDeleteConfirmed = true;
    m_use.loading.ChosenJob = PlainJobName(ToText(m_ui->cbxJobs->currentText()));
    accept();
}

void frmDelJob::cmdNo_Click()
{
    m_use.loading.JobDeleteConfirmed = false;
    reject();
}

void frmDelJob::done(int result)
{
    QDialog::done(result);
    m_use.progress.ShowMessageForm();
}

} // namespace harvelop
