// Selecting, copying and scrolling in the pane that shows what a logger says.
#include "terminal/frmReceivePane.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <string>

namespace harvelop::test
{
namespace
{

class ReceivePaneTest : public testing::Test
{
protected:
    ReceivePaneTest()
    {
        pane.resize(400, 200);
        pane.show();
        QApplication::setActiveWindow(&pane);
        pane.setFocus();
    }
    // Text, and the frame that brings the scroll bar up to date.
    void Say(const std::string& text)
    {
        pane.Append(text);
        const auto rows = static_cast<int>(pane.Received().Rows());
        const QScrollBar& bar = *pane.verticalScrollBar();
        ASSERT_TRUE(QTest::qWaitFor([&] { return bar.maximum() == std::max(0, rows - bar.pageStep()); }));
    }
    void SayLines(int lines)
    {
        std::string text;
        for (int i = 0; i < lines; ++i)
            text += "line " + std::to_string(i) + "\r\n";
        Say(text);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&pane, key, modifiers); }
    QPoint At(double column, int row)
    {
        const QFontMetricsF metrics(pane.font());
        return QPointF(4 + metrics.horizontalAdvance('0') * column, 4 + metrics.lineSpacing() * (row + 0.5)).toPoint();
    }
    int Value() { return pane.verticalScrollBar()->value(); }

    ReceivePane pane;
};

TEST_F(ReceivePaneTest, KeysSelectAndCopy)
{
    Say("one two\r\nthree");
    Key(Qt::Key_Home, Qt::ControlModifier);
    Key(Qt::Key_Right);
    Key(Qt::Key_Right, Qt::ShiftModifier);
    Key(Qt::Key_End, Qt::ShiftModifier);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(pane.SelectedText(), "ne two\nthree");
    Key(Qt::Key_Up, Qt::ShiftModifier);
    Key(Qt::Key_Left, Qt::ShiftModifier);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), pane.SelectedText());
    EXPECT_EQ(pane.SelectedText(), "ne ");
    Key(Qt::Key_Left);
    EXPECT_EQ(pane.SelectedText(), "");
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(pane.SelectedText(), "one two\nthree");
}

TEST_F(ReceivePaneTest, CopyingNothingLeavesTheClipboardAlone)
{
    Say("text");
    QApplication::clipboard()->setText("kept");
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "kept");
}

TEST_F(ReceivePaneTest, KeysScroll)
{
    SayLines(300);
    const int end = pane.verticalScrollBar()->maximum();
    EXPECT_EQ(Value(), end);
    Key(Qt::Key_PageUp);
    Key(Qt::Key_PageUp);
    EXPECT_LT(Value(), end);
    EXPECT_GT(Value(), 0);
    const int above = Value();
    SayLines(1);
    EXPECT_EQ(Value(), above); // the user has scrolled up
    Key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Value(), 0);
    for (int i = 0; i < pane.verticalScrollBar()->pageStep(); ++i)
        Key(Qt::Key_Down);
    EXPECT_EQ(Value(), 1);
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(Value(), pane.verticalScrollBar()->maximum());
    SayLines(1);
    EXPECT_EQ(Value(), pane.verticalScrollBar()->maximum());
}

TEST_F(ReceivePaneTest, TheMouseSelects)
{
    Say("one two\r\nthree four");
    QTest::mousePress(pane.viewport(), Qt::LeftButton, {}, At(4, 0));
    QTest::mouseMove(pane.viewport(), At(5, 1));
    QTest::mouseRelease(pane.viewport(), Qt::LeftButton, {}, At(5, 1));
    EXPECT_EQ(pane.SelectedText(), "two\nthree");
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, Qt::ShiftModifier, At(7, 0));
    EXPECT_EQ(pane.SelectedText(), "two");
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, {}, At(2, 0));
    EXPECT_EQ(pane.SelectedText(), "");
    QTest::mouseDClick(pane.viewport(), Qt::LeftButton, {}, At(8, 1));
    EXPECT_EQ(pane.SelectedText(), "four");
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, {}, At(8, 1));
    EXPECT_EQ(pane.SelectedText(), "three four");
}

TEST_F(ReceivePaneTest, SelectingBeyondTheEdgeScrolls)
{
    SayLines(300);
    QTest::mousePress(pane.viewport(), Qt::LeftButton, {}, At(0, 2));
    QTest::mouseMove(pane.viewport(), {5, -30});
    EXPECT_TRUE(QTest::qWaitFor([&] { return Value() == 0; }, 30000));
    QTest::mouseRelease(pane.viewport(), Qt::LeftButton, {}, {5, -30});
    EXPECT_TRUE(pane.SelectedText().startsWith("line 0\nline 1\n"));
}

TEST_F(ReceivePaneTest, ASelectionStaysWhileTextArrives)
{
    Say("one two");
    Key(Qt::Key_A, Qt::ControlModifier);
    SayLines(300);
    EXPECT_EQ(pane.SelectedText(), "one two");
    EXPECT_EQ(Value(), pane.verticalScrollBar()->maximum());
}

TEST_F(ReceivePaneTest, AnotherWidthKeepsTheTopRowOrTheEnd)
{
    const std::string line(150, 'x');
    for (int i = 0; i < 100; ++i)
        pane.Append(std::to_string(i) + line + "\r\n");
    SayLines(1);
    pane.resize(300, 200);
    QApplication::processEvents();
    EXPECT_EQ(Value(), pane.verticalScrollBar()->maximum());
    pane.verticalScrollBar()->setValue(0);
    Key(Qt::Key_Home, Qt::ControlModifier);
    const std::size_t fiftieth = (line.size() + 3) * 50;
    pane.verticalScrollBar()->setValue(static_cast<int>(pane.Received().PlaceOf(fiftieth).row));
    const QString seen = pane.TextInView().left(20);
    pane.resize(500, 200);
    QApplication::processEvents();
    EXPECT_EQ(pane.TextInView().left(20), seen);
}

TEST_F(ReceivePaneTest, TheMenuCopiesSelectsAndAsksToClear)
{
    Say("text");
    QSignalSpy asked(&pane, &ReceivePane::ClearAsked);
    const auto action = [&](const QString& text) -> QAction* {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, pane.mapToGlobal(QPoint()));
        QApplication::sendEvent(&pane, &event);
        for (QAction* each : pane.findChildren<QMenu*>().last()->actions())
            if (each->text().remove('&') == text)
                return each;
        return nullptr;
    };
    ASSERT_TRUE(action("Copy"));
    EXPECT_FALSE(action("Copy")->isEnabled());
    action("Select All")->trigger();
    EXPECT_EQ(pane.SelectedText(), "text");
    action("Copy")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), "text");
    action("Clear")->trigger();
    EXPECT_EQ(asked.count(), 1);
    for (QMenu* menu : pane.findChildren<QMenu*>())
        menu->close();
}

TEST_F(ReceivePaneTest, FollowsThePalette)
{
    Say("MMMM");
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, Qt::blue);
    pane.setPalette(dark);
    const QPoint corner(pane.viewport()->width() - 2, pane.viewport()->height() - 2);
    EXPECT_EQ(pane.viewport()->grab().toImage().pixelColor(corner), QColor(Qt::black));
    pane.SelectAll();
    EXPECT_EQ(pane.viewport()->grab().toImage().pixelColor(At(0, 0) - QPoint(0, 6)).blue(), 255);
}

TEST_F(ReceivePaneTest, AScreenReaderSeesWhatIsInView)
{
    SayLines(300);
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&pane);
    ASSERT_TRUE(seen && seen->textInterface());
    EXPECT_TRUE(seen->state().readOnly);
    QAccessibleTextInterface& text = *seen->textInterface();
    const QString all = text.text(0, text.characterCount());
    EXPECT_TRUE(all.endsWith("line 299\n"));
    EXPECT_FALSE(all.contains("line 0\n"));
    EXPECT_EQ(seen->text(QAccessible::Value), all);
}

} // namespace
} // namespace harvelop::test
