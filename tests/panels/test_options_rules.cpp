#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "panels/options_rules.h"

#include <gtest/gtest.h>
#include <limits>

namespace harvelop
{
namespace
{

TEST(OptionsFilters, SizeKeepsDigitsAndPoints)
{
    EXPECT_EQ(KeepAllowed("12kB", SizeChars), "12");
    EXPECT_EQ(KeepAllowed("-1.5e3", SizeChars), "1.53");
}

TEST(OptionsFilters, DesktopDirIsASingleFolderName)
{
    EXPECT_EQ(KeepAllowed("a_b", DesktopDirChars), "a_b");
    EXPECT_EQ(KeepAllowed("a b\\c", DesktopDirChars), "abc");
    EXPECT_EQ(KeepAllowed("C:/Ünloads.1", DesktopDirChars), "Cnloads1");
}

TEST(OptionsFilters, ServerNamesLoseHyphenAndUnderscore)
{
    EXPECT_EQ(KeepAllowed("mail-1.local", ServerChars), "mail1.local");
    EXPECT_EQ(KeepAllowed("some_one@mail.local ", ServerChars), "someone@mail.local");
}

TEST(OptionsSnapshots, DesktopDirThatIsNoNumberComesBackAsZero)
{
    Options options;
    const auto restored = [&](const char* name) {
        options.DesktopDir = name;
        const OptionsSnapshot snapshot = TakeSnapshot(options);
        options.DesktopDir = "changed";
        RestoreSnapshot(snapshot, options);
        return options.DesktopDir;
    };
    EXPECT_EQ(restored("Logs"), "0");
    EXPECT_EQ(restored("2008"), "2008");
    EXPECT_EQ(restored(""), "0");
    EXPECT_EQ(restored("70000"), "0");
    EXPECT_EQ(restored("1.5"), "0");
    EXPECT_EQ(restored("-12"), "-12");
}

TEST(OptionsSnapshots, RestoreAllThatCancelUndoes)
{
    Options before;
    before.SiteID = "site";
    before.LastUtallyCore = 3;
    before.LogFileSize = 100;
    before.SMTPServerName = "mail";
    before.SMTPPort = "25";
    before.SMTPAuthenticationType = "CRAM-MD5";
    before.SMTPSender = "sender";
    before.SMTPUserName = "user";
    before.SMTPPassword = "password";
    before.FTPServername = "ftp";
    before.FTPUserName = "ftp user";
    before.FTPPassword = "ftp password";

    Options changed;
    for (bool Options::*flag :
         {&Options::RunHarvelOnStartup, &Options::UnloadAll, &Options::ShowHarvelOnStartup, &Options::ShowDir,
          &Options::SaveToDesktop, &Options::SaveToOneFile, &Options::HideHarvelAfterUnload, &Options::ExitAfterUnload,
          &Options::ShowMessages, &Options::SaveLogFile, &Options::LockControls, &Options::FindPorts,
          &Options::SMTPServerRequiresAuthentication}) {
        before.*flag = true;
        changed = before;
        changed.*flag = false;
        RestoreSnapshot(TakeSnapshot(before), changed);
        EXPECT_TRUE(changed.*flag);
    }
    changed = {};
    RestoreSnapshot(TakeSnapshot(before), changed);
    EXPECT_EQ(changed.LastUtallyCore, 3);
    EXPECT_EQ(changed.LogFileSize, 100);
    for (std::string Options::*text :
         {&Options::SiteID, &Options::SMTPServerName, &Options::SMTPPort, &Options::SMTPAuthenticationType,
          &Options::SMTPSender, &Options::SMTPUserName, &Options::SMTPPassword, &Options::FTPServername,
          &Options::FTPUserName, &Options::FTPPassword})
        EXPECT_EQ(changed.*text, before.*text);
}

TEST(OptionsSnapshots, TimeoutsAndPositionsSurviveCancel)
{
    Options options;
    options.SMTPTimeout = options.FTPTimeout = "5";
    const OptionsSnapshot snapshot = TakeSnapshot(options);
    options.SMTPTimeout = options.FTPTimeout = "60";
    options.OptionsTop = 500;
    options.LastSearch = "2";
    RestoreSnapshot(snapshot, options);
    EXPECT_EQ(options.SMTPTimeout, "60");
    EXPECT_EQ(options.FTPTimeout, "60");
    EXPECT_EQ(options.OptionsTop, 500);
    EXPECT_EQ(options.LastSearch, "2");
}

TEST(LogSizes, ShowWithoutAnExponent)
{
    EXPECT_EQ(SizeText(0), "0");
    EXPECT_EQ(SizeText(250.5), "250.5");
    EXPECT_EQ(SizeText(0.00001), "0.00001");
    EXPECT_EQ(SizeText(1e20), "100000000000000000000");
    for (const double extreme : {std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()})
        EXPECT_EQ(ToDouble(SizeText(extreme)), extreme);
}

TEST(AuthenticationTypes, CramIsWrittenOtherwiseThanItIsRead)
{
    EXPECT_EQ(AuthenticationWritten(AuthenticationButton::Plain), "PLAIN");
    EXPECT_EQ(AuthenticationWritten(AuthenticationButton::Login), "LOGIN");
    EXPECT_EQ(AuthenticationWritten(AuthenticationButton::CramMd5), "CRM-MD5");
    EXPECT_EQ(AuthenticationRead("CRAM-MD5"), AuthenticationButton::CramMd5);
    EXPECT_EQ(AuthenticationRead("LOGIN"), AuthenticationButton::Login);
    EXPECT_EQ(AuthenticationRead("CRM-MD5"), std::nullopt);
    EXPECT_EQ(AuthenticationRead(""), std::nullopt);
}

TEST(DisabledReasons, NameTheNearestHindrance)
{
    EXPECT_EQ(DisabledReason("cmdOk", Hindrance::PanelOpen, false), "Close the panel of the tallyCore first.");
    EXPECT_EQ(DisabledReason("cmdOk", Hindrance::Working, false), "Wait until the work in hand is done.");
    EXPECT_EQ(DisabledReason("cmdApply", Hindrance::None, false), "Nothing has been changed.");
    EXPECT_EQ(DisabledReason("cmdUnload_Add", Hindrance::None, true),
              "Locked by the check box Lock Find, Add and Delete buttons on the page Options.");
    EXPECT_EQ(DisabledReason("txtDesktopDir", Hindrance::Working, false), "Check Copy to desktop first.");
}

} // namespace
} // namespace harvelop
