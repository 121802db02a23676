// What `harvelctl add` stores, next to what the real dialog stores for the same entries.
#include "add_fixture.h"
#include "app/ctl_commands.h"
#include "app/start_up.h"

#include <sstream>

namespace harvelop::test
{

namespace
{

using Words = std::vector<std::string>;
using Hands = std::function<void(AddBench&)>; // what the user does in the dialog

// Both data files.
struct Files {
    std::string found;
    std::string options;
    bool operator==(const Files&) const = default;
};

void PrintTo(const Files& files, std::ostream* out)
{
    *out << files.found << files.options;
}

Files filesOf(const TestProgram& program)
{
    return {program.files.files.at(TestProgram::FoundIni), program.files.files.at(TestProgram::OptionsIni)};
}

void store(AddBench& bench)
{
    bench.heart.options.Icons = "6";
    bench.Store({SerialLogger(), NetworkLogger()});
    bench.heart.store.SaveOptions();
    LoadSettings(bench.heart); // as every start does
}

Files asTheDialog(const Hands& hands)
{
    AddBench bench;
    store(bench);
    bench.Add();
    hands(bench);
    bench.Click("cmdOk");
    return filesOf(bench);
}

Files asTheCommand(Words words)
{
    TestProgram ctl;
    {
        AddBench before;
        store(before);
        ctl.files.files = before.files.files;
    }
    words.insert(words.begin(), "add");
    std::ostringstream said;
    std::ostringstream out;
    Console console(said, false, false);
    const auto command = std::get<CtlCommand>(ParseCtlArguments(words));
    EXPECT_EQ(RunCtlCommand(ctl.heart, console, command, TestProgram::Directory, out), CtlDone) << said.str();
    EXPECT_EQ(out.str() + said.str(), "3\n");
    EXPECT_TRUE(ctl.serial.events.empty());
    EXPECT_TRUE(ctl.sockets.steps.empty());
    return filesOf(ctl);
}

} // namespace

TEST(AddLikeTheDialog, OnAComPort)
{
    const Files dialog = asTheDialog([](AddBench& b) {
        b.Choose("cbxModel", "KR305");
        b.Choose("cbxSeries", "Series 3");
        b.Fill("txtSerial", "991");
        b.Fill("txtPassword", "se cret");
        b.Choose("cbxPort", "3");
        b.Choose("cbxBaud", "19200");
        b.Choose("cbxParity", "Odd");
        b.Choose("cbxDataBits", "7");
        b.Choose("cbxStopBits", "2");
        b.Choose("cbxFlowControl", "HWFC");
        b.Fill("txtConnectionTimeout", "33");
    });
    EXPECT_EQ(asTheCommand({"--model",     "KR305", "--series", "3",     "--serial",  "991", "--password",  "se cret",
                            "--com",       "3",     "--baud",   "19200", "--parity",  "Odd", "--data-bits", "7",
                            "--stop-bits", "2",     "--flow",   "HWFC",  "--timeout", "33"}),
              dialog);
    EXPECT_NE(dialog.found.find("3tallyCoreSettings=3,KR305 Series 3,991,19200,Odd,7,2,HWFC,"), std::string::npos)
        << dialog.found;
    EXPECT_NE(dialog.options.find("Icons=7\r\n"), std::string::npos);
}

TEST(AddLikeTheDialog, WhatIsNotToldIsAsTheDialogOpens)
{
    const Files dialog = asTheDialog([](AddBench&) {});
    EXPECT_EQ(asTheCommand({"--model", "KR20", "--com", "1"}), dialog);
    EXPECT_NE(dialog.found.find("=1,KR20 Series 1,none,4800,None,8,1,NOFC,"), std::string::npos) << dialog.found;
}

TEST(AddLikeTheDialog, BehindAModemWithTheDataBitsInPlaceOfItsSpeed)
{
    const Files dialog = asTheDialog([](AddBench& b) {
        b.Choose("cbxModel", "KR40");
        b.Click("optDialup");
        b.Choose("cbxModemPort", "3");
        b.Choose("cbxModemBaud", "19200");
        b.Fill("txtPhoneNumber", "0,12");
        b.Fill("txtInitString", "at&f,x4");
        b.Fill("txtPassword", "p");
    });
    EXPECT_EQ(asTheCommand({"--model", "KR40", "--modem", "3", "--phone", "0,12", "--init", "at&f,x4", "--baud",
                            "19200", "--password", "p"}),
              dialog);
    EXPECT_NE(dialog.found.find("=3,KR40,none,0|12,at&f|x4,8,,,"), std::string::npos) << dialog.found;
}

TEST(AddLikeTheDialog, OnTcp)
{
    const Files dialog = asTheDialog([](AddBench& b) {
        b.Choose("cbxModel", "KR400");
        b.Click("optEthernet");
        b.Fill("txtIP", "weir.example.org");
        b.Fill("txtTCPPort", "7700");
    });
    EXPECT_EQ(asTheCommand({"--model", "KR400", "--tcp", "weir.example.org:7700"}), dialog);
    EXPECT_NE(dialog.found.find("=weir.example.org:7700,KR400,none,,,,,,"), std::string::npos) << dialog.found;
}

} // namespace harvelop::test
