// An application directory for `harvelctl check`.
#pragma once

#include "ctl_bench.h"
#include "settings/option_keys.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace harvelop::test
{

inline std::vector<LoggerRecord> SoundLoggers()
{
    std::vector<LoggerRecord> loggers = {SerialLogger(), ModemLogger(), NetworkLogger()};
    loggers[0].LoggerSaveFolder = "/tmp/";
    return loggers;
}

// A directory without anything odd.
struct CheckedCtl : StoredCtl {
    explicit CheckedCtl(const std::vector<LoggerRecord>& loggers = SoundLoggers()) : StoredCtl(loggers)
    {
        desktop.onPath["report.exe"] = "/usr/bin/report.exe";
        std::string& options = File("options.ini");
        for (const std::string_view line : DefaultOptionLines())
            options.append(line == "Icons=1" ? "Icons=4" : line).append("\r\n");
    }

    // What `check` says, which changes nothing.
    std::string Check()
    {
        const auto before = files.files;
        const int code = Run({"check"});
        EXPECT_EQ(code, out.str().empty() ? CtlDone : CtlFailed);
        EXPECT_EQ(files.files, before);
        EXPECT_TRUE(files.writes.empty());
        return out.str();
    }

    // Replaces the line of an option or a logger, and gives its number.
    int Put(const std::string& file, const std::string& key, const std::string& line)
    {
        std::string& text = File(file);
        const size_t at = text.find(key);
        EXPECT_NE(at, std::string::npos) << key;
        const size_t end = text.find("\r\n", at);
        text.replace(at, end - at, line);
        return static_cast<int>(1 + std::count(text.begin(), text.begin() + static_cast<long>(at), '\n'));
    }
};

// A finding as it is printed.
inline std::string AtLine(const std::string& file, int line, const std::string& text)
{
    return file + ":" + std::to_string(line) + ": " + text + "\n";
}

} // namespace harvelop::test
