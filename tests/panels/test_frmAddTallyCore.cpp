// What the dialog shows, in both uses, and how its controls follow each other.
#include "add_fixture.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QWindow>

namespace harvelop::test
{
namespace
{

using Texts = std::vector<std::string>;

constexpr const char* Frames[] = {"fraComPort", "fraDialup", "fraEthernet"};

TEST(FrmAddTallyCore, ItOpensForAComPortWithItsListsFilled)
{
    AddBench b;
    b.Add();
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
    EXPECT_TRUE(b.heart.state.AddDialogOpen);
    EXPECT_EQ(b.heart.forms.add, b.form.data());
    EXPECT_TRUE(b.The<QRadioButton>("optRS232").isChecked());
    EXPECT_EQ(b.Entries("cbxModel"), (Texts{"KR20", "KR21", "KR23", "KR200", "KR205", "KR215", "KR300", "KR305",
                                            "KR315", "KR400", "KR45", "KR41", "KR40"}));
    EXPECT_EQ(b.Entries("cbxSeries"), (Texts{"Series 1", "Series 2", "Series 3"}));
    const Texts bauds = {"300",   "600",   "1200",  "4800",  "9600",  "14400",
                         "19200", "28800", "38400", "56000", "57600", "115200"};
    EXPECT_EQ(b.Entries("cbxBaud"), bauds);
    EXPECT_EQ(b.Entries("cbxModemBaud"), bauds);
    EXPECT_EQ(b.Entries("cbxPort"), (Texts{"1", "3"}));
    EXPECT_EQ(b.Entries("cbxModemPort"), (Texts{"1", "3"}));
    EXPECT_EQ(b.Entries("cbxParity"), (Texts{"None", "Odd", "Even"}));
    EXPECT_EQ(b.Entries("cbxDataBits"), (Texts{"6", "7", "8"}));
    EXPECT_EQ(b.Entries("cbxStopBits"), (Texts{"1", "2"}));
    EXPECT_EQ(b.Entries("cbxFlowControl"), (Texts{"NOFC", "SWFC", "HWFC"}));
    for (const auto& [list, choice] : {std::pair{"cbxModel", "KR20"},
                                       {"cbxSeries", "Series 1"},
                                       {"cbxPort", "1"},
                                       {"cbxModemPort", "1"},
                                       {"cbxBaud", "4800"},
                                       {"cbxModemBaud", "9600"},
                                       {"cbxParity", "None"},
                                       {"cbxDataBits", "8"},
                                       {"cbxStopBits", "1"},
                                       {"cbxFlowControl", "NOFC"}})
        EXPECT_EQ(b.Choice(list), choice) << list;
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "");
    EXPECT_EQ(QApplication::focusWidget(), &b.The("cmdOk"));
}

TEST(FrmAddTallyCore, WithUnknownPortsTheListsHoldTheEntry0)
{
    AddBench b;
    b.heart.options.AvailablePorts = "0";
    b.Add();
    EXPECT_EQ(b.Entries("cbxPort"), Texts{"0"});
    EXPECT_EQ(b.Entries("cbxModemPort"), Texts{"0"});
}

TEST(FrmAddTallyCore, WithoutAnyPortTestAndResetDoNothingAndOkStoresNone)
{
    AddBench b;
    b.heart.options.AvailablePorts = "";
    b.Add();
    EXPECT_EQ(b.Entries("cbxPort"), Texts{});
    EXPECT_EQ(b.Entries("cbxModemPort"), Texts{});
    for (const char* option : {"optRS232", "optDialup"}) {
        b.Click(option);
        b.Click("cmdTest");
        b.Click("cmdResetModem");
        EXPECT_EQ(b.Caption(), " Add a tallyCore");
        EXPECT_TRUE(b.The("cmdTest").isEnabled());
        EXPECT_FALSE(b.heart.state.TestRunning);
    }
    EXPECT_TRUE(b.dialogs.shown.empty());
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerPort, "");
}

TEST(FrmAddTallyCore, ThePortWithTheNumber0CantBeOpenedAndNothingIsTold)
{
    AddBench b;
    b.heart.options.AvailablePorts = "0";
    b.Add();
    b.Click("cmdTest");
    EXPECT_TRUE(b.dialogs.shown.empty());
    EXPECT_EQ(b.serial.Sent(), "");
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerPort, "0");
}

TEST(FrmAddTallyCore, ItStaysBeforeAllWindowsButForABox)
{
    AddBench b;
    b.Add();
    const auto topmost = [&] { return b.form->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint); };
    EXPECT_TRUE(topmost());
    b.heart.progress.ClearTopmost();
    EXPECT_FALSE(topmost());
    b.heart.progress.SetTopmost();
    EXPECT_TRUE(topmost());
    EXPECT_TRUE(b.form->isVisible());
}

TEST(FrmAddTallyCore, AddingShowsTheTimeoutOfTheLoggerInWork)
{
    AddBench b;
    b.Store({SerialLogger(), ModemLogger()});
    b.heart.state.CurrentLogger = 2;
    b.Add();
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "20");
    EXPECT_EQ(b.Text("txtSerial"), "");
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
}

TEST(FrmAddTallyCore, EachKindOfLinkHasItsFrame)
{
    struct Kind {
        const char* option;
        const char* name;
        const char* frame;
        bool password;
        bool reset;
    };
    AddBench b;
    b.Add();
    for (const Kind& kind : {Kind{"optDialup", "Dialup", "fraDialup", true, true},
                             Kind{"optEthernet", "Ethernet", "fraEthernet", false, false},
                             Kind{"optRS232", "RS232", "fraComPort", true, false}}) {
        b.Click(kind.option);
        EXPECT_EQ(b.heart.link.ConnectionKind, kind.name);
        for (const char* frame : Frames)
            EXPECT_EQ(b.Shown(frame), frame == std::string(kind.frame)) << kind.name << frame;
        EXPECT_EQ(b.Shown("txtPassword"), kind.password);
        EXPECT_EQ(b.Shown("lblPassword"), kind.password);
        EXPECT_EQ(b.Shown("cmdResetModem"), kind.reset);
    }
}

TEST(FrmAddTallyCore, OnlyTheOlderFamilyHasASeries)
{
    AddBench b;
    b.Add();
    for (const auto& model : AddModels) {
        b.Choose("cbxModel", std::string(model).c_str());
        EXPECT_EQ(b.Shown("cbxSeries"), !IsKR4(model)) << model;
    }
}

TEST(FrmAddTallyCore, ChangingShowsTheStoredComPortLogger)
{
    AddBench b;
    LoggerRecord logger = SerialLogger();
    logger.LoggerPort = "7"; // gone from the list of ports
    logger.LoggerBaud = "2400";
    logger.LoggerFlow = "SWHWFC";
    logger.LoggerPassword = "key";
    b.Store({logger});
    b.Change(1);
    EXPECT_EQ(b.Caption(), " Change Settings");
    EXPECT_EQ(b.heart.link.ConnectionKind, "RS232");
    for (const auto& [list, choice] : {std::pair{"cbxModel", "KR200"},
                                       {"cbxSeries", "Series 2"},
                                       {"cbxPort", "7"},
                                       {"cbxBaud", "2400"},
                                       {"cbxParity", "None"},
                                       {"cbxDataBits", "8"},
                                       {"cbxStopBits", "1"},
                                       {"cbxFlowControl", "SWHWFC"}})
        EXPECT_EQ(b.Choice(list), choice) << list;
    EXPECT_EQ(b.Text("txtSerial"), "none");
    EXPECT_EQ(b.Text("txtPassword"), "key");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "10");
    EXPECT_FALSE(b.The("cbxModel").isEnabled());
    EXPECT_FALSE(b.The("cbxSeries").isEnabled());
    EXPECT_TRUE(b.Shown("cbxSeries"));
}

TEST(FrmAddTallyCore, ChangingShowsTheStoredModemLogger)
{
    AddBench b;
    b.Store({ModemLogger()});
    b.Change(1);
    EXPECT_TRUE(b.The<QRadioButton>("optDialup").isChecked());
    EXPECT_TRUE(b.Shown("fraDialup"));
    EXPECT_EQ(b.Choice("cbxModemPort"), "3");
    EXPECT_EQ(b.Text("txtPhoneNumber"), "0,,12345");
    EXPECT_EQ(b.Text("txtInitString"), "at&f,x4");
    EXPECT_EQ(b.Choice("cbxModemBaud"), "19200");
    EXPECT_EQ(b.Text("txtPassword"), "se cret");
    EXPECT_EQ(b.Text("txtSerial"), "4711");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "20");
}

TEST(FrmAddTallyCore, ChangingShowsTheStoredNetworkLogger)
{
    AddBench b;
    b.Store({NetworkLogger()});
    b.Change(1);
    EXPECT_TRUE(b.The<QRadioButton>("optEthernet").isChecked());
    EXPECT_EQ(b.Text("txtIP"), "10.0.0.5");
    EXPECT_EQ(b.Text("txtTCPPort"), "3000");
    EXPECT_EQ(b.Choice("cbxModel"), "KR40");
    EXPECT_FALSE(b.Shown("cbxSeries"));
    EXPECT_FALSE(b.Shown("txtPassword"));
}

TEST(FrmAddTallyCore, TheTimeoutTakesDigitsOnly)
{
    AddBench b;
    b.Add();
    QTest::keyClicks(&b.The("txtConnectionTimeout"), "1a,5 s");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "15");
}

TEST(FrmAddTallyCore, OfAPastedTimeoutTheLastCharacterIsTakenBackAndOkKeepsItsDigits)
{
    AddBench b;
    b.Add();
    auto& field = b.The<QLineEdit>("txtConnectionTimeout");
    const auto paste = [&](const char* text) {
        field.clear();
        QApplication::clipboard()->setText(text);
        field.paste();
    };
    paste("12ab");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "12");
    paste("ab");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "");
    paste("1a,2");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "1a,2");
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerTimeout, "12");
}

TEST(FrmAddTallyCore, ACharacterTypedAtTheStartOfTheTimeoutIsTakenBackToo)
{
    AddBench b;
    b.Add();
    b.Fill("txtConnectionTimeout", "30");
    b.The<QLineEdit>("txtConnectionTimeout").setCursorPosition(0);
    QTest::keyClicks(&b.The("txtConnectionTimeout"), "x4");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "430");
}

TEST(FrmAddTallyCore, ReturnInAFieldPressesOkAndOnAButtonThatButton)
{
    AddBench b;
    b.Add();
    b.The("txtSerial").setFocus();
    QTest::keyClick(&b.The("txtSerial"), Qt::Key_Return);
    EXPECT_EQ(b.heart.tables.Count(), 1);
    b.Add();
    b.The("cmdCancel").setFocus();
    QTest::keyClick(&b.The("cmdCancel"), Qt::Key_Return);
    EXPECT_EQ(b.heart.tables.Count(), 1);
    EXPECT_FALSE(b.form->isVisible());
}

TEST(FrmAddTallyCore, EveryInputHasAnAccessibleName)
{
    const auto expectNames = [](AddBench& b) {
        b.Add();
        for (const char* option : {"optRS232", "optDialup", "optEthernet"}) {
            b.Click(option);
            for (QWidget* input : b.form->findChildren<QWidget*>()) {
                const bool isInput = qobject_cast<QLineEdit*>(input) || qobject_cast<QComboBox*>(input) ||
                                     qobject_cast<QAbstractButton*>(input);
                if (!isInput || !input->isVisibleTo(b.form))
                    continue;
                const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(input);
                ASSERT_TRUE(spoken) << input->objectName().toStdString();
                EXPECT_NE(spoken->text(QAccessible::Name), "") << input->objectName().toStdString();
            }
        }
    };
    AddBench english;
    expectNames(english);
    AddBench foreign;
    std::string lines;
    for (int number = 1; number <= 26; ++number)
        lines += std::to_string(number) + ":1:9:T" + std::to_string(number) + "\r\n";
    foreign.Speak(lines);
    expectNames(foreign);
}

TEST(FrmAddTallyCore, ALanguageFileNamesTheControls)
{
    AddBench b;
    std::string lines;
    for (int number = 1; number <= 26; ++number)
        lines += std::to_string(number) + ":1:14:T" + std::to_string(number) + "\r\n";
    b.Speak(lines);
    b.Add();
    for (const auto& [label, text] : {std::pair{"lblModel", "T1"},
                                      {"lblSerial", "T2"},
                                      {"lblPassword", "T3"},
                                      {"lblComport_Number", "T11"},
                                      {"lblComPort_BAUD", "T12"},
                                      {"lblComport_Parity", "T13"},
                                      {"lblComPort_DataBits", "T14"},
                                      {"lblComPort_StopBits", "T15"},
                                      {"lblComPort_FlowControl", "T16"},
                                      {"lblModem_ComPort", "T18"},
                                      {"lblModem_Number", "T19"},
                                      {"lblModem_Baud", "T20"},
                                      {"lblModem_InitString", "T21"},
                                      {"lblEthernet_IP", "T23"},
                                      {"lblEthernet_TCPPort", "T24"},
                                      {"lblConnectionTimeout", "Connection Time&out"}})
        EXPECT_EQ(b.The<QLabel>(label).text().toStdString(), text);
    for (const auto& [button, text] : {std::pair{"optRS232", "T5"},
                                       {"optDialup", "T6"},
                                       {"optEthernet", "T7"},
                                       {"cmdTest", "T8"},
                                       {"cmdResetModem", "T9"},
                                       {"cmdCancel", "T25"},
                                       {"cmdOk", "T26"}})
        EXPECT_EQ(b.The<QAbstractButton>(button).text().toStdString(), text);
    for (const auto& [frame, text] :
         {std::pair{"fraConnection", "T4"}, {"fraComPort", "T10"}, {"fraDialup", "T17"}, {"fraEthernet", "T22"}})
        EXPECT_EQ(b.The<QGroupBox>(frame).title().toStdString(), text);
    EXPECT_EQ(b.The("cmdOk").font().pointSize(), 14);
}

TEST(FrmAddTallyCore, TheEnglishCaptionsAreThoseOfTheTable)
{
    AddBench b;
    b.Add();
    const auto plain = [](const QString& text) { return text.toStdString(); };
    const char* labels[] = {"lblModel", "lblSerial", "lblPassword"};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(plain(b.The<QLabel>(labels[i]).text()), b.heart.language.Text(i + 1));
    EXPECT_EQ(plain(b.The<QLabel>("lblModem_InitString").text()), b.heart.language.Text(21));
    EXPECT_EQ(plain(b.The<QAbstractButton>("optDialup").text()), b.heart.language.Text(6));
    EXPECT_EQ(plain(b.The<QAbstractButton>("cmdResetModem").text()), b.heart.language.Text(9));
    EXPECT_EQ(plain(b.The<QGroupBox>("fraEthernet").title()), b.heart.language.Text(22));
}

TEST(FrmAddTallyCore, EveryControlIsReachedByTabInReadingOrder)
{
    for (const char* option : {"optRS232", "optDialup", "optEthernet"}) {
        AddBench b;
        b.Add();
        b.Click(option);
        b.The("cbxModel").setFocus();
        QStringList seen;
        for (int i = 0; i < 30 && (seen.isEmpty() || QApplication::focusWidget()->objectName() != "cbxModel"); ++i) {
            seen << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(seen.mid(0, 3), (QStringList{"cbxModel", "cbxSeries", "txtSerial"})) << option;
        EXPECT_EQ(seen.mid(seen.size() - 2), (QStringList{"cmdOk", "cmdCancel"})) << option;
        const QString frame = option == std::string("optRS232")    ? "cbxBaud"
                              : option == std::string("optDialup") ? "txtPhoneNumber"
                                                                   : "txtTCPPort";
        EXPECT_TRUE(seen.contains(frame)) << option;
        EXPECT_TRUE(seen.contains("cmdTest")) << option;
    }
}

TEST(FrmAddTallyCore, EveryInputHasAMnemonicOfItsOwn)
{
    for (const char* option : {"optRS232", "optDialup", "optEthernet"}) {
        AddBench b;
        b.Add();
        b.Click(option);
        QSet<QString> keys;
        const auto take = [&](const QString& text, const QWidget& widget) {
            if (!widget.isVisibleTo(b.form))
                return;
            const auto at = text.indexOf('&');
            ASSERT_GE(at, 0) << text.toStdString();
            const QString key = text.mid(at + 1, 1).toLower();
            EXPECT_FALSE(keys.contains(key)) << text.toStdString();
            keys.insert(key);
        };
        for (const auto* label : b.form->findChildren<QLabel*>()) {
            if (label->objectName() == "lblSeconds")
                continue; // a unit
            ASSERT_TRUE(label->buddy()) << label->objectName().toStdString();
            take(label->text(), *label);
        }
        for (const auto* button : b.form->findChildren<QAbstractButton*>())
            take(button->text(), *button);
    }
}

TEST(FrmAddTallyCore, EveryWayOfClosingLeavesTheModes)
{
    const std::function<void(AddBench&)> ways[] = {
        [](AddBench& b) { b.Click("cmdCancel"); },
        [](AddBench& b) { QTest::keyClick(b.form, Qt::Key_Escape); },
        [](AddBench& b) { b.form->close(); },
        [](AddBench& b) { delete b.form; },
    };
    for (const auto& close : ways) {
        AddBench b;
        b.Add();
        close(b);
        const ProgramState& state = b.heart.state;
        EXPECT_TRUE(state.AbortWait);
        EXPECT_FALSE(state.AddDialogOpen || state.AddingLogger || state.NewLoggerMode || state.EditingExisting ||
                     state.StopSearch);
        EXPECT_FALSE(b.heart.forms.add);
        EXPECT_TRUE(!b.form || !b.form->isVisible());
        EXPECT_EQ(b.heart.tables.Count(), 0);
        EXPECT_TRUE(b.files.writes.empty());
    }
}

TEST(FrmAddTallyCore, ClosingTellsAModemToHangUp)
{
    AddBench b;
    b.serial.Plug(3, AddBench::Logger("KR40"), "9600");
    b.Add();
    b.Click("optDialup");
    b.heart.rs232.OpenComPort(3);
    b.Click("cmdCancel");
    b.heart.waiting.ServeEvents();
    EXPECT_EQ(b.serial.Sent(), "at&h\r\natz\r\n");
}

TEST(FrmAddTallyCore, ClosingSendsNothingOnOtherLinks)
{
    for (const char* option : {"optRS232", "optEthernet"}) {
        AddBench b;
        b.serial.Plug(3, AddBench::Logger("KR40"), "9600");
        b.Add();
        b.Click(option);
        b.heart.rs232.OpenComPort(3);
        b.Click("cmdCancel");
        b.heart.waiting.ServeEvents();
        EXPECT_EQ(b.serial.Sent(), "") << option;
    }
}

} // namespace
} // namespace harvelop::test
