// A command of `harvelctl` on a program with stored loggers, in memory.
#pragma once

#include "app/ctl_commands.h"
#include "settings/sample_loggers.h"
#include "support/test_program.h"

#include <sstream>
#include <string>
#include <vector>

namespace harvelop::test
{

// Lines that are there at once; behind the last one comes the end, unless it stays open.
struct FakeLines : LineInput {
    std::optional<std::string> NextLine() override
    {
        if (lines.empty())
            return std::nullopt;
        std::string line = lines.front();
        lines.erase(lines.begin());
        return line;
    }
    bool AtEnd() const override { return lines.empty() && !staysOpen; }

    std::vector<std::string> lines;
    bool staysOpen = false;
};

struct StoredCtl : TestProgram {
    explicit StoredCtl(const std::vector<LoggerRecord>& loggers = {SerialLogger(), ModemLogger(), NetworkLogger()})
    {
        std::string& found = files.files[FoundIni];
        for (size_t i = 0; i < loggers.size(); ++i)
            found += std::to_string(i + 1) + "tallyCoreSettings=" + RecordText(loggers[i]) + "\r\n";
    }

    // The exit code. Each run is a program of its own on the same files, as it is outside.
    int Run(const std::vector<std::string>& words)
    {
        out.str("");
        said.str("");
        Console console(said, false, false, forScreen);
        Program program({pump, serial, sockets, dialogs, files, settings, desktop});
        if (interruptMs > 0)
            pump.After(interruptMs, [&program] { InterruptCtl(program); });
        const auto parsed = ParseCtlArguments(words);
        const auto* command = std::get_if<CtlCommand>(&parsed);
        if (!command)
            return CtlUsageError;
        return RunCtlCommand(program, console, *command, Directory, out, &input);
    }

    // What is said to a command that fails and leaves every file as it was.
    std::string Refusal(const std::vector<std::string>& words)
    {
        const auto before = files.files;
        EXPECT_EQ(Run(words), CtlFailed);
        EXPECT_EQ(files.files, before);
        EXPECT_EQ(out.str(), "");
        return said.str();
    }

    std::string& File(const std::string& name) { return files.files[std::string(Directory) + "/" + name]; }

    std::ostringstream out;
    std::ostringstream said;
    FakeLines input;
    bool forScreen = false; // standard output is a terminal
    double interruptMs = 0; // when somebody wants the run to end, once; 0: never
};

} // namespace harvelop::test
