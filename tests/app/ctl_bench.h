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
        Console console(said, false, false);
        Program program({pump, serial, sockets, dialogs, files, settings, desktop});
        const auto parsed = ParseCtlArguments(words);
        const auto* command = std::get_if<CtlCommand>(&parsed);
        if (!command)
            return CtlUsageError;
        return RunCtlCommand(program, console, *command, Directory, out);
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
};

} // namespace harvelop::test
