#include "terminal/terminal_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;

const std::u16string ThreeLines = u"one\r\ntwo\r\nthree";

TEST(SendPaneRules, EnterInTheMiddleSendsFromTheStartOfTheLineToTheEndOfThePane)
{
    const SendOutcome outcome = SendCurrentLine({ThreeLines, 6}); // behind the "t" of "two"
    EXPECT_EQ(outcome.sent, u"two\r\nthree");
    EXPECT_EQ(outcome.pane.text, ThreeLines + u"\r\n");
    EXPECT_EQ(outcome.pane.caret, 8u);
}

TEST(SendPaneRules, EnterOnTheFirstLineSendsEverything)
{
    for (const std::size_t caret : {0u, 1u, 3u})
        EXPECT_EQ(SendCurrentLine({ThreeLines, caret}).sent, ThreeLines) << caret;
}

TEST(SendPaneRules, EnterAtTheEndSendsTheLastLineAlone)
{
    const SendOutcome outcome = SendCurrentLine({ThreeLines, ThreeLines.size()});
    EXPECT_EQ(outcome.sent, u"three");
    EXPECT_EQ(outcome.pane.caret, outcome.pane.text.size()); // on the new line
}

TEST(SendPaneRules, EnterOnAnEmptyPaneSendsAnEmptyLine)
{
    const SendOutcome outcome = SendCurrentLine({});
    EXPECT_EQ(outcome.sent, u"");
    EXPECT_EQ(outcome.pane.text, u"\r\n");
    EXPECT_EQ(outcome.pane.caret, 2u);
}

TEST(SendPaneRules, EnterOnTheEmptyLastLineSendsAnEmptyLine)
{
    EXPECT_EQ(SendCurrentLine({u"G\r\n", 3}).sent, u"");
}

TEST(SendPaneRules, LinesTypedOneAfterTheOtherGoOutOneByOne)
{
    SendPane pane{u"G", 1};
    EXPECT_EQ(SendCurrentLine(pane).sent, u"G");
    pane = SendCurrentLine(pane).pane;
    pane.text.insert(pane.caret, u"H");
    pane.caret += 1;
    EXPECT_EQ(SendCurrentLine(pane).sent, u"H");
    EXPECT_EQ(SendCurrentLine(pane).pane.text, u"G\r\nH\r\n");
}

TEST(SendPaneRules, TheWalkBackGivesUpAfterTenThousandSteps)
{
    std::u16string line = u"x" + std::u16string(LongestWalk, u'y');
    EXPECT_EQ(SendCurrentLine({line, line.size()}).sent, line.substr(1));
    line.erase(0, 1);
    EXPECT_EQ(SendCurrentLine({line, line.size()}).sent, line);
}

TEST(SendPaneRules, TheWalkForwardGivesUpAfterTenThousandSteps)
{
    const std::u16string line = std::u16string(LongestWalk, u'y') + u"x";
    EXPECT_EQ(SendCurrentLine({line, 0}).sent, line.substr(0, LongestWalk));
    EXPECT_EQ(SendCurrentLine({line, 0}).pane.text, line + u"\r\n");
}

TEST(SendPaneRules, ACaretBehindTheTextCountsAsItsEnd)
{
    EXPECT_EQ(SendCurrentLine({u"a\r\nb", 99}).sent, u"b");
}

TEST(SendPaneRules, AltASendsThePaneWithALineEnd)
{
    const SendOutcome outcome = SendWholePane({ThreeLines, 4});
    EXPECT_EQ(outcome.sent, ThreeLines + u"\r\n");
    EXPECT_EQ(outcome.pane.text, ThreeLines + u"\r\n");
    EXPECT_EQ(outcome.pane.caret, 4u);
}

TEST(SendPaneRules, AltAAddsNothingToATextThatEndsInALineEnd)
{
    const SendOutcome outcome = SendWholePane({u"G\r\n", 0});
    EXPECT_EQ(outcome.sent, u"G\r\n");
    EXPECT_EQ(outcome.pane.text, u"G\r\n");
}

TEST(SendPaneRules, AltAOnAnEmptyPaneSendsALineEnd)
{
    EXPECT_EQ(SendWholePane({}).sent, u"\r\n");
}

TEST(SendPaneRules, AltCEmptiesAndSendsNothing)
{
    const SendOutcome outcome = EmptySendPane({ThreeLines, 4});
    EXPECT_EQ(outcome.pane.text, u"");
    EXPECT_EQ(outcome.pane.caret, 0u);
    EXPECT_FALSE(outcome.sent);
}

TEST(SendPaneRules, AnEditorsLineEndsCountOnceThePanesTwice)
{
    for (const auto& [editor, pane] : {std::pair{0u, 0u}, {1u, 1u}, {2u, 3u}, {3u, 4u}}) {
        EXPECT_EQ(PaneOfEditor(u"a\nb", editor).caret, pane);
        EXPECT_EQ(EditorCaret({u"a\r\nb", pane}), editor);
    }
    EXPECT_EQ(PaneOfEditor(u"a\nb", 0).text, u"a\r\nb");
    EXPECT_EQ(EditorCaret({u"a\r\nb", 2}), 2u); // between CR and LF
}

TEST(ReceivedText, LineEndsOfEveryKindBeginARow)
{
    ReceivedRows rows;
    EXPECT_EQ(rows.Take("a\rb\nc\r\nd\n\ne").text, "a\nb\nc\nd\n\ne");
}

TEST(ReceivedText, ALineEndThatComesInTwoPiecesIsOne)
{
    ReceivedRows rows;
    EXPECT_EQ(rows.Take("a\r").text, "a\n");
    EXPECT_EQ(rows.Take("\nb").text, "b");
    EXPECT_EQ(rows.Take("\r").text, "\n");
    EXPECT_EQ(rows.Take("c").text, "c");
}

TEST(ReceivedText, LongLinesGoOnInFurtherRows)
{
    ReceivedRows rows;
    const std::string row(ReceivedRows::RowLength, 'x');
    const auto first = rows.Take(row);
    EXPECT_EQ(first.text, row); // just fits
    EXPECT_TRUE(first.continuing.empty());
    const auto second = rows.Take("y\n" + row + row + "z\n");
    EXPECT_EQ(second.text, "\ny\n" + row + "\n" + row + "\nz\n");
    EXPECT_THAT(second.continuing, ElementsAre(1, 3, 4));
}

TEST(ReceivedText, RowsAreCountedInCharactersAndCutBetweenThem)
{
    ReceivedRows rows;
    std::string row;
    for (std::size_t i = 0; i < ReceivedRows::RowLength; ++i)
        row += "\u00e4";
    EXPECT_EQ(rows.Take(row + "\u00e4").text, row + "\n\u00e4");
}

TEST(ReceivedText, ACharacterIsShownWhenAllItsBytesHaveCome)
{
    EXPECT_EQ(WholeCharacters(""), 0u);
    EXPECT_EQ(WholeCharacters("ab"), 2u);
    EXPECT_EQ(WholeCharacters("a\xC3"), 1u);
    EXPECT_EQ(WholeCharacters("a\xC3\xA4"), 3u);
    EXPECT_EQ(WholeCharacters("a\xE2\x82"), 1u);
    EXPECT_EQ(WholeCharacters("a\xF0\x9F\x98"), 1u);
    EXPECT_EQ(WholeCharacters("\xA4\xA4\xA4\xA4\xA4"), 5u); // no UTF-8 at all: nothing to wait for
}

TEST(TerminalPanes, ShareTheWindowInHalvesOrKeepTheSendPane)
{
    EXPECT_EQ(HalfEach(401).receive + HalfEach(401).send, 401);
    EXPECT_EQ(HalfEach(400).send, 200);
    EXPECT_EQ(WithSendHeight(400, 130).receive, 270);
    EXPECT_EQ(WithSendHeight(400, 130).send, 130);
    EXPECT_EQ(WithSendHeight(100, 130).receive, 0);
    EXPECT_EQ(WithSendHeight(100, -5).send, 0);
}

} // namespace
} // namespace harvelop::test
