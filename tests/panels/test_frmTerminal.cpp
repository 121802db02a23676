#include "app/desktop_program.h"
#include "panels/frmSupport.h"
#include "settings/sample_loggers.h"
#include "simulator/simulated_logger.h"
#include "support/test_program.h"
#include "terminal/frmReceivePane.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>

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

// A terminal over a whole program on fakes, with a port open on Com 3.
class Terminal : public testing::Test
{
protected:
    Terminal()
    {
        p.state.AppPath = std::string(TestProgram::Directory) + "/";
        p.options.TerminalLeft = 1500;
        p.options.TerminalTop = 1200;
        p.options.TerminalWidth = 7500;
        p.options.TerminalHeight = 9000;
        p.options.TransmitHeight1 = 2400;
        t.serial.Plug(3, nullptr, "");
    }

    TerminalServices Services()
    {
        return {p.waiting, p.language, p.options,  p.store,    p.state, p.link,
                p.forms,   p.rs232,    p.ethernet, p.exchange, p.end};
    }
    void Open(const TerminalServices& services)
    {
        form = std::make_unique<frmTerminal>(services);
        form->Load();
        QApplication::setActiveWindow(form.get());
        QApplication::processEvents();
    }
    void Open() { Open(Services()); }
    void Link()
    {
        p.link.LinkMode = "ComPort";
        p.rs232.OpenComPort(3);
    }

    ReceivePane* Receive() { return form->findChild<ReceivePane*>("txtReceive"); }
    QPlainTextEdit* Send() { return form->findChild<QPlainTextEdit*>("txtTransmit"); }
    QSplitter* Panes() { return form->findChild<QSplitter*>("splPanes"); }
    bool Shows(const QString& text)
    {
        return QTest::qWaitFor([&] { return Receive()->Text() == text; });
    }
    void Arrive(const std::string& text)
    {
        t.serial.Arrive(text);
        p.waiting.ServeEvents();
    }
    std::string Sent()
    {
        p.waiting.ServeEvents();
        return t.serial.Sent();
    }
    int Pixels(double twips) { return TwipsToPixels(twips, *form); }

    TestProgram t;
    Program& p = t.heart;
    std::unique_ptr<frmTerminal> form;
};

TEST_F(Terminal, ComesUpAtTheStoredPlaceWithItsCaptions)
{
    const double before = t.pump.NowMs();
    Open();
    EXPECT_NEAR(t.pump.NowMs() - before, 100, 1);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(p.state.TerminalOpen);
    EXPECT_EQ(p.forms.terminal, form.get());
    constexpr int Frame = 2; // of the tests' desktop
    EXPECT_NEAR(form->geometry().x(), Pixels(1500), Frame);
    EXPECT_NEAR(form->geometry().y(), Pixels(1200), Frame);
    EXPECT_EQ(form->size(), QSize(Pixels(7500), Pixels(9000)));
    EXPECT_EQ(form->windowTitle(), " Terminal");
    EXPECT_EQ(form->findChild<QGroupBox*>("frmReceive")->title(), " Receive");
    EXPECT_EQ(form->findChild<QGroupBox*>("frmTransmit")->title(), " Send");
    EXPECT_EQ(Send()->font().family(), "Courier New");
    EXPECT_TRUE(Send()->hasFocus());
    EXPECT_EQ(Panes()->sizes()[1], Pixels(2400));
}

TEST_F(Terminal, SpeaksTheUsersLanguage)
{
    p.options.Language = "Plain";
    t.files.files[p.state.AppPath + "Plain.txt"] = "230:2:9:T230\r\n235:2:9:T235\r\n236:2:9:T236\r\n394:2:9:T394\r\n";
    p.language.LangActive = true;
    p.language.LoadLanguageFile();
    Open();
    EXPECT_EQ(form->windowTitle(), " T235");
    EXPECT_EQ(form->findChild<QGroupBox*>("frmReceive")->title(), " T230");
    EXPECT_EQ(form->findChild<QGroupBox*>("frmTransmit")->title(), " T236");
    EXPECT_EQ(Receive()->accessibleName(), "T230");
    EXPECT_EQ(Send()->accessibleName(), "T236");
    p.link.LinkMode = "Ethernet";
    EXPECT_FALSE(QTest::qWaitFor([&] { return form->windowTitle() != " T235"; }, 500));
    p.link.LinkMode = "None";
    EXPECT_TRUE(QTest::qWaitFor([&] { return form->windowTitle() == " T394"; }));
}

TEST_F(Terminal, TabGoesFromPaneToPane)
{
    Open();
    QTest::keyClick(Send(), Qt::Key_Tab);
    EXPECT_TRUE(Receive()->hasFocus());
    QTest::keyClick(Receive(), Qt::Key_Tab);
    EXPECT_TRUE(Send()->hasFocus());
    EXPECT_EQ(Send()->toPlainText(), "");
}

TEST_F(Terminal, APlaceOfAnyNumberIsBroughtOntoTheScreen)
{
    p.options.TerminalWidth = 1e30F;
    p.options.TerminalHeight = -3;
    p.options.TerminalLeft = -1e30F;
    p.options.TransmitHeight1 = 1e30F;
    Open();
    EXPECT_TRUE(form->screen()->geometry().intersects(form->geometry()));
    EXPECT_LE(form->width(), form->screen()->geometry().width());
    EXPECT_GT(Receive()->height(), 0);
}

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

TEST_F(Terminal, KeepsItsPlaceAndTheHeightThatTheUserGaveTheSendPane)
{
    Open();
    Link();
    form->resize(form->width() + 30, form->height() + 60);
    QApplication::processEvents();
    EXPECT_EQ(Panes()->sizes()[1], Pixels(2400)); // it is the upper pane that grows
    QSplitterHandle* border = Panes()->handle(1);
    QTest::mousePress(border, Qt::LeftButton);
    QTest::mouseMove(border, border->rect().center() - QPoint(0, 40));
    QTest::mouseRelease(border, Qt::LeftButton, {}, border->rect().center() - QPoint(0, 40));
    QApplication::processEvents();
    const int height = Panes()->sizes()[1];
    EXPECT_GT(height, Pixels(2400));
    p.exchange.txtTerminal.Append("unseen");
    const double before = t.pump.NowMs();
    EXPECT_TRUE(form->close());
    EXPECT_NEAR(t.pump.NowMs() - before, 300, 1);
    EXPECT_FALSE(p.state.TerminalOpen);
    EXPECT_EQ(p.options.TerminalLeft, PixelsToTwips(form->geometry().x(), *form));
    EXPECT_EQ(p.options.TerminalTop, PixelsToTwips(form->geometry().y(), *form));
    EXPECT_EQ(p.options.TerminalWidth, PixelsToTwips(form->width(), *form));
    EXPECT_EQ(p.options.TerminalHeight, PixelsToTwips(form->height(), *form));
    EXPECT_EQ(p.options.TransmitHeight1, PixelsToTwips(height, *form));
    EXPECT_EQ(p.link.LinkMode, "None");
    EXPECT_FALSE(t.serial.PortOpen());
    EXPECT_TRUE(p.exchange.txtTerminal.empty());
    EXPECT_NE(t.files.files[TestProgram::OptionsIni].find("TerminalWidth=" +
                                                          std::to_string(std::lround(p.options.TerminalWidth))),
              std::string::npos);
    EXPECT_FALSE(p.end.Ended());
    EXPECT_EQ(p.forms.terminal, nullptr);
}

TEST_F(Terminal, MaximisedAndRestoredThePanesHaveHalfEach)
{
    Open();
    const auto halves = [this] {
        return QTest::qWaitFor([this] { return std::abs(Panes()->sizes()[0] - Panes()->sizes()[1]) <= 1; });
    };
    form->showMaximized();
    EXPECT_TRUE(halves());
    EXPECT_EQ(form->property("tag").toString(), "max");
    form->showNormal();
    EXPECT_TRUE(halves());
    EXPECT_EQ(form->property("tag").toString(), "");
}

TEST_F(Terminal, ANetworkLinkIsClosedAsOne)
{
    Open();
    p.link.LinkMode = p.link.ConnectionKind = "Ethernet";
    t.serial.CommPort(3);
    t.serial.Open();
    form->close();
    EXPECT_EQ(p.link.LinkMode, "None");
    EXPECT_TRUE(t.serial.PortOpen()); // was not looked at
}

TEST_F(Terminal, ClosedWhileItLoadsItIsNotUp)
{
    form = std::make_unique<frmTerminal>(Services());
    t.pump.After(50, [this] { form->close(); });
    form->Load();
    EXPECT_FALSE(p.state.TerminalOpen);
    EXPECT_FALSE(form->isVisible());
    form->Load(); // and can be opened again
    EXPECT_TRUE(p.state.TerminalOpen);
}

TEST_F(Terminal, ClosedTwiceItClosesOnce)
{
    Open();
    t.pump.After(100, [this] {
        form->close();
        form->Close();
        EXPECT_TRUE(form->isVisible()); // it is on its way
    });
    EXPECT_TRUE(form->close());
    EXPECT_EQ(std::count(t.files.writes.begin(), t.files.writes.end(), TestProgram::OptionsIni), 1);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(Terminal, OpenedAgainItIsEmpty)
{
    Open();
    Link();
    Arrive("old");
    ASSERT_TRUE(Shows("old"));
    Send()->setPlainText("G");
    form->close();
    form->Load();
    EXPECT_TRUE(p.state.TerminalOpen);
    EXPECT_EQ(Receive()->Text(), "");
    EXPECT_EQ(Send()->toPlainText(), "");
    EXPECT_EQ(form->windowTitle(), " Terminal");
}

TEST_F(Terminal, EndsAProgramThatWasStartedForIt)
{
    Open();
    p.state.TerminalOnly = true;
    form->close();
    EXPECT_TRUE(p.end.Ended());
    EXPECT_NE(t.files.files[TestProgram::OptionsIni], "");
}

TEST_F(Terminal, EndsAProgramWhoseCommandLineAsksForThat)
{
    TerminalServices services = Services();
    services.endsProgram = true;
    Open(services);
    form->close();
    EXPECT_TRUE(p.end.Ended());
}

TEST_F(Terminal, TheEndOfTheProgramInTheMiddleOfItsWaitsIsQuiet)
{
    form = std::make_unique<frmTerminal>(Services());
    t.pump.After(50, [this] { p.end.EndProgram(); });
    form->Load();
    EXPECT_FALSE(p.state.TerminalOpen);
    form->close();
    EXPECT_TRUE(t.files.writes.empty());
    EXPECT_EQ(Sent(), "");
}

} // namespace
} // namespace harvelop::test
