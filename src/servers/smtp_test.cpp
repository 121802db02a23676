#include "servers/smtp_test.h"

#include "core/text_numbers.h"
#include "servers/base64.h"

namespace harvelop
{

namespace
{

// 198 is a word of the options panel in English.
std::string boxTitle(const LanguageTables& language)
{
    return language.LangActive ? " " + language.Text(198) : " SMTP Server Login Test";
}

} // namespace

void SMTPTest::TestByUser()
{
    SMTPTestByUser = true;
    RunSMTPTest();
}

void SMTPTest::RunSMTPTest()
{
    constexpr double AfterwardsMs = 5000; // whatever it was before: meant
    if (m_session.GivenUp())
        return;
    LinkState& link = m_use.link;
    SMTPTimeoutMs = LoginSession::Milliseconds(m_use.options.SMTPTimeout);
    m_session.Begin();
    SMTPFailureCount = 0;
    SMTPSavedTimeout = LoginSession::Kept(link.DefaultTimeout);
    link.DefaultTimeout = SMTPTimeoutMs;
    dialogue();
    SMTPTestByUser = false;
    link.DefaultTimeout = AfterwardsMs;
    if (m_session.GivenUp())
        m_session.Close();
    m_session.RestoreCaption();
    link.LinkMode = "None"; // a socket that stays open after a failure is no link to a logger
    m_session.End();
}

void SMTPTest::dialogue()
{
    const Options& options = m_use.options;
    const LanguageTables& language = m_use.use.language;
    const std::string server = " " + options.SMTPServerName;
    showStep(376, " ...");
    m_session.Connect(options.SMTPServerName, options.SMTPPort);
    const bool greeted = m_session.Ask("", "220");
    if (m_session.GivenUp())
        return;
    if (!greeted) {
        ReportSMTPFailure("Can't Find SMTP Server at" + server); // English in every language: meant
        return;
    }
    showStep(377, server);
    showStep(378, " ...");
    const bool known = m_session.Ask("ehlo me", "250");
    if (m_session.GivenUp())
        return;
    if (!known) {
        ReportSMTPFailure(language.Text(712) + server);
        return;
    }
    showStep(379, server);
    const bool good = !options.SMTPServerRequiresAuthentication || logIn();
    if (good && !m_session.GivenUp() && SMTPTestByUser)
        ReportSMTPSuccess();
}

// False if the login was refused, which has been told, or given up.
bool SMTPTest::logIn()
{
    const Options& options = m_use.options;
    const LanguageTables& language = m_use.use.language;
    const std::string& type = options.SMTPAuthenticationType;
    showStep(380, " ...");
    if (type == "PLAIN") {
        m_use.exchange.SendToLogger("AUTH PLAIN"); // and no name or password behind it: meant
        // 213 is a word of the options panel in English.
        ReportSMTPFailure(language.LangActive ? language.Text(213) : "PLAIN Authentication not supported by Harvel");
        return false;
    }
    if (type == "CRM-MD5") {
        m_use.exchange.SendToLogger("AUTH CARM-MD5"); // misspelt as it stands: meant
        ReportSMTPFailure(language.Text(716));
        showStep(383, " ...");
        return false;
    }
    if (type != "LOGIN")
        return true;
    const bool accepted = m_session.Ask("AUTH LOGIN", "334 VXNlcm5hbWU6");
    if (m_session.GivenUp())
        return false;
    if (!accepted) {
        ReportSMTPFailure(language.Text(714));
        showStep(381, " ...");
        return false;
    }
    // The name always gets one "=", the password never: meant. The password goes out even if the name was refused.
    const bool nameTaken = m_session.Ask(EncodeBase64(options.SMTPUserName) + "=", "334 UGFzc3dvcmQ6");
    if (m_session.GivenUp())
        return false;
    const bool passwordTaken = m_session.Ask(EncodeBase64(options.SMTPPassword), "235");
    if (m_session.GivenUp())
        return false;
    if (nameTaken && passwordTaken) {
        showStep(382);
        return true;
    }
    ReportSMTPFailure(language.Text(715));
    showStep(383, " ...");
    return false;
}

void SMTPTest::showStep(int number, const std::string& rest)
{
    if (SMTPTestByUser)
        m_session.ShowStep(number, rest);
}

void SMTPTest::ReportSMTPFailure(const std::string& text)
{
    ++SMTPFailureCount;
    m_use.use.progress.HideMessageForm();
    m_use.use.dialogs.Show({text + ".    ", boxTitle(m_use.use.language), BoxIcon::Critical});
    m_session.RestoreCaption();
    m_use.use.waiting.WaitMs(1000);
}

void SMTPTest::ReportSMTPSuccess()
{
    const LanguageTables& language = m_use.use.language;
    if (SMTPFailureCount > 0)
        return;
    showStep(384);
    m_use.use.progress.HideMessageForm();
    m_use.use.dialogs.Show(
        {language.Text(711) + " " + m_use.options.SMTPServerName + (language.LangActive ? " " : "") + ".     ",
         boxTitle(language), BoxIcon::Information});
    m_use.options.SMTPChecked = true;
    DisconnectSMTP();
}

void SMTPTest::DisconnectSMTP()
{
    m_session.Close();
    m_use.link.DefaultTimeout = SMTPSavedTimeout;
    m_use.use.waiting.WaitMs(1000);
    m_use.controls.FocusOk();
}

} // namespace harvelop
