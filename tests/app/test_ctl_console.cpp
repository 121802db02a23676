#include "app/ctl_console.h"

#include <gtest/gtest.h>
#include <sstream>

namespace harvelop::test
{

TEST(CtlConsole, ProgressIsPlainLinesWithoutATerminal)
{
    std::ostringstream err;
    Console console(err, false, false);
    ConsoleMessages messages(console);
    messages.SetCaption("<- Searching for tallyCores ...");
    messages.SetCaption("<- Searching for tallyCores ...");
    messages.SetCaption("<- Trying Com 1 : 9600 baud");
    EXPECT_EQ(err.str(), "Searching for tallyCores ...\nTrying Com 1 : 9600 baud\n");
}

TEST(CtlConsole, ProgressIsAMovingLineOnATerminal)
{
    std::ostringstream err;
    Console console(err, true, false);
    console.Progress("one");
    console.Progress("two");
    console.Line("done");
    EXPECT_EQ(err.str(), "\r\x1b[Kone\r\x1b[Ktwo\ndone\n");
}

TEST(CtlConsole, AQuestionIsAnsweredByYes)
{
    std::ostringstream err;
    Console console(err, false, false);
    ConsoleDialogs dialogs(console, true, std::nullopt);
    EXPECT_EQ(dialogs.Show({"Go on ?     ", "", BoxIcon::Question, BoxButtons::OkCancel}), BoxAnswer::Ok);
    EXPECT_EQ(dialogs.Show({"Go on ?     ", "", BoxIcon::Question, BoxButtons::YesNo}), BoxAnswer::Yes);
    EXPECT_EQ(err.str(), "");
}

TEST(CtlConsole, AQuestionThatNobodyCanAnswerIsDeclined)
{
    std::ostringstream err;
    Console console(err, false, false);
    ConsoleDialogs dialogs(console, false, std::nullopt);
    EXPECT_EQ(dialogs.Show({"Go on ?     ", "", BoxIcon::Question, BoxButtons::OkCancel}), BoxAnswer::Cancel);
    EXPECT_EQ(dialogs.Show({"Go on ?     ", "", BoxIcon::Question, BoxButtons::YesNo}), BoxAnswer::No);
    EXPECT_NE(err.str().find("Go on ? Not done: nobody to ask, and no --yes.\n"), std::string::npos);
}

TEST(CtlConsole, ABoxBecomesALineWithItsDetail)
{
    std::ostringstream err;
    Console console(err, false, false);
    ConsoleDialogs dialogs(console, false, std::nullopt);
    EXPECT_EQ(dialogs.Show({"Busy.     ", "", BoxIcon::Critical, BoxButtons::Ok, "In use by minicom."}), BoxAnswer::Ok);
    EXPECT_EQ(err.str(), "Busy.\nIn use by minicom.\n");
}

TEST(CtlConsole, ALongQuestionKeepsItsLines)
{
    std::ostringstream err;
    Console console(err, false, false);
    ConsoleDialogs dialogs(console, false, std::nullopt);
    dialogs.Show({"Caution :\r\r/a/b\r\rYes or No.     ", "", BoxIcon::Information, BoxButtons::YesNo});
    dialogs.Show({"Failed.     \r\r", "", BoxIcon::Critical});
    EXPECT_EQ(err.str(), "Caution :\n\n/a/b\n\nYes or No. Not done: nobody to ask, and no --yes.\nFailed.\n");
}

TEST(CtlConsole, TheFileOfTheCommandLineIsTheOneChosen)
{
    std::ostringstream err;
    Console console(err, false, false);
    EXPECT_EQ(ConsoleDialogs(console, false, std::nullopt, "/a/b").OpenFile("Choose", "/", "cmd"), "/a/b");
    EXPECT_EQ(ConsoleDialogs(console, false, std::nullopt).OpenFile("Choose", "/", "cmd"), "");
    EXPECT_EQ(err.str(), "");
}

TEST(CtlConsole, APasswordComesFromTheOptionAndIsNeverPrinted)
{
    std::ostringstream err;
    Console console(err, false, false);
    EXPECT_EQ(ConsoleDialogs(console, false, "mountain").AskPassword("Password?", ""), "mountain");
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(ConsoleDialogs(console, true, std::nullopt).AskPassword("Password?", ""), "");
    EXPECT_EQ(err.str(), "Password?\n");
    ASSERT_EQ(console.Messages().size(), 2u); // that it was asked for is kept, and only whether it was given
    for (const auto& [message, answer] : {std::pair{console.Messages()[0], "yes"}, {console.Messages()[1], "no"}}) {
        EXPECT_EQ(message.kind, "question");
        EXPECT_EQ(message.text, "Password?");
        EXPECT_EQ(message.answer, answer);
    }
}

} // namespace harvelop::test
