#include "loading/frmDelJob.h"

#include "loading/clearing.h"
#include "panels/frmSupport.h"
#include "ui_frmDelJob.h"

namespace harvelop
{

frmDelJob::frmDelJob(const DelJobServices& services) : m_use(services), m_ui(std::make_unique<Ui::frmDelJob>())
{
    constexpr int IconSize = 32;
    m_ui->setupUi(this);
    m_ui->Image1->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(IconSize));
    m_ui->lblDeljob->setText(ToQString(JobInstructions(m_use.language, m_use.logger)));
    if (m_use.language.LangActive)
        applyLanguage();
    connect(m_ui->cmdYes, &QPushButton::clicked, this, &frmDelJob::cmdYes_Click);
    connect(m_ui->cmdNo, &QPushButton::clicked, this, &frmDelJob::cmdNo_Click);
}

frmDelJob::~frmDelJob() = default;

void frmDelJob::applyLanguage()
{
    const std::pair<int, QWidget*> captions[] = {{154, m_ui->cmdYes}, {155, m_ui->cmdNo}};
    setWindowTitle(ToQString(m_use.language.Text(150)));
    for (const auto& [number, control] : captions) {
        WidgetCaption caption(*control);
        ApplyLangFont(m_use.language, caption, {{number, ""}});
    }
}

void frmDelJob::Show(const std::vector<std::string>& jobs)
{
    m_use.progress.HideMessageForm();
    m_ui->cbxJobs->clear();
    for (const std::string& job : jobs)
        m_ui->cbxJobs->addItem(ToQString(job));
    m_ui->cbxJobs->setCurrentIndex(0);
    m_ui->cbxJobs->setFocus();
    show();
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
