// The add dialog as the buttons of the whole program open it.
#include "app/desktop_program.h"
#include "settings/sample_loggers.h"
#include "support/test_program.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

class AddDialogOfTheProgram : public testing::Test
{
protected:
    AddDialogOfTheProgram()
    {
        t.Installed();
        t.files.files[TestProgram::OptionsIni] = "AvailablePorts=3,\r\nFindPorts=0\r\n";
        t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(NetworkLogger()) + "\r\n";
        t.serial.ports[3] = {};
    }

    QPushButton& Button(const QWidget& form, const char* name)
    {
        auto* button = form.findChild<QPushButton*>(name);
        if (!button)
            throw std::runtime_error(std::string("no button ") + name);
        return *button;
    }
    frmOptions& OptionsPanel() { return dynamic_cast<frmOptions&>(*p.forms.options); }
    frmTallyCores& Panel() { return dynamic_cast<frmTallyCores&>(*p.panels.At(1)); }

    // Presses a button that opens the dialog, and works in it.
    void Open(QPushButton& button, const std::function<void(frmAddTallyCore&)>& work)
    {
        bool worked = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<frmAddTallyCore*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            work(*dialog);
            worked = true;
            dialog->close();
        });
        ASSERT_TRUE(button.isEnabled());
        button.click();
        EXPECT_TRUE(worked);
        EXPECT_FALSE(QApplication::activeModalWidget());
        EXPECT_FALSE(p.state.AddDialogOpen || p.state.EditingExisting || p.state.AddingLogger || p.state.NewLoggerMode);
    }

    TestProgram t;
    DesktopProgram program{{t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop}};
    Program& p = program.heart;
};

TEST_F(AddDialogOfTheProgram, AddOpensItOverTheOptionsForANewLogger)
{
    program.Start("");
    Open(Button(OptionsPanel(), "cmdUnload_Add"), [this](const frmAddTallyCore& dialog) {
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(dialog.parentWidget(), &OptionsPanel());
        EXPECT_EQ(dialog.windowTitle(), " Add a tallyCore");
        EXPECT_TRUE(p.state.AddingLogger && p.state.AddRebuildPending && p.state.NewLoggerMode);
        EXPECT_FALSE(p.state.EditingExisting);
    });
    EXPECT_EQ(p.tables.Count(), 1);
}

TEST_F(AddDialogOfTheProgram, SetComOpensItOverThePanelOfItsLogger)
{
    program.Start("::4");
    const auto key = NetworkLogger().LoggerIconKey;
    ASSERT_EQ(key, "::4");
    p.state.CurrentLogger = 7;
    Open(Button(Panel(), "cmdSetCom"), [this](frmAddTallyCore& dialog) {
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(dialog.parentWidget(), &Panel());
        EXPECT_EQ(dialog.windowTitle(), " Change Settings");
        EXPECT_TRUE(p.state.EditingExisting);
        EXPECT_EQ(p.state.CurrentLogger, 1);
        dialog.findChild<QLineEdit*>("txtIP")->setText("host");
        dialog.findChild<QLineEdit*>("txtSerial")->setText("77");
        Button(dialog, "cmdOk").click();
    });
    EXPECT_EQ(Panel().windowTitle(), " KR40 tallyCore at host:3000");
    EXPECT_EQ(Panel().findChild<QLabel*>("lblSerialNumber")->text(), "Serial : 77");
    EXPECT_NE(t.files.files[TestProgram::FoundIni].find("host:3000"), std::string::npos);
}

TEST_F(AddDialogOfTheProgram, WhileACancelledTestStillEndsNoSecondOneOpens)
{
    program.Start("");
    int waits = 0;
    bool refused = false;
    t.pump.whenWaiting = [&](double) {
        ++waits;
        if (waits == 2)
            Button(dynamic_cast<frmAddTallyCore&>(*p.forms.add), "cmdCancel").click();
        if (waits != 4)
            return;
        EXPECT_FALSE(Button(OptionsPanel(), "cmdUnload_Add").isEnabled());
        p.state.AddingLogger = p.state.NewLoggerMode = true;
        p.actions.ShowAddDialog();
        refused = !QApplication::activeModalWidget() && !p.state.AddDialogOpen && !p.state.NewLoggerMode;
    };
    Open(Button(OptionsPanel(), "cmdUnload_Add"),
         [this](frmAddTallyCore& dialog) { Button(dialog, "cmdTest").click(); });
    t.pump.whenWaiting = nullptr;
    EXPECT_TRUE(refused);
    EXPECT_TRUE(Button(OptionsPanel(), "cmdUnload_Add").isEnabled());
    EXPECT_FALSE(t.serial.PortOpen());
}

TEST_F(AddDialogOfTheProgram, AProgramThatEndsInATestLeavesTheDialogsLoop)
{
    program.Start("");
    int waits = 0;
    t.pump.whenWaiting = [&](double) {
        if (++waits == 3)
            p.end.EndProgram();
    };
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<frmAddTallyCore*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        Button(*dialog, "cmdTest").click();
        EXPECT_TRUE(p.end.Ended());
        dialog->close(); // as the end of the event loop does
    });
    Button(OptionsPanel(), "cmdUnload_Add").click();
    t.pump.whenWaiting = nullptr;
    EXPECT_TRUE(p.end.Ended());
    EXPECT_FALSE(QApplication::activeModalWidget());
}

} // namespace
} // namespace harvelop::test
