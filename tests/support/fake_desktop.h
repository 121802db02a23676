// A desktop and a settings store that only remember.
#pragma once

#include "platform/desktop.h"
#include "platform/settings_store.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace harvelop::test
{

class FakeDesktop : public Desktop
{
public:
    struct Started {
        std::string path;
        std::vector<std::string> arguments;
        std::string workingDirectory;
    };

    std::string CurrentDirectory() const override { return currentDirectory; }
    std::string DataDirectory() const override { return "/home/user/.local/share/harvelop"; }
    bool EnterDirectory(const std::string& path) override
    {
        if (enters)
            currentDirectory = path;
        return enters;
    }
    std::string DriveRoot() const override { return "/home/user/"; }
    std::string DateText() const override { return "21/11/2026"; }
    std::string TimeText() const override { return "09:30:00"; }
    bool StartProgram(const std::string& path, const std::vector<std::string>& arguments,
                      const std::string& workingDirectory) override
    {
        started.push_back({path, arguments, workingDirectory});
        return start ? start(started.back()) : starts;
    }
    std::string ProgramOnPath(const std::string& name) const override
    {
        const auto found = onPath.find(name);
        return found == onPath.end() ? "" : found->second;
    }
    bool ShowTextFile(const std::string& path) override
    {
        shown.push_back(path);
        return starts;
    }
    bool CreateShortcut(const Shortcut& shortcut) override
    {
        shortcuts.push_back(shortcut);
        return starts;
    }

    std::string currentDirectory = "/home/user/loggers";
    bool enters = true;                        // whether a directory can be made and entered
    bool starts = true;                        // what the other calls give
    std::function<bool(const Started&)> start; // if set, what starting a program does and gives
    std::map<std::string, std::string> onPath; // programs on the user's PATH, by name
    std::vector<Started> started;
    std::vector<std::string> shown;
    std::vector<Shortcut> shortcuts;
};

class MemorySettings : public SettingsStore
{
public:
    std::optional<std::string> Get(const std::string& application, const std::string& section,
                                   const std::string& key) const override
    {
        const auto found = values.find(application + "/" + section + "/" + key);
        return found == values.end() ? std::nullopt : std::optional<std::string>(found->second);
    }
    void Save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override
    {
        values[application + "/" + section + "/" + key] = value;
    }

    std::map<std::string, std::string> values; // "application/section/key" to value
};

} // namespace harvelop::test
