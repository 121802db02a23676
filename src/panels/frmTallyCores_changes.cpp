// What the user changes on the panel, and what forces what.
#include "core/text_lines.h"
#include "panels/frmSupport.h"
#include "panels/frmTallyCores.h"
#include "panels/frmTallyCoresGrid.h"
#include "ui_frmTallyCores.h"

#include <algorithm>

namespace harvelop
{

void frmTallyCores::SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled)
{
    const PanelValues before = Values();
    const bool email = emailEnabled.value_or(before.emailEnabled);
    const bool ftp = ftpEnabled.value_or(before.ftpEnabled);
    m_ui->chkSendUnloadViaEmail->setChecked(before.viaEmail && email);
    m_ui->chkSendUnloadViaFTP->setChecked(before.viaFTP && ftp);
    showDelivery(email, ftp);
    if ((before.viaEmail && !email) || (before.viaFTP && !ftp))
        enableApply(true);
}

void frmTallyCores::showDelivery(bool emailEnabled, bool ftpEnabled)
{
    EnableWithReason(*m_ui->chkSendUnloadViaEmail, emailEnabled, "The email account in the options is not filled in.");
    EnableWithReason(*m_ui->chkSendUnloadViaFTP, ftpEnabled, "The FTP account in the options is not filled in.");
}

void frmTallyCores::changeGrid(const std::function<void(PanelValues&, int rows)>& rule)
{
    PanelValues values = Values();
    rule(values, m_grid->Rows());
    m_grid->Show(values);
    enableApply(true);
}

void frmTallyCores::chkMdb_Click()
{
    const bool on = m_ui->chkMdb->isChecked();
    StoreMdb(m_use, m_tag, on);
    enable(*m_ui->cmdEditMDB, on, OnlyWithMdb);
    changeGrid(ApplyMdbRule);
}

void frmTallyCores::txtKR400_Change(QLineEdit* box)
{
    enableApply(true);
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const QString typed = box->text();
    const QPointer<QLineEdit> field(box);
    for (auto wrong = std::count_if(typed.begin(), typed.end(), std::not_fn(isDigit)); wrong > 0 && field; --wrong) {
        m_use.use.progress.HideMessageForm();
        m_use.use.dialogs.Show({m_use.use.language.Text(533) + ".     ", "", BoxIcon::Critical});
    }
    if (!field)
        return;
    QString kept;
    std::copy_if(typed.begin(), typed.end(), std::back_inserter(kept), isDigit);
    if (kept == typed)
        return;
    const auto caret = std::count_if(typed.begin(), typed.begin() + box->cursorPosition(), isDigit);
    box->setText(kept);
    box->setCursorPosition(static_cast<int>(caret));
}

void frmTallyCores::txtDescription_Change()
{
    enableApply(true);
    m_use.state.AllowedChars = DescriptionChars;
    if (!TakeBackTyped(*m_ui->txtDescription, m_use.state.AllowedChars))
        enableMdb(!m_ui->txtDescription->text().isEmpty());
}

// Without a description there is no database to write to.
void frmTallyCores::enableMdb(bool enabled)
{
    EnableWithReason(*m_ui->chkMdb, enabled, "Give the tallyCore a description first.");
    if (!enabled && m_ui->chkMdb->isChecked()) {
        m_ui->chkMdb->setChecked(false);
        chkMdb_Click();
    }
}

// By whatever filter ran last: meant.
void frmTallyCores::StripDescription()
{
    const std::string text = ToText(m_ui->txtDescription->text());
    const std::string kept = KeepAllowed(text, m_use.state.AllowedChars);
    if (kept == text)
        return;
    m_ui->txtDescription->setText(ToQString(kept));
    enableMdb(!kept.empty());
}

} // namespace harvelop
