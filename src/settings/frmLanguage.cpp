#include "settings/frmLanguage.h"

#include "panels/frmSupport.h"
#include "ui_frmLanguage.h"

#include <QCloseEvent>

namespace harvelop
{

frmLanguage::frmLanguage(Options& options, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmLanguage>()), m_options(options)
{
    m_ui->setupUi(this);
    connect(m_ui->cbxLanguage, &QComboBox::currentIndexChanged, this, &frmLanguage::cbxLanguage_Click);
    connect(m_ui->cbxLanguage, &QComboBox::activated, this, &frmLanguage::cbxLanguage_Click);
    connect(m_ui->cmdLanguage, &QPushButton::clicked, this, &frmLanguage::close);
    m_options.UseLangFile = true;
    m_ui->cbxLanguage->addItem("English");
    m_ui->cbxLanguage->setCurrentIndex(0);
}

frmLanguage::~frmLanguage() = default;

void frmLanguage::cbxLanguage_Click()
{
    m_options.Language = ToText(m_ui->cbxLanguage->currentText());
}

void frmLanguage::closeEvent(QCloseEvent* event)
{
    cbxLanguage_Click();
    event->accept();
}

void frmLanguage::reject()
{
    close();
}

} // namespace harvelop
