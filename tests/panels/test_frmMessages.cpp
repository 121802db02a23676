#include "panels/frmSupport.h"
#include "panels/options_fixture.h"

#include <QProgressBar>

#include <algorithm>
#include <cstdlib>

namespace harvelop::test
{
namespace
{

class MessageWindow : public OptionsPanel
{
protected:
    QProgressBar* Bar() { return messages->findChild<QProgressBar*>("pbMessages"); }
};

TEST_F(MessageWindow, LoadsOnItsFirstShowAndLocksTheOptions)
{
    Open();
    EXPECT_FALSE(messages);
    p.progress.ShowMessageForm();
    ASSERT_TRUE(messages);
    EXPECT_TRUE(messages->isVisible());
    EXPECT_TRUE(p.state.MessagesLoaded);
    EXPECT_EQ(messages->windowTitle(), " tallyCore Harvel");
    EXPECT_EQ(Bar()->value(), 0);
    for (const char* name :
         {"cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_View", "cmdUnload_Delete", "cmdUnload_Unload",
          "cmdTerminal", "chkUnload_FindPorts", "cbxUnload_Ports", "cbxUnload_TallyCores", "cmdSMTPTestLogin",
          "cmdFTPTestLogin", "cmdApply", "cmdCancel", "cmdOk"})
        EXPECT_FALSE(Enabled(name)) << name;
    p.progress.HideMessageForm();
    EXPECT_FALSE(messages->isVisible());
    EXPECT_TRUE(p.state.MessagesLoaded);
}

TEST_F(MessageWindow, StaysOnTopAndTakesNoFocus)
{
    Open();
    p.progress.ShowMessageForm();
    EXPECT_TRUE(messages->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(messages->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(MessageWindow, NamesTheStepInCaptionAndBar)
{
    Open();
    p.progress.ShowMessageForm();
    p.progress.ShowProgressText("Searching for tallyCores ...");
    EXPECT_EQ(messages->windowTitle(), "<- Searching for tallyCores ...");
    EXPECT_EQ(Bar()->text(), "Searching for tallyCores ...");
}

TEST_F(MessageWindow, PercentSignsAreNoPlaceholdersOfTheBar)
{
    Open();
    p.progress.ShowMessageForm();
    p.progress.ShowProgressText("%p and %v of %m");
    EXPECT_EQ(messages->windowTitle(), "<- %p and %v of %m");
    EXPECT_EQ(Bar()->text().remove(QChar(0x2060)), "%p and %v of %m");
}

TEST_F(MessageWindow, IsWideEnoughForItsCaptions)
{
    Open();
    p.progress.ShowMessageForm();
    const std::string step = "Could Not Find a Modem on Com 3, and a good many words more that want to be read here";
    p.progress.ShowProgressText(step);
    EXPECT_GE(messages->sizeHint().width(), messages->fontMetrics().horizontalAdvance(ToQString(step)));
}

TEST_F(MessageWindow, StepsNeverFillTheBar)
{
    Open();
    p.progress.ShowMessageForm();
    p.progress.SetProgressRange(10);
    for (int i = 0; i < 20; ++i)
        p.progress.StepProgress(1);
    EXPECT_EQ(Bar()->value(), 9);
    EXPECT_EQ(Bar()->maximum(), 10);
    p.progress.ResetProgress();
    EXPECT_EQ(Bar()->value(), 10);
}

TEST_F(MessageWindow, StandsUnderTheOptionsWhenNoPlaceIsStored)
{
    Open();
    form->move(300, 100);
    QApplication::processEvents();
    p.progress.ShowMessageForm();
    const QRect options = form->frameGeometry();
    EXPECT_NEAR(messages->x(), options.left() + options.width() / 2 - messages->sizeHint().width() / 2, 1);
    EXPECT_NEAR(messages->y(), options.top() + TwipsToPixels(2300, *messages), 1);
}

TEST_F(MessageWindow, PlaceOfTopZeroIsUsedAsItStands)
{
    Open();
    p.options.MessagesTop = 0;
    p.options.MessagesLeft = 500;
    p.progress.ShowMessageForm();
    EXPECT_EQ(messages->pos(), QPoint(TwipsToPixels(500, *messages), 0));
}

TEST_F(MessageWindow, PlaceOfLeftZeroIsUsedAsItStands)
{
    Open();
    p.options.MessagesTop = 500;
    p.options.MessagesLeft = 0;
    p.progress.ShowMessageForm();
    EXPECT_EQ(messages->pos(), QPoint(0, TwipsToPixels(500, *messages)));
}

TEST_F(MessageWindow, StandsInTheMiddleOfTheScreenWithoutOptions)
{
    p.progress.ShowMessageForm();
    const QPoint off = messages->geometry().center() - messages->screen()->availableGeometry().center();
    EXPECT_LE(std::abs(off.x()), 2);
    EXPECT_LE(std::abs(off.y()), 2);
}

TEST_F(MessageWindow, SaysInTheUsersLanguageThatItExits)
{
    Speak("540:1:9:Harvel wird beendet\r\n");
    Open();
    p.progress.ShowMessageForm();
    messages->close();
    EXPECT_EQ(messages->windowTitle(), "<- Harvel wird beendet ...");
}

TEST_F(MessageWindow, ClosedByTheUserEndsTheProgramAfterASecond)
{
    Open();
    p.progress.ShowMessageForm();
    messages->move(150, 75);
    const QPoint place = messages->geometry().topLeft();
    QStringList captions;
    QObject::connect(messages.get(), &QWidget::windowTitleChanged,
                     [&](const QString& caption) { captions << caption; });
    const double before = t.pump.NowMs();
    messages->close();
    EXPECT_EQ(captions, QStringList{"<- Harvel is Exiting ..."});
    EXPECT_FALSE(messages->isVisible());
    EXPECT_TRUE(p.end.Ended());
    EXPECT_FALSE(p.state.MessagesLoaded);
    EXPECT_NEAR(t.pump.NowMs() - before, 1000, 1);
    EXPECT_EQ(Saved("MessagesLeft"), std::to_string(place.x() * 15));
    EXPECT_EQ(Saved("MessagesTop"), std::to_string(place.y() * 15));
}

TEST_F(MessageWindow, ClosedTwiceInItsLastSecondStoresOnce)
{
    Open();
    p.progress.ShowMessageForm();
    t.pump.After(500, [this] { messages->close(); });
    messages->close();
    EXPECT_TRUE(p.end.Ended());
    EXPECT_EQ(std::count(t.files.writes.begin(), t.files.writes.end(), TestProgram::OptionsIni), 1);
}

TEST_F(MessageWindow, ClosedInTheMiddleOfAWaitEndsIt)
{
    Open();
    p.progress.ShowMessageForm();
    t.pump.After(300, [this] { messages->close(); });
    p.waiting.WaitMs(60000);
    EXPECT_TRUE(p.end.Ended());
    EXPECT_LT(t.pump.NowMs(), 2000);
}

TEST_F(MessageWindow, SaysNothingAfterTheOptionsWereClosed)
{
    Open();
    p.progress.ShowMessageForm();
    p.progress.ShowProgressText("Connected");
    p.state.StopLinkWork = true;
    p.progress.ShowProgressText("Dialling");
    EXPECT_EQ(messages->windowTitle(), "<- Connected");
}

TEST_F(MessageWindow, LockedInstallationKeepsItsButtonsOffAfterwards)
{
    Store(1);
    p.options.LockControls = true;
    Open();
    p.progress.ShowMessageForm();
    p.progress.HideMessageForm();
    p.controls.EnableOptionsControls();
    EXPECT_TRUE(Enabled("cmdUnload_View"));
    for (const char* name : {"cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_Delete"})
        EXPECT_FALSE(Enabled(name)) << name;
}

} // namespace
} // namespace harvelop::test
