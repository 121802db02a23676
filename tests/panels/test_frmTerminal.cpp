// What is typed into the terminal and what arrives in it.
#include "terminal_fixture.h"

#include <QClipboard>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>

namespace harvelop::test
{
namespace
{

class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

TEST_F(Terminal, EnterSendsTheLineAndLeavesOneLineBreak)
{
    Open();
    Link();
    QTest::keyClicks(Send(), "G");
    QTest::keyClick(Send(), Qt::Key_Return);
    QTest::keyClicks(Send(), "TEST0");
    QTest::keyClick(Send(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(Sent(), "G\r\nTEST0\r\n");
    EXPECT_EQ(Send()->toPlainText(), "G\nTEST0\n");
    EXPECT_EQ(Send()->textCursor().position(), 8);
}

TEST_F(Terminal, EnterInTheMiddleSendsTheLinesBelowToo)
{
    Open();
    Link();
    Send()->setPlainText("one\ntwo\nthree");
    QTextCursor caret = Send()->textCursor();
    caret.setPosition(5);
    Send()->setTextCursor(caret);
    QTest::keyClick(Send(), Qt::Key_Return);
    EXPECT_EQ(Sent(), "two\r\nthree\r\n");
    EXPECT_EQ(Send()->toPlainText(), "one\ntwo\nthree\n");
    EXPECT_EQ(Send()->textCursor().position(), Send()->toPlainText().size());
}

TEST_F(Terminal, EnterOnAnEmptyPaneSendsABareLineEnd)
{
    Open();
    Link();
    QTest::keyClick(Send(), Qt::Key_Return);
    EXPECT_EQ(Sent(), "\r\n");
}

TEST_F(Terminal, HoldingEnterSendsOnceAndAnEnterFromElsewhereNothing)
{
    Open();
    Link();
    QTest::keyRelease(Send(), Qt::Key_Return); // dismissed a box
    EXPECT_EQ(Sent(), "");
    QTest::keyPress(Send(), Qt::Key_Return);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent up(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QApplication::sendEvent(Send(), &up);
        QApplication::sendEvent(Send(), &down);
    }
    QTest::keyRelease(Send(), Qt::Key_Return);
    EXPECT_EQ(Sent(), "\r\n");
    EXPECT_EQ(Send()->toPlainText(), "\n");
}

TEST_F(Terminal, ShiftEnterIsPlainEditing)
{
    Open();
    Link();
    QTest::keyClicks(Send(), "a");
    QTest::keyClick(Send(), Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(Send(), "b");
    EXPECT_EQ(Sent(), "");
    EXPECT_EQ(Send()->toPlainText(), "a\nb");
    QTest::keyClick(Send(), Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(Sent(), "a\r\nb\r\n\r\n");
}

TEST_F(Terminal, AltASendsThePaneInOneCallAndAddsNoSecondLineEnd)
{
    Open();
    Link();
    Send()->setPlainText("one\ntwo\n");
    QTest::keyClick(Send(), Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(Sent(), "one\r\ntwo\r\n\r\n"); // its own line end, and that of the line sent
    EXPECT_EQ(Send()->toPlainText(), "one\ntwo\n");
}

TEST_F(Terminal, AltCEmptiesTheOnePaneOnly)
{
    Open();
    Link();
    Arrive("hello");
    ASSERT_TRUE(Shows("hello"));
    Send()->setPlainText("G");
    QTest::keyClick(Send(), Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(Send()->toPlainText(), "");
    EXPECT_EQ(Receive()->Text(), "hello");
    Send()->setPlainText("G");
    QTest::keyClick(Receive(), Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(Send()->toPlainText(), "G");
    EXPECT_EQ(Receive()->Text(), "");
    Arrive("again");
    EXPECT_TRUE(Shows("again"));
    EXPECT_EQ(Sent(), "");
}

TEST_F(Terminal, OtherKeysMeanNothingToTheReceivePane)
{
    Open();
    Link();
    Arrive("hello");
    ASSERT_TRUE(Shows("hello"));
    QTest::keyClick(Receive(), Qt::Key_C);
    QTest::keyClick(Receive(), Qt::Key_C, Qt::AltModifier | Qt::ShiftModifier);
    QTest::keyClick(Receive(), Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(Receive()->Text(), "hello");
}

TEST_F(Terminal, CharactersThatComeInPiecesAndBytesThatAreNoneBothArrive)
{
    Open();
    Link();
    Arrive("\xC3");
    Arrive("\xA4\r");
    Arrive("\nx\xC3");
    EXPECT_TRUE(Shows(QString::fromUtf8("\xC3\xA4\nx") + ToQString("\xC3")));
}

TEST_F(Terminal, FollowsTheOutputUnlessTheUserHasScrolledUp)
{
    Open();
    Link();
    std::string lines;
    for (int i = 0; i < 500; ++i)
        lines += "line " + std::to_string(i) + "\r\n";
    form->Append(lines);
    QScrollBar* bar = Receive()->verticalScrollBar();
    const auto reaches = [&](std::size_t rows) {
        return QTest::qWaitFor([&] { return bar->maximum() + bar->pageStep() == static_cast<int>(rows); });
    };
    ASSERT_TRUE(reaches(501));
    EXPECT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
    bar->setValue(10);
    form->Append("more\r\n");
    ASSERT_TRUE(reaches(502));
    EXPECT_EQ(bar->value(), 10);
    bar->setValue(bar->maximum());
    form->Append("and more\r\n");
    ASSERT_TRUE(reaches(503));
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(Terminal, AVeryLongLineIsShownInRowsAndCopiedWhole)
{
    Open();
    const QString line(200000, 'x');
    form->Append("a\r\n" + line.toStdString() + "\r\nb");
    const std::size_t columns = Receive()->Received().Columns();
    EXPECT_EQ(Receive()->Received().Rows(), 1 + (200000 + columns - 1) / columns + 1);
    QTest::keyClick(Receive(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Receive(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "a\n" + line + "\nb");
}

TEST_F(Terminal, AFloodIsAllThereAndPaintedOnceAFrame)
{
    Open();
    PaintCount paints(*Receive()->viewport());
    std::string flood;
    for (int i = 0; i < 20000; ++i) {
        const std::string line = std::to_string(i) + " a line of what a logger says in the course of a day\r\n";
        form->Append(line);
        flood += line;
    }
    EXPECT_EQ(paints.count, 0); // nothing is painted while text is taken in
    ASSERT_TRUE(QTest::qWaitFor([&] { return paints.count > 0; }));
    EXPECT_EQ(Receive()->verticalScrollBar()->value(), Receive()->verticalScrollBar()->maximum());
    EXPECT_EQ(Receive()->Text(), ToQString(flood).remove('\r'));
}

TEST_F(Terminal, ALostLinkIsSaidInTheCaptionOnce)
{
    Open();
    p.link.LinkMode = "Ethernet";
    EXPECT_FALSE(QTest::qWaitFor([&] { return form->windowTitle() != " Terminal"; }, 500));
    p.link.LinkMode = "None";
    EXPECT_TRUE(QTest::qWaitFor([&] { return form->windowTitle() == " Not Connected"; }));
}

TEST_F(Terminal, AnUnpluggedPortIsSaidInTheCaption)
{
    Open();
    Link();
    EXPECT_FALSE(QTest::qWaitFor([&] { return form->windowTitle() != " Terminal"; }, 500));
    t.serial.Close(); // as the port does by itself when its device vanishes
    EXPECT_TRUE(QTest::qWaitFor([&] { return form->windowTitle() == " Not Connected"; }));
    EXPECT_EQ(p.link.LinkMode, "ComPort"); // the link is still there to be ended
}

TEST_F(Terminal, APortThatIsClosedForAQuietConnectIsNotLost)
{
    Open();
    Link();
    EXPECT_FALSE(QTest::qWaitFor([&] { return form->windowTitle() != " Terminal"; }, 500));
    p.state.QuietConnect = true;
    t.serial.Close();
    EXPECT_FALSE(QTest::qWaitFor([&] { return form->windowTitle() != " Terminal"; }, 500));
}

TEST_F(Terminal, WithoutALinkNothingIsSaidOfItsLoss)
{
    Open();
    p.link.LinkMode = "None";
    EXPECT_FALSE(QTest::qWaitFor([&] { return form->windowTitle() != " Terminal"; }, 500));
}

} // namespace
} // namespace harvelop::test
