#include "terminal/frmReceive.h"

#include "ui_frmReceive.h"

namespace harvelop
{

frmReceive::frmReceive(QWidget* parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::frmReceive>())
{
    m_ui->setupUi(this);
    connect(m_ui->txtReceive, &ReceivePane::ClearAsked, this, &frmReceive::ClearAsked);
}

frmReceive::~frmReceive() = default;

void frmReceive::Append(const std::string& text)
{
    m_ui->txtReceive->Append(text);
}

void frmReceive::Clear()
{
    m_ui->txtReceive->Clear();
}

} // namespace harvelop
