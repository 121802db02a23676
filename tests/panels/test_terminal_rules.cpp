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
    EXPECT_EQ(outcome.pane.caret, outcome.pane.text.size()); // the walk to the end has taken it along
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
    EXPECT_EQ(SendCurrentLine({line, 0}).pane.caret, LongestWalk + 2);
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
