#include "servers/ftp_test.h"

namespace harvelop
{

void FTPTest::TestByUser()
{
    FTPTestByUser = true;
    PrepareFTPTest();
    const std::int16_t before = LoginSession::Kept(m_use.link.DefaultTimeout);
    m_use.link.DefaultTimeout = FTPTimeoutMs;
    RunFTPTest();
    m_use.link.DefaultTimeout = before;
}

void FTPTest::PrepareFTPTest()
{
    m_session.Begin();
    FTPFailureCount = 0;
    FTPTimeoutMs = LoginSession::Milliseconds(m_use.options.FTPTimeout);
}

void FTPTest::RunFTPTest()
{
    dialogue();
    DisconnectFTP();
    m_session.End();
}

void FTPTest::dialogue()
{
    Options& options = m_use.options;
    const LanguageTables& language = m_use.use.language;
    const std::string server = " " + options.FTPServername;
    m_session.ShowStep(312, " ...");
    m_session.Connect(options.FTPServername, "21");
    const bool greeted = m_session.Ask("", "220");
    if (m_session.GivenUp())
        return;
    if (!greeted) {
        ReportFTPFailure(language.Text(309) + server);
        return;
    }
    m_session.ShowStep(308, server);
    m_session.ShowStep(310, " ...");
    const bool nameTaken = m_session.Ask("USER " + options.FTPUserName, "331");
    if (m_session.GivenUp())
        return;
    if (!nameTaken) {
        ReportFTPFailure(language.Text(572));
        return;
    }
    const bool passwordTaken = m_session.Ask("PASS " + options.FTPPassword, "230");
    if (m_session.GivenUp())
        return;
    if (!passwordTaken) {
        ReportFTPFailure(language.Text(573));
        return;
    }
    m_session.ShowStep(311);
    m_use.use.progress.HideMessageForm();
    m_use.use.dialogs.Show({language.Text(570) + server + (language.LangActive ? " " : "") + ".     ",
                            " FTP Server Login Test", BoxIcon::Information});
    options.FTPChecked = true;
}

// Ends the link too; that the end of the test does so once more is meant.
void FTPTest::ReportFTPFailure(const std::string& text)
{
    ++FTPFailureCount;
    m_use.use.progress.HideMessageForm();
    m_use.use.dialogs.Show({text + ".    ", FTPTestByUser ? " " + m_use.use.language.Text(571) : " tallyCore : Harvel",
                            BoxIcon::Critical});
    DisconnectFTP();
}

void FTPTest::DisconnectFTP()
{
    m_session.Close();
    m_use.use.waiting.WaitMs(1000);
    m_use.controls.FocusOk();
}

} // namespace harvelop
