// What the editor shows and takes.
#include "run_bench.h"

namespace harvelop::test
{

TEST(FrmRun, ProgramIsShownAndNotTyped)
{
    RunBench bench;
    bench.Open("Program", runs(Report, "STATUS"));
    EXPECT_EQ(bench.form->windowTitle(), " Run a Program After Unload");
    EXPECT_EQ(bench.Text(), Report);
    EXPECT_TRUE(bench.Field().isReadOnly());
    EXPECT_EQ(bench.Word(), "Edit");
    EXPECT_TRUE(bench.Button().isEnabled());
    Type(bench.Field(), "x");
    bench.Paste("y");
    EXPECT_EQ(bench.Text(), Report);
}

TEST(FrmRun, CommandIsTyped)
{
    RunBench bench;
    bench.Open("Command", runs(Report, "STATUS"));
    EXPECT_EQ(bench.form->windowTitle(), " Send a tallyCore Command After Unload");
    EXPECT_EQ(bench.Text(), "STATUS");
    EXPECT_FALSE(bench.Field().isReadOnly());
    EXPECT_EQ(bench.Word(), "Ok");
    Type(bench.Field(), "7");
    bench.Button().click();
    EXPECT_FALSE(bench.form->isVisible());
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "STATUS7");
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, Report);
}

TEST(FrmRun, TheStoredDefaultShowsAsEmpty)
{
    for (const char* kind : {"Program", "Command"}) {
        for (const char* unset : {"0", ""}) {
            RunBench bench;
            bench.Open(kind, runs(unset, unset));
            EXPECT_EQ(bench.Text(), "") << kind;
        }
        RunBench bench;
        bench.Open(kind, runs("00", "00"));
        EXPECT_EQ(bench.Text(), "00") << kind;
    }
}

TEST(FrmRun, AMultiLinePasteComesOutAsOneLine)
{
    RunBench bench;
    bench.Open("Command", runs("", "xy"));
    bench.Field().setCursorPosition(1);
    bench.Paste("SCAN A\r\nGO\n\nSTOP\r");
    EXPECT_EQ(bench.Text(), "xSCAN AGOSTOPy");
    EXPECT_EQ(bench.Field().displayText(), "xSCAN AGOSTOPy");
    EXPECT_EQ(bench.Field().cursorPosition(), 13); // behind the paste
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "xSCAN AGOSTOPy");
}

TEST(FrmRun, UndoGoesBeyondALineEndTakenOut)
{
    RunBench bench;
    bench.Open("Command", runs("", "xy"));
    bench.Field().setCursorPosition(1);
    bench.Paste("A\nB");
    EXPECT_EQ(bench.Text(), "xABy");
    bench.Field().undo();
    EXPECT_TRUE(bench.Button().isEnabled());
    for (int i = 0; i < 5; ++i)
        bench.Field().undo();
    EXPECT_EQ(bench.Text(), "xy");
    while (bench.Field().isRedoAvailable())
        bench.Field().redo();
    EXPECT_EQ(bench.Text(), "xABy");
    bench.Field().undo();
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunCommand.find_first_of("\r\n"), std::string::npos);
}

TEST(FrmRun, AStoredCommandLosesItsLineEndsToo)
{
    RunBench bench;
    bench.Open("Command", runs("", "GO\r\nSTOP"));
    EXPECT_EQ(bench.Text(), "GOSTOP");
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "GOSTOP");
}

TEST(FrmRun, ACommandThatIsEmptiedIsStoredAsEmpty)
{
    RunBench bench;
    bench.Open("Command", runs("", "STATUS"));
    bench.Field().selectAll();
    PressKey(bench.Field(), Qt::Key_Delete);
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "");
}

TEST(FrmRun, OkWaitsWhileACommandHoldsAComma)
{
    RunBench bench;
    bench.Open("Command", runs("", "A"));
    EXPECT_EQ(bench.Hint(), "");
    Type(bench.Field(), ",B");
    EXPECT_EQ(bench.Text(), "A,B");
    EXPECT_EQ(bench.Hint(), "A comma can't be stored here.");
    EXPECT_TRUE(Find<QLabel>(*bench.form, "lblHint").isVisible());
    EXPECT_FALSE(bench.Button().isEnabled());
    EXPECT_EQ(bench.Button().toolTip(), "A comma can't be stored here.");
    bench.Button().click();
    PressKey(bench.Field(), Qt::Key_Return);
    EXPECT_TRUE(bench.form->isVisible());
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "A");
    PressKey(bench.Field(), Qt::Key_Backspace);
    PressKey(bench.Field(), Qt::Key_Backspace);
    EXPECT_EQ(bench.Hint(), "");
    EXPECT_EQ(bench.Button().toolTip(), "");
    EXPECT_TRUE(bench.Button().isEnabled());
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(FrmRun, AProgramIsChosenAndThenStored)
{
    RunBench bench;
    bench.Open("Program");
    bench.Choose(Report);
    ASSERT_EQ(bench.dialogs.choosers.size(), 1U);
    EXPECT_EQ(bench.dialogs.choosers[0].title, " Choose a Program to Run After Unload  ...");
    EXPECT_EQ(bench.dialogs.choosers[0].startIn, bench.heart.state.AppPath);
    EXPECT_EQ(bench.dialogs.choosers[0].extension, "exe");
    EXPECT_EQ(bench.Text(), Report);
    EXPECT_EQ(bench.Word(), "Ok");
    EXPECT_TRUE(bench.form->isVisible());
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, "");
    bench.Button().click();
    EXPECT_FALSE(bench.form->isVisible());
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, Report);
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "");
    EXPECT_EQ(bench.dialogs.choosers.size(), 1U);
}

TEST(FrmRun, ChoosingTheSameProgramAgainGivesOkToo)
{
    RunBench bench;
    bench.Open("Program", runs(Report, ""));
    bench.Choose(Report);
    EXPECT_EQ(bench.Word(), "Ok");
}

TEST(FrmRun, AChooserThatIsCancelledLeavesThePanelAsItWas)
{
    RunBench bench;
    bench.Open("Program", runs(Report, ""));
    bench.Choose("");
    EXPECT_EQ(bench.Text(), Report);
    EXPECT_EQ(bench.Word(), "Edit");
    EXPECT_TRUE(bench.Button().isEnabled());
    bench.Choose("/usr/bin/env");
    EXPECT_EQ(bench.Text(), "/usr/bin/env");
}

TEST(FrmRun, APathThatCantBeStoredIsShownAndAnotherOneCanBeChosen)
{
    for (const auto& [path, why] : {std::pair{"/tmp/a,b", "A comma can't be stored here."},
                                    std::pair{"/tmp/a\nb", "A line end can't be stored here."}}) {
        RunBench bench;
        bench.Open("Program");
        bench.Choose(path);
        EXPECT_EQ(bench.Text(), path);
        EXPECT_EQ(bench.Hint(), why);
        EXPECT_EQ(bench.Word(), "Edit"); // there is no Ok to press
        bench.Choose("");
        EXPECT_EQ(bench.Hint(), why);
        EXPECT_EQ(bench.Record(1).LoggerRunProgram, "");
        bench.Choose(Report);
        EXPECT_EQ(bench.Hint(), "");
        EXPECT_EQ(bench.Word(), "Ok");
        EXPECT_TRUE(bench.Button().isEnabled());
        bench.Button().click();
        EXPECT_EQ(bench.Record(1).LoggerRunProgram, Report);
    }
}

TEST(FrmRun, APathPassesThroughByteForByte)
{
    RunBench bench;
    bench.Open("Program");
    const std::string path = "/tmp/M\xFChle \xC3\xBC \"x\" %1";
    bench.Choose(path);
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, path);
}

TEST(FrmRun, AVeryLongPathIsNotCut)
{
    RunBench bench;
    bench.Open("Program");
    const std::string path = "/" + std::string(40000, 'p');
    bench.Choose(path);
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, path);
}

TEST(FrmRun, SpeaksTheUsersLanguage)
{
    RunBench bench;
    bench.Speak("Font2=Courier\r\n231:1:9:Programm\r\n232:1:9:Befehl\r\n233:2:14:Gut\r\n234:2:12:Neu\r\n");
    bench.Open("Command");
    EXPECT_EQ(bench.form->windowTitle(), " Befehl");
    EXPECT_EQ(bench.Button().text(), "Gut");
    EXPECT_EQ(bench.Button().font().family(), "Courier");
    EXPECT_EQ(bench.Button().font().pointSize(), 14);
    bench.Open("Program");
    EXPECT_EQ(bench.form->windowTitle(), " Programm");
    EXPECT_EQ(bench.Button().text(), "Neu");
    EXPECT_EQ(bench.Button().font().pointSize(), 12);
    bench.Choose(Report);
    EXPECT_EQ(bench.Button().text(), "Gut");
    bench.Button().click();
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, Report);
}

TEST(FrmRun, IsWorkedByTheKeyboard)
{
    RunBench command;
    command.Open("Command");
    EXPECT_TRUE(command.Field().hasFocus());
    EXPECT_EQ(command.Field().accessibleName(), "Send a tallyCore Command After Unload");
    EXPECT_EQ(command.Button().text(), "&Ok");
    QTest::keyClick(&command.Field(), Qt::Key_Tab);
    EXPECT_TRUE(command.Button().hasFocus());
    Type(command.Field(), "GO");
    PressKey(command.Field(), Qt::Key_Return);
    EXPECT_EQ(command.Record(1).LoggerRunCommand, "GO");

    RunBench program;
    program.Open("Program");
    EXPECT_TRUE(program.Button().hasFocus());
    EXPECT_EQ(program.Field().accessibleName(), "Run a Program After Unload");
    EXPECT_EQ(program.Button().text(), "&Edit");
    program.dialogs.ExpectChooser(Report);
    PressKey(program.Button(), Qt::Key_Return);
    EXPECT_EQ(program.Button().text(), "&Ok");
    EXPECT_TRUE(program.Button().hasFocus());
    PressKey(program.Button(), Qt::Key_Return);
    EXPECT_FALSE(program.form->isVisible());
    EXPECT_EQ(program.Record(1).LoggerRunProgram, Report);
}

TEST(FrmRun, GrowsInWidthOnly)
{
    RunBench bench;
    bench.Open("Program");
    const QSize natural = bench.form->size();
    const int field = bench.Field().width();
    bench.form->resize(natural + QSize(200, 200));
    QApplication::processEvents();
    EXPECT_EQ(bench.form->height(), natural.height());
    EXPECT_EQ(bench.Field().width(), field + 200);
}

} // namespace harvelop::test
