// The terminal as a window: its place, its panes, and every way in which it closes.
#include "terminal_fixture.h"

#include <QGroupBox>

#include <algorithm>
#include <cmath>

namespace harvelop::test
{
namespace
{

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
