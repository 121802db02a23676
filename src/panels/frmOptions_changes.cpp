// Change tracking: what each control's handler does besides writing its option and enabling `cmdApply`.
#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "panels/frmOptions.h"
#include "panels/frmSupport.h"
#include "settings/panel_loading.h"
#include "ui_frmOptions.h"

namespace harvelop
{

void frmOptions::dropOthers(QLineEdit& field, std::string_view allowed)
{
    m_use.state.AllowedChars = allowed;
    const std::string text = ToText(field.text());
    const std::string kept = KeepAllowed(text, allowed);
    if (kept != text)
        field.setText(ToQString(kept));
}

void frmOptions::connectChanges()
{
    m_checks = {
        {m_ui->chkUnload_FindPorts, &Options::FindPorts, nullptr},
        {m_ui->chkSMTPServerRequiresAuthentication, &Options::SMTPServerRequiresAuthentication,
         &frmOptions::ApplyAuthenticationState},
        {m_ui->chkShowHarvelOnStartup, &Options::ShowHarvelOnStartup, &frmOptions::chkShowHarvelOnStartup_Click},
        {m_ui->chkRunHarvelOnStartup, &Options::RunHarvelOnStartup, nullptr},
        {m_ui->chkUnloadAll, &Options::UnloadAll, nullptr},
        {m_ui->chkShowDir, &Options::ShowDir, nullptr},
        {m_ui->chkSaveToDesktop, &Options::SaveToDesktop, &frmOptions::chkSaveToDesktop_Click},
        {m_ui->chkSaveToOneFile, &Options::SaveToOneFile, nullptr},
        {m_ui->chkExitAfterUnload, &Options::ExitAfterUnload, nullptr},
        {m_ui->chkShowMessages, &Options::ShowMessages, nullptr},
        {m_ui->chkLockControls, &Options::LockControls, &frmOptions::chkLockControls_Click},
        {m_ui->chkSaveLogFile, &Options::SaveLogFile, &frmOptions::chkSaveLogFile_Click},
    };
    // That the mail server and the sender do not update the delivery checks is meant.
    m_texts = {
        {m_ui->txtSMTPServerName, &Options::SMTPServerName, nullptr},
        {m_ui->txtSMTPPort, &Options::SMTPPort, nullptr},
        {m_ui->txtSMTPSender, &Options::SMTPSender, nullptr},
        {m_ui->txtSMTPUserName, &Options::SMTPUserName, nullptr},
        {m_ui->txtSMTPPassword, &Options::SMTPPassword, &frmOptions::UpdateDeliveryChecks},
        {m_ui->txtSMTPTimeout, &Options::SMTPTimeout, nullptr},
        {m_ui->txtFTPServername, &Options::FTPServername, &frmOptions::UpdateDeliveryChecks},
        {m_ui->txtFTPUserName, &Options::FTPUserName, &frmOptions::UpdateDeliveryChecks},
        {m_ui->txtFTPPassword, &Options::FTPPassword, &frmOptions::UpdateDeliveryChecks},
        {m_ui->txtFTPTimeout, &Options::FTPTimeout, nullptr},
    };
    m_authentication = {
        {m_ui->optSMTPPLAIN, AuthenticationButton::Plain},
        {m_ui->optSMTPLOGIN, AuthenticationButton::Login},
        {m_ui->optSMTPCRMMD5, AuthenticationButton::CramMd5},
    };
    for (const auto& row : m_checks)
        connect(row.box, &QCheckBox::toggled, this, [this, row](bool checked) {
            m_use.options.*row.option = checked;
            if (row.also)
                (this->*row.also)(checked);
            optionChanged();
        });
    for (const auto& row : m_texts)
        connect(row.field, &QLineEdit::textChanged, this, [this, row](const QString& text) {
            m_use.options.*row.option = ToText(text);
            if (row.also)
                (this->*row.also)();
            optionChanged();
        });
    for (const auto& row : m_authentication)
        connect(row.button, &QRadioButton::toggled, this, [this, row](bool checked) {
            if (!checked)
                return;
            m_use.options.SMTPAuthenticationType = AuthenticationWritten(row.kind);
            optionChanged();
        });
    connect(m_ui->txtSize, &QLineEdit::textChanged, this, &frmOptions::txtSize_Change);
    connect(m_ui->txtDesktopDir, &QLineEdit::textChanged, this, &frmOptions::txtDesktopDir_Change);
    connect(m_ui->txtSMTPSiteID, &QLineEdit::textChanged, this, &frmOptions::txtSMTPSiteID_Change);
    connect(m_ui->txtFTPSiteID, &QLineEdit::textChanged, this, &frmOptions::txtFTPSiteID_Change);
}

void frmOptions::optionChanged()
{
    m_ui->cmdApply->setEnabled(true);
}

void frmOptions::chkShowHarvelOnStartup_Click(bool checked)
{
    m_ui->chkRunHarvelOnStartup->setChecked(!checked);
    m_ui->chkRunHarvelOnStartup->setEnabled(checked);
}

void frmOptions::chkSaveToDesktop_Click(bool checked)
{
    SetFieldEnabled(*m_ui->txtDesktopDir, checked);
}

void frmOptions::chkLockControls_Click(bool)
{
    // While work goes on its lock holds the buttons, and is the only guard against a second search inside the first;
    // what lifts it goes by the option.
    if (m_ui->cmdOk->isEnabled() && !m_testing)
        applyLockControls();
}

void frmOptions::chkSaveLogFile_Click(bool)
{
    if (const auto size = ToDouble(ToText(m_ui->txtSize->text())))
        m_use.options.LogFileSize = *size;
}

// LOGIN is the only choice that a user gets: that the other two buttons never become enabled is meant.
void frmOptions::ApplyAuthenticationState(bool required)
{
    for (const auto& row : m_authentication) {
        row.button->setEnabled(required && row.kind == AuthenticationButton::Login);
        if (required)
            continue;
        row.button->setAutoExclusive(false); // an exclusive button can't be unchecked
        row.button->setChecked(false);
        row.button->setAutoExclusive(true);
    }
    if (required)
        m_ui->optSMTPLOGIN->setChecked(true);
    SetFieldEnabled(*m_ui->txtSMTPUserName, required);
    SetFieldEnabled(*m_ui->txtSMTPPassword, required);
}

void frmOptions::UpdateDeliveryChecks()
{
    const bool email = AccountsAllowEmail(m_use.options);
    const bool ftp = FtpDeliveryReady(m_use.options);
    for (int number = 1; number <= MaxLoggers; ++number)
        if (LoggerPanel* panel = m_use.panels.At(number); panel && panel->IsVisible())
            panel->SetDelivery(email, ftp);
    SetFormEnabled(true);
}

void frmOptions::txtSize_Change()
{
    dropOthers(*m_ui->txtSize, SizeChars);
    m_ui->txtSize->end(false);
    if (const auto size = ToDouble(ToText(m_ui->txtSize->text())))
        m_use.options.LogFileSize = *size;
    optionChanged();
}

void frmOptions::txtDesktopDir_Change()
{
    dropOthers(*m_ui->txtDesktopDir, DesktopDirChars);
    m_ui->txtDesktopDir->end(false);
    m_use.options.DesktopDir = ToText(m_ui->txtDesktopDir->text());
    optionChanged();
}

void frmOptions::txtSMTPSiteID_Change()
{
    m_use.options.SiteID = ToText(m_ui->txtSMTPSiteID->text());
    m_ui->txtFTPSiteID->setText(m_ui->txtSMTPSiteID->text());
    optionChanged();
}

void frmOptions::txtFTPSiteID_Change()
{
    m_use.options.SiteID = ToText(m_ui->txtFTPSiteID->text());
    m_ui->txtSMTPSiteID->setText(m_ui->txtFTPSiteID->text());
}

void frmOptions::ValidateServerFields()
{
    for (QLineEdit* field : {m_ui->txtSMTPServerName, m_ui->txtSMTPPort, m_ui->txtSMTPSender, m_ui->txtSMTPUserName,
                             m_ui->txtFTPServername})
        dropOthers(*field, ServerChars);
}

} // namespace harvelop
