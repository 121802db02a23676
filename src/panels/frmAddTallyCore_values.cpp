// Between the dialog's controls and their values.
#include "panels/frmAddTallyCore.h"
#include "panels/frmSupport.h"
#include "ui_frmAddTallyCore.h"

namespace harvelop
{

namespace
{

using Value = std::string AddValues::*;

struct ListRow {
    QComboBox* Ui::frmAddTallyCore::*list;
    Value value;
};
constexpr ListRow ModelLists[] = {{&Ui::frmAddTallyCore::cbxModel, &AddValues::model},
                                  {&Ui::frmAddTallyCore::cbxSeries, &AddValues::series}};
constexpr ListRow LinkLists[] = {{&Ui::frmAddTallyCore::cbxPort, &AddValues::port},
                                 {&Ui::frmAddTallyCore::cbxBaud, &AddValues::baud},
                                 {&Ui::frmAddTallyCore::cbxParity, &AddValues::parity},
                                 {&Ui::frmAddTallyCore::cbxDataBits, &AddValues::dataBits},
                                 {&Ui::frmAddTallyCore::cbxStopBits, &AddValues::stopBits},
                                 {&Ui::frmAddTallyCore::cbxFlowControl, &AddValues::flow},
                                 {&Ui::frmAddTallyCore::cbxModemPort, &AddValues::modemPort},
                                 {&Ui::frmAddTallyCore::cbxModemBaud, &AddValues::modemBaud}};

struct FieldRow {
    QLineEdit* Ui::frmAddTallyCore::*field;
    Value value;
};
constexpr FieldRow Fields[] = {{&Ui::frmAddTallyCore::txtSerial, &AddValues::serial},
                               {&Ui::frmAddTallyCore::txtPassword, &AddValues::password},
                               {&Ui::frmAddTallyCore::txtPhoneNumber, &AddValues::phone},
                               {&Ui::frmAddTallyCore::txtInitString, &AddValues::init},
                               {&Ui::frmAddTallyCore::txtIP, &AddValues::address},
                               {&Ui::frmAddTallyCore::txtTCPPort, &AddValues::tcpPort},
                               {&Ui::frmAddTallyCore::txtConnectionTimeout, &AddValues::timeout}};

template <typename Entries> void fill(QComboBox& list, const Entries& entries)
{
    for (const auto& entry : entries)
        list.addItem(ToQString(entry));
    list.setCurrentIndex(list.count() > 0 ? 0 : -1);
}

// Selects an entry. A stored value that the list lacks is added, so that Ok changes nothing the user didn't; but what
// adding has stored for a modem's speed is none.
void choose(QComboBox& list, const std::string& stored, bool mayAdd)
{
    const QString text = ToQString(stored);
    if (list.findText(text) < 0 && mayAdd && !text.isEmpty())
        list.insertItem(0, text);
    if (const int entry = list.findText(text); entry >= 0)
        list.setCurrentIndex(entry);
}

} // namespace

void frmAddTallyCore::fillLists()
{
    fill(*m_ui->cbxModel, AddModels);
    fill(*m_ui->cbxSeries, AddSeries);
    for (QComboBox* ports : {m_ui->cbxPort, m_ui->cbxModemPort})
        fill(*ports, AddPorts(m_use.options.AvailablePorts));
    for (QComboBox* bauds : {m_ui->cbxBaud, m_ui->cbxModemBaud})
        fill(*bauds, AddBauds);
    fill(*m_ui->cbxParity, AddParities);
    fill(*m_ui->cbxDataBits, AddDataBits);
    fill(*m_ui->cbxStopBits, AddStopBits);
    fill(*m_ui->cbxFlowControl, AddFlows);
    const AddValues first;
    for (const auto& [list, value] : LinkLists)
        choose(*((*m_ui).*list), first.*value, false);
}

void frmAddTallyCore::showValues(const AddValues& values)
{
    for (const auto& [list, value] : ModelLists) {
        ((*m_ui).*list)->insertItem(0, ToQString(values.*value));
        ((*m_ui).*list)->setCurrentIndex(0);
    }
    for (const auto& [list, value] : LinkLists)
        choose(*((*m_ui).*list), values.*value, value != &AddValues::modemBaud);
    for (const auto& [field, value] : Fields)
        ShowStored(*((*m_ui).*field), values.*value);
}

AddValues frmAddTallyCore::values() const
{
    AddValues values;
    values.kind = m_kind;
    for (const auto& [list, value] : ModelLists)
        values.*value = ToText(((*m_ui).*list)->currentText());
    for (const auto& [list, value] : LinkLists)
        values.*value = ToText(((*m_ui).*list)->currentText());
    for (const auto& [field, value] : Fields)
        values.*value = ToText(((*m_ui).*field)->text());
    return values;
}

} // namespace harvelop
