#include "app/start_bench.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

constexpr const char* DataDirectory = "/home/user/.local/share/harvelop";

} // namespace

TEST(DataDirectory, WhereNothingCanBeWrittenADirectoryOfTheUsersOwnIsOfferedAndSetUp)
{
    TestStart t;
    t.desktop.currentDirectory = "/usr/share/harvelop";
    t.files.unwritable.insert("/usr/share/harvelop");
    t.dialogs.Expect(BoxAnswer::Yes);
    t.Start("");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "Harvel can't write in /usr/share/harvelop.\n\n"
                                       "Shall it keep its files in /home/user/.local/share/harvelop?");
    EXPECT_EQ(t.dialogs.shown[0].buttons, BoxButtons::YesNo);
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/.local/share/harvelop/");
    EXPECT_EQ(t.desktop.currentDirectory, DataDirectory);
    EXPECT_EQ(t.files.files["/home/user/.local/share/harvelop/install.ini"],
              "Harvel was installed on 21/11/2026 at 09:30:00.\r\n");
    ASSERT_EQ(t.desktop.shortcuts.size(), 2u);
    EXPECT_EQ(t.desktop.shortcuts[0].workingDirectory, DataDirectory);
    EXPECT_EQ(t.asked, std::vector<std::string>{"show options"});
}

TEST(DataDirectory, TheDirectoryOnceAcceptedIsFoundWithoutAnotherQuestion)
{
    TestStart first;
    first.desktop.currentDirectory = "/usr/share/harvelop";
    first.files.unwritable.insert("/usr/share/harvelop");
    first.dialogs.Expect(BoxAnswer::Yes);
    first.Start("");
    TestStart later;
    later.desktop.currentDirectory = "/usr/share/harvelop";
    later.files.unwritable.insert("/usr/share/harvelop");
    later.files.files = first.files.files;
    later.settings.values = first.settings.values;
    later.Start("");
    EXPECT_TRUE(later.dialogs.shown.empty());
    EXPECT_TRUE(later.desktop.shortcuts.empty());
    EXPECT_EQ(later.heart.state.AppPath, "/home/user/.local/share/harvelop/");
    EXPECT_EQ(later.asked, std::vector<std::string>{"show options"});
}

TEST(DataDirectory, ADirectoryOfTheUsersOwnThatWasSetUpBeforeIsTakenAsItIs)
{
    TestStart t;
    t.desktop.currentDirectory = "/"; // also where this user may write there
    t.settings.values["Harvel/Parameters/_home_user_.local_share_harvelop"] = DataDirectory;
    t.files.files["/home/user/.local/share/harvelop/install.ini"] = "Harvel was installed\r\n";
    t.dialogs.Expect(BoxAnswer::Yes);
    t.Start("");
    EXPECT_TRUE(t.desktop.shortcuts.empty());
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/.local/share/harvelop/");
    EXPECT_EQ(t.settings.values["Harvel/Parameters/_"], DataDirectory);
}

TEST(DataDirectory, WhoDeclinesADirectoryOfTheirOwnEndsTheProgramAndLeavesNothing)
{
    TestStart t;
    t.desktop.currentDirectory = "/usr/share/harvelop";
    t.files.unwritable.insert("/usr/share/harvelop");
    t.dialogs.Expect(BoxAnswer::No);
    t.Start("");
    EXPECT_TRUE(t.heart.end.Ended());
    EXPECT_EQ(t.heart.end.ExitCode(), 1);
    EXPECT_TRUE(t.asked.empty());
    EXPECT_TRUE(t.files.files.empty());
    EXPECT_TRUE(t.settings.values.empty());
    EXPECT_TRUE(t.desktop.shortcuts.empty());
}

TEST(DataDirectory, ThatTheDirectoryOfTheUsersOwnCannotBeWrittenEitherIsSaidAndEndsTheProgram)
{
    for (const bool enters : {false, true}) {
        TestStart t;
        t.desktop.currentDirectory = "/usr/share/harvelop";
        t.desktop.enters = enters;
        t.files.full = true;
        t.dialogs.Expect(BoxAnswer::Yes);
        t.dialogs.Expect(BoxAnswer::Ok);
        t.Start("");
        ASSERT_EQ(t.dialogs.shown.size(), 2u);
        EXPECT_EQ(t.dialogs.shown[1].text, "Harvel can't write in /home/user/.local/share/harvelop.");
        EXPECT_EQ(t.dialogs.shown[1].icon, BoxIcon::Critical);
        EXPECT_EQ(t.heart.end.ExitCode(), 1);
        EXPECT_TRUE(t.asked.empty());
        EXPECT_TRUE(t.settings.values.empty());
    }
}

TEST(DataDirectory, NoDirectoryIsOfferedInPlaceOfItself)
{
    TestStart t;
    t.desktop.currentDirectory = DataDirectory;
    t.files.full = true;
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Start("");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_TRUE(t.heart.end.Ended());
}

TEST(DataDirectory, FromADirectoryThatIsGoneNothingIsWrittenToTheRootOfTheDisk)
{
    TestStart t;
    t.desktop.currentDirectory.clear();
    t.dialogs.Expect(BoxAnswer::Yes);
    t.Start("");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_TRUE(t.dialogs.shown[0].text.starts_with("Harvel can't write in the folder where it was started.\n"));
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/.local/share/harvelop/");
    EXPECT_EQ(t.files.files.count("/install.ini"), 0u);
    EXPECT_EQ(t.settings.values.size(), 1u);
}

TEST(DataDirectory, ADirectoryThatWasSetUpIsWorkedInAlsoWhenItCannotBeWritten)
{
    TestStart t;
    t.Installed();
    t.files.full = true;
    t.Start("");
    EXPECT_TRUE(t.dialogs.shown.empty());
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/loggers/");
    EXPECT_EQ(t.asked, std::vector<std::string>{"show options"});
}

} // namespace harvelop::test
