// Ok, Cancel and the close box: every way out saves and ends the program.
#include "panels/frmSupport.h"
#include "panels/options_fixture.h"

#include <algorithm>

namespace harvelop::test
{
namespace
{

class OptionsClosing : public OptionsPanel
{
protected:
    void ExpectClosed()
    {
        EXPECT_FALSE(form->isVisible());
        EXPECT_TRUE(p.end.Ended());
        EXPECT_TRUE(p.state.StopLinkWork);
        EXPECT_TRUE(p.state.StopSearch);
        EXPECT_EQ(std::count(t.files.writes.begin(), t.files.writes.end(), TestProgram::OptionsIni), 1);
        EXPECT_EQ(std::count(t.files.writes.begin(), t.files.writes.end(), TestProgram::FoundIni), 1);
    }
};

TEST_F(OptionsClosing, OkSavesAndEnds)
{
    Store(3);
    Open();
    Type("txtSMTPServerName", "mail-1.local");
    p.state.cbxUnload_TallyCores.Select(2);
    Click("cmdOk");
    ExpectClosed();
    EXPECT_FALSE(p.state.OptionsLoaded);
    EXPECT_EQ(Saved("SMTPServerName"), "mail1.local");
    EXPECT_EQ(Saved("LastUtallyCore"), "2");
}

TEST_F(OptionsClosing, EnterIsOk)
{
    Open();
    Field("txtFTPUserName")->setFocus();
    QTest::keyClick(form.get(), Qt::Key_Return);
    ExpectClosed();
    EXPECT_FALSE(p.state.OptionsLoaded);
}

TEST_F(OptionsClosing, CancelPutsTheOptionsBackAndSaves)
{
    p.options.SMTPServerName = "mail";
    p.options.DesktopDir = "2008";
    Open();
    Click("chkUnloadAll");
    Type("txtSMTPServerName", "other");
    Click("cmdCancel");
    ExpectClosed();
    EXPECT_EQ(Saved("UnloadAll"), "False");
    EXPECT_EQ(Saved("SMTPServerName"), "mail");
    EXPECT_EQ(Saved("DesktopDir"), "2008");
    EXPECT_TRUE(p.state.OptionsLoaded);
}

TEST_F(OptionsClosing, CancelPutsBackWhatLoadingChanged)
{
    p.options.SMTPAuthenticationType = "CRAM-MD5";
    Open(); // writes the type as its button does, and forces unloading as there is no form
    EXPECT_EQ(p.options.SMTPAuthenticationType, "CRM-MD5");
    EXPECT_TRUE(p.options.RunHarvelOnStartup);
    Click("cmdCancel");
    EXPECT_EQ(Saved("SMTPAuthenticationType"), "CRAM-MD5");
    EXPECT_EQ(Saved("RunHarvelOnStartup"), "False");
}

TEST_F(OptionsClosing, CancelTurnsADesktopDirectoryIntoZero)
{
    p.options.DesktopDir = "Logs";
    Open();
    Click("cmdCancel");
    EXPECT_EQ(Saved("DesktopDir"), "0");
}

TEST_F(OptionsClosing, CancelKeepsAChangedTimeout)
{
    Open();
    Type("txtFTPTimeout", "60");
    Click("cmdCancel");
    EXPECT_EQ(Saved("FTPTimeout"), "60");
}

TEST_F(OptionsClosing, EscapeIsCancel)
{
    Open();
    Click("chkUnloadAll");
    QTest::keyClick(form.get(), Qt::Key_Escape);
    ExpectClosed();
    EXPECT_EQ(Saved("UnloadAll"), "False");
}

TEST_F(OptionsClosing, EscapeDoesNothingWhileWorkGoesOn)
{
    Open();
    p.controls.DisableOptionsControls();
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(p.end.Ended());
}

TEST_F(OptionsClosing, TheCloseBoxSavesWhatWasChanged)
{
    Open();
    Click("chkUnloadAll");
    form->close();
    ExpectClosed();
    EXPECT_EQ(Saved("UnloadAll"), "True");
    EXPECT_TRUE(p.state.OptionsLoaded);
}

TEST_F(OptionsClosing, StoresThePosition)
{
    Open();
    form->move(120, 90);
    QApplication::processEvents();
    const QPoint place = form->geometry().topLeft();
    form->close();
    for (const char* key : {"OptionsLeft", "tallyCoresLeft"})
        EXPECT_EQ(Saved(key), std::to_string(static_cast<int>(PixelsToTwips(place.x(), *form)))) << key;
    for (const char* key : {"OptionsTop", "tallyCoresTop"})
        EXPECT_EQ(Saved(key), std::to_string(static_cast<int>(PixelsToTwips(place.y(), *form)))) << key;
}

TEST_F(OptionsClosing, StoresTheChosenPort)
{
    p.options.AvailablePorts = "1,3,";
    p.link.PortAvailable[0] = p.link.PortAvailable[2] = true;
    Open();
    p.state.cbxUnload_Ports.Select(2);
    form->close();
    EXPECT_EQ(Saved("LastSearch"), "2");
}

TEST_F(OptionsClosing, StoresAllPortsAsZero)
{
    p.options.AvailablePorts = "3,";
    Open();
    p.state.cbxUnload_Ports.SetText(" All Ports");
    form->close();
    EXPECT_EQ(Saved("LastSearch"), "0");
}

TEST_F(OptionsClosing, IsIgnoredWhileALoggersPanelIsOpen)
{
    p.panels.Create(1);
    Open();
    panel.visible = true;
    form->SetFormEnabled(false);
    form->close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(p.end.Ended());
    EXPECT_EQ(panel.shows, 1);
    EXPECT_TRUE(t.files.writes.empty());
}

TEST_F(OptionsClosing, InTheMiddleOfASearchEndsItAtOnce)
{
    p.options.AvailablePorts = "1,3,";
    p.link.PortAvailable[0] = p.link.PortAvailable[2] = true;
    p.options.LastSearch = "0";
    t.serial.Plug(1, nullptr, "");
    t.serial.Plug(3, nullptr, "");
    Store(1);
    Open();
    t.dialogs.Expect(BoxAnswer::Ok);
    double closed = 0;
    size_t sent = 0;
    t.pump.After(4000, [&] {
        form->close();
        closed = t.pump.NowMs();
        sent = t.serial.Sent().size();
    });
    Click("cmdUnload_FindTallycores");
    ExpectClosed();
    EXPECT_EQ(t.pump.NowMs(), closed);
    EXPECT_EQ(t.serial.Sent().size(), sent);
}

TEST_F(OptionsClosing, ASecondTimeChangesNothing)
{
    Open();
    form->close();
    form->close();
    ExpectClosed();
}

} // namespace
} // namespace harvelop::test
