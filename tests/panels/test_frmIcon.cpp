#include "icon_bench.h"
#include "panels/frmSupport.h"

#include <QAccessible>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QTest>

#include <set>

namespace harvelop::test
{

namespace
{

using Arguments = std::vector<std::string>;

bool Enabled(const frmIcon& form, const char* name)
{
    return Find<QWidget>(form, name).isEnabled();
}

std::string Placeholder(const frmIcon& form)
{
    return ToText(Find<QLineEdit>(form, "txtName").placeholderText());
}

const char* const Controls[] = {"lblName", "txtName", "fraIconType", "optCommand", "chkTerminal", "optUnload", "cmdOk"};

std::string Caption(const frmIcon& form, const std::string& name)
{
    for (const char* property : {"text", "title"})
        if (const QVariant caption = Find<QWidget>(form, name).property(property); caption.isValid())
            return ToText(caption.toString().remove('&'));
    return {};
}

} // namespace

TEST(FrmIcon, OpensWithNothingChosen)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        EXPECT_EQ(form.windowTitle(), " Create Icon");
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(Find<QLineEdit>(form, "txtName").text(), "");
        EXPECT_EQ(Find<QLineEdit>(form, "txtCommand").text(), "");
        EXPECT_FALSE(Find<QRadioButton>(form, "optCommand").isChecked());
        EXPECT_FALSE(Find<QRadioButton>(form, "optUnload").isChecked());
        EXPECT_FALSE(Find<QCheckBox>(form, "chkTerminal").isChecked());
        for (const char* name : {"txtCommand", "chkTerminal", "cmdOk"}) {
            EXPECT_FALSE(Enabled(form, name)) << name;
            EXPECT_NE(Find<QWidget>(form, name).toolTip(), "") << name;
        }
        const auto& field = Find<QLineEdit>(form, "txtCommand");
        EXPECT_EQ(field.palette().brush(QPalette::Disabled, QPalette::Base),
                  field.palette().brush(QPalette::Disabled, QPalette::Button));
    });
    EXPECT_TRUE(bench.desktop.shortcuts.empty());
}

TEST(FrmIcon, CaptionsAreTheEnglishTexts)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        EXPECT_EQ(Caption(form, "lblName"), "Name");
        EXPECT_EQ(Caption(form, "fraIconType"), "Icon Type");
        EXPECT_EQ(Caption(form, "optCommand"), "Send Command(s) ->");
        EXPECT_EQ(Caption(form, "optUnload"), "Unload / Program");
        EXPECT_EQ(Caption(form, "chkTerminal"), "Show Terminal");
        EXPECT_EQ(Caption(form, "cmdOk"), "Ok");
    });
}

TEST(FrmIcon, CaptionsAndTitleComeFromTheLanguageFile)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    std::string lines;
    for (int number = 563; number <= 569; ++number)
        lines += std::to_string(number) + ":1:13:T" + std::to_string(number) + "\r\n";
    bench.heart.options.Language = "Plain";
    bench.files.files[bench.heart.state.AppPath + "Plain.txt"] = lines;
    bench.heart.language.LangActive = true;
    bench.heart.language.LoadLanguageFile();
    bench.CreateIcon(1, [](frmIcon& form) {
        EXPECT_EQ(form.windowTitle(), " T563");
        EXPECT_EQ(Caption(form, "lblName"), "T564");
        EXPECT_EQ(Caption(form, "fraIconType"), "T565");
        EXPECT_EQ(Caption(form, "optCommand"), "T566");
        EXPECT_EQ(Caption(form, "optUnload"), "T567");
        EXPECT_EQ(Caption(form, "chkTerminal"), "T568");
        EXPECT_EQ(Caption(form, "cmdOk"), "T569");
        EXPECT_EQ(Find<QLabel>(form, "lblName").font().pointSize(), 13);
        Choose(form, "optCommand");
        Find<QLineEdit>(form, "txtCommand").setText("G");
        Ok(form);
    });
    EXPECT_EQ(bench.Made().name, "Send G to KR200 Series 2 on Com 1"); // the same in all languages
}

TEST(FrmIcon, UnloadShortcutOfALoggerWithoutADescriptionIsNamedByItsLink)
{
    IconBench bench;
    bench.Store({SerialLogger(), ModemLogger(), NetworkLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        Choose(form, "optUnload");
        EXPECT_EQ(Placeholder(form), "KR200 Series 2 on Com 1");
        Ok(form);
    });
    ASSERT_EQ(bench.desktop.shortcuts.size(), 1U);
    EXPECT_EQ(bench.Made().name, "KR200 Series 2 on Com 1");
    EXPECT_EQ(bench.Made().program, "/home/user/loggers/harvel.exe");
    EXPECT_EQ(bench.Made().arguments, Arguments{"::2"});
    EXPECT_EQ(bench.Made().workingDirectory, "/home/user/loggers/");
}

TEST(FrmIcon, DefaultNameOfANetworkLoggerHasNoDotsAndColons)
{
    IconBench bench;
    bench.Store({SerialLogger(), ModemLogger(), NetworkLogger()});
    bench.CreateIcon(3, [](frmIcon& form) {
        Choose(form, "optUnload");
        Ok(form);
    });
    EXPECT_EQ(bench.Made().name, "KR40 at 10_0_0_5-3000");
    EXPECT_EQ(bench.heart.link.LinkDescription, "KR40 at 10.0.0.5:3000"); // which messages go on naming it by
}

TEST(FrmIcon, CommandShortcutWithoutANameIsCalledByItsCommands)
{
    IconBench bench;
    bench.Store({SerialLogger(), ModemLogger()});
    bench.CreateIcon(2, [](frmIcon& form) {
        Choose(form, "optCommand");
        Type(Find<QLineEdit>(form, "txtCommand"), " /h/m  G ");
        EXPECT_EQ(Placeholder(form), "Send  /h/m  G  to Pumphouse");
        Ok(form);
    });
    EXPECT_EQ(bench.Made().name, "Send  /h/m  G  to Pumphouse");
    EXPECT_EQ(bench.Made().arguments, (Arguments{"::3", "% /h/m  G "}));
}

TEST(FrmIcon, TerminalBoxAddsItsMark)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    const auto answer = [](bool terminal) {
        return [terminal](frmIcon& form) {
            Choose(form, "optCommand");
            Find<QLineEdit>(form, "txtCommand").setText("G");
            Find<QCheckBox>(form, "chkTerminal").click();
            if (!terminal)
                Find<QCheckBox>(form, "chkTerminal").click();
            Find<QLineEdit>(form, "txtName").setText("Start \"G\"");
            Ok(form);
        };
    };
    bench.CreateIcon(1, answer(true));
    bench.CreateIcon(1, answer(false));
    ASSERT_EQ(bench.desktop.shortcuts.size(), 2U);
    EXPECT_EQ(bench.desktop.shortcuts[0].arguments, (Arguments{"::2", "%G%"}));
    EXPECT_EQ(bench.desktop.shortcuts[1].arguments, (Arguments{"::2", "%G"}));
    EXPECT_EQ(bench.desktop.shortcuts[1].name, "Start \"G\"");
}

TEST(FrmIcon, ClosedByItsFrameOrEscNothingIsMade)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        Choose(form, "optUnload");
        form.close();
    });
    bench.CreateIcon(1, [](frmIcon& form) {
        Choose(form, "optUnload");
        PressKey(form, Qt::Key_Escape);
    });
    EXPECT_TRUE(bench.desktop.shortcuts.empty());
    EXPECT_NE(bench.Panel(1), nullptr);
}

TEST(FrmIcon, WithoutAKindEnterMakesNothingAndStays)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        auto& name = Find<QLineEdit>(form, "txtName");
        Type(name, "My icon");
        PressKey(name, Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        Find<QPushButton>(form, "cmdOk").click();
        EXPECT_TRUE(form.isVisible());
    });
    EXPECT_TRUE(bench.desktop.shortcuts.empty());
}

TEST(FrmIcon, CommandsAndTerminalBelongToTheCommandKind)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        struct Step {
            const char* kind;
            const char* command;
            bool commandEnabled;
            bool okEnabled;
        };
        const Step steps[] = {{"optCommand", "", true, false}, {"optCommand", "G", true, true},
                              {"optCommand", "", true, false}, {"optUnload", "", false, true},
                              {"optCommand", "", true, false}, {"optCommand", " ", true, true},
                              {"optUnload", " ", false, true}, {"optCommand", " ", true, true}};
        for (const Step& step : steps) {
            Choose(form, step.kind);
            Find<QLineEdit>(form, "txtCommand").setText(step.command);
            for (const char* name : {"txtCommand", "chkTerminal"}) {
                EXPECT_EQ(Enabled(form, name), step.commandEnabled) << name;
                EXPECT_EQ(Find<QWidget>(form, name).toolTip().isEmpty(), step.commandEnabled) << name;
            }
            EXPECT_EQ(Enabled(form, "cmdOk"), step.okEnabled) << step.kind << step.command;
            EXPECT_EQ(Find<QWidget>(form, "cmdOk").toolTip().isEmpty(), step.okEnabled);
            EXPECT_EQ(Placeholder(form).empty(), !step.okEnabled);
        }
    });
}

TEST(FrmIcon, EachOpeningStartsAnew)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        Choose(form, "optCommand");
        Find<QLineEdit>(form, "txtCommand").setText("G");
        Find<QLineEdit>(form, "txtName").setText("first");
        Find<QCheckBox>(form, "chkTerminal").click();
        Ok(form);
    });
    bench.CreateIcon(1, [](frmIcon& form) {
        EXPECT_EQ(Find<QLineEdit>(form, "txtCommand").text(), "");
        Choose(form, "optCommand");
        Find<QLineEdit>(form, "txtCommand").setText("H");
        Ok(form);
    });
    ASSERT_EQ(bench.desktop.shortcuts.size(), 2U);
    EXPECT_EQ(bench.desktop.shortcuts[1].name, "Send H to KR200 Series 2 on Com 1");
    EXPECT_EQ(bench.desktop.shortcuts[1].arguments, (Arguments{"::2", "%H"}));
}

TEST(FrmIcon, StoresThePanelFirstSoThatADescriptionJustTypedCounts)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& panel = bench.View(1);
    Find<QLineEdit>(panel, "txtDescription").setText("Mill,7");
    std::string name;
    bench.CreateIcon(1, [&](frmIcon& form) {
        EXPECT_EQ(bench.Record(1).LoggerDescription, "Mill7"); // a comma would end the field
        EXPECT_NE(bench.files.files[TestProgram::FoundIni].find(",Mill7,"), std::string::npos);
        EXPECT_EQ(Placeholder(form), ""); // nothing can be made yet
        Choose(form, "optUnload");
        name = Placeholder(form);
    });
    EXPECT_EQ(name, "Mill7");
    const ListState& list = bench.heart.state.cbxUnload_TallyCores;
    EXPECT_EQ(list.Selected(), 0);
    EXPECT_NE(list.Text().find("Mill7"), std::string::npos) << list.Text();
}

TEST(FrmIcon, ShortcutThatTheDesktopDoesNotTakeIsPassedOver)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.desktop.starts = false;
    bench.CreateIcon(1, [](frmIcon& form) {
        Choose(form, "optUnload");
        Ok(form);
    });
    EXPECT_EQ(bench.desktop.shortcuts.size(), 1U);
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(FrmIcon, PanelGoneMeanwhileMeansNothingIsMade)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [&](frmIcon& form) {
        Choose(form, "optUnload");
        delete bench.Panel(1);
    });
    EXPECT_TRUE(bench.desktop.shortcuts.empty());
}

TEST(FrmIcon, ProgramEndedMeanwhileMeansNothingIsMade)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [&](frmIcon& form) {
        Choose(form, "optUnload");
        bench.heart.end.EndProgram();
        Ok(form);
    });
    EXPECT_TRUE(bench.desktop.shortcuts.empty());
}

TEST(FrmIcon, IsFilledInWithKeysAlone)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        const char* chain[] = {"txtName", "optCommand", "txtCommand", "chkTerminal", "optUnload", "cmdOk"};
        const QWidget* at = &form;
        for (const char* name : chain) {
            do
                at = at->nextInFocusChain();
            while (at->focusPolicy() == Qt::NoFocus);
            EXPECT_EQ(at->objectName(), name);
        }
        std::set<QString> used;
        for (const char* name : Controls) {
            const QWidget& control = Find<QWidget>(form, name);
            const QString key = QKeySequence::mnemonic(control.property("text").toString()).toString();
            const bool needsNone = qobject_cast<const QGroupBox*>(&control) || qobject_cast<const QLineEdit*>(&control);
            EXPECT_TRUE(needsNone || used.insert(key).second) << name;
            EXPECT_TRUE(needsNone || !key.isEmpty()) << name;
        }
        QApplication::setActiveWindow(&form);
        QTest::keyClick(&form, Qt::Key_S, Qt::AltModifier); // such a key presses a button for a moment
        EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QRadioButton>(form, "optCommand").isChecked(); }));
        Type(Find<QLineEdit>(form, "txtCommand"), "G");
        QTest::keyClick(&form, Qt::Key_T, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QCheckBox>(form, "chkTerminal").isChecked(); }));
        PressKey(Find<QLineEdit>(form, "txtCommand"), Qt::Key_Return);
    });
    ASSERT_EQ(bench.desktop.shortcuts.size(), 1U);
    EXPECT_EQ(bench.Made().arguments, (Arguments{"::2", "%G%"}));
}

TEST(FrmIcon, ControlsHaveNamesForScreenReaders)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        int controls = 0;
        for (QWidget* control : form.findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus)
                continue;
            ++controls;
            QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(control);
            ASSERT_TRUE(seen);
            EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty()) << control->objectName().toStdString();
        }
        EXPECT_EQ(controls, 6);
    });
}

TEST(FrmIcon, AWiderWindowShowsMoreOfTheCommands)
{
    IconBench bench;
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [](frmIcon& form) {
        const int before = Find<QLineEdit>(form, "txtCommand").width();
        const int button = Find<QPushButton>(form, "cmdOk").width();
        form.resize(form.width() + 200, form.height() + 100);
        QApplication::processEvents();
        EXPECT_EQ(Find<QLineEdit>(form, "txtCommand").width(), before + 200);
        EXPECT_EQ(Find<QPushButton>(form, "cmdOk").width(), button);
    });
}

} // namespace harvelop::test
