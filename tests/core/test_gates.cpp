#include "core/gates.h"
#include "support/memory_files.h"
#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

Box boxWith(BoxButtons buttons)
{
    return {"Sure?", " tallyCore Harvel", BoxIcon::Question, buttons};
}

TEST(GatedDialogs, PassesBoxesAndAnswersOn)
{
    ScriptedDialogs dialogs;
    ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.ExpectPassword("secret");
    EXPECT_EQ(gate.Show(boxWith(BoxButtons::YesNo)), BoxAnswer::Yes);
    EXPECT_EQ(gate.AskPassword("Password", "Title"), "secret");
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].text, "Sure?");
    EXPECT_EQ(dialogs.asked[0].title, "Title");
}

TEST(GatedDialogs, ShowsNothingAfterTheEnd)
{
    ScriptedDialogs dialogs;
    ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    end.EndProgram();
    EXPECT_EQ(gate.Show(boxWith(BoxButtons::Ok)), BoxAnswer::Ok);
    EXPECT_EQ(gate.Show(boxWith(BoxButtons::OkCancel)), BoxAnswer::Cancel);
    EXPECT_EQ(gate.Show(boxWith(BoxButtons::YesNo)), BoxAnswer::No);
    EXPECT_EQ(gate.AskPassword("Password", "Title"), "");
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_TRUE(dialogs.asked.empty());
}

TEST(GatedDialogs, AnAnswerGivenAfterTheEndStartsNothing)
{
    ScriptedDialogs dialogs;
    ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    dialogs.whileShown = [&] { end.EndProgram(); };
    dialogs.Expect(BoxAnswer::Yes);
    EXPECT_EQ(gate.Show(boxWith(BoxButtons::YesNo)), BoxAnswer::No);
}

TEST(GatedDialogs, TellsWhatWasAnsweredUntilTheEnd)
{
    ScriptedDialogs dialogs;
    ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    std::vector<std::pair<std::string, BoxAnswer>> heard;
    gate.OnAnswered = [&](const Box& box, BoxAnswer answer) { heard.emplace_back(box.text, answer); };
    dialogs.Expect(BoxAnswer::Yes);
    gate.Show({"first", "", BoxIcon::Question, BoxButtons::YesNo});
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.whileShown = [&] { end.EndProgram(); };
    gate.Show({"second", "", BoxIcon::Question, BoxButtons::YesNo});
    gate.Show({"third", "", BoxIcon::Question, BoxButtons::YesNo});
    EXPECT_EQ(heard, (decltype(heard){{"first", BoxAnswer::Yes}}));
}

TEST(GatedDialogs, APasswordGivenAfterTheEndIsEmpty)
{
    ScriptedDialogs dialogs;
    ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    dialogs.whileShown = [&] { end.EndProgram(); };
    dialogs.ExpectPassword("secret");
    EXPECT_EQ(gate.AskPassword("Password", "Title"), "");
}

TEST(GatedDialogs, PassesChoosersOn)
{
    ScriptedDialogs dialogs;
    const ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    dialogs.ExpectChooser("/data");
    dialogs.ExpectChooser("/data/report");
    EXPECT_EQ(gate.BrowseFolder("Folder", "/home"), "/data");
    EXPECT_EQ(gate.OpenFile("File", "/data", "exe"), "/data/report");
    ASSERT_EQ(dialogs.choosers.size(), 2u);
    EXPECT_EQ(dialogs.choosers[0].title, "Folder");
    EXPECT_EQ(dialogs.choosers[1].startIn, "/data");
    EXPECT_EQ(dialogs.choosers[1].extension, "exe");
}

TEST(GatedDialogs, AChoiceMadeAfterTheEndIsNone)
{
    ScriptedDialogs dialogs;
    ProgramEnd end;
    GatedDialogs gate(dialogs, end);
    dialogs.whileShown = [&] { end.EndProgram(); };
    dialogs.ExpectChooser("/data");
    EXPECT_EQ(gate.BrowseFolder("Folder", "/home"), "");
    EXPECT_EQ(gate.OpenFile("File", "/data", "exe"), "");
    EXPECT_EQ(dialogs.choosers.size(), 1u);
}

TEST(GatedDataFiles, PassesEverythingOn)
{
    MemoryFiles files;
    const ProgramEnd end;
    GatedDataFiles gate(files, end);
    EXPECT_TRUE(gate.Replace("a.ini", "text"));
    EXPECT_EQ(gate.Read("a.ini").text, "text");
    EXPECT_TRUE(gate.Remove("a.ini"));
    EXPECT_EQ(gate.Read("a.ini").state, FileState::NotFound);
}

TEST(GatedDataFiles, NothingChangesAfterTheEnd)
{
    MemoryFiles files;
    ProgramEnd end;
    GatedDataFiles gate(files, end);
    files.files["a.ini"] = "old";
    end.EndProgram();
    EXPECT_FALSE(gate.Replace("a.ini", "new"));
    EXPECT_FALSE(gate.Remove("a.ini"));
    EXPECT_EQ(gate.Read("a.ini").text, "old");
    EXPECT_TRUE(files.writes.empty());
    EXPECT_TRUE(files.removed.empty());
}

} // namespace
} // namespace harvelop::test
