// The desktop around the program, as far as it needs no window.
#pragma once

#include "platform/desktop.h"

namespace harvelop
{

class QtDesktop : public Desktop
{
public:
    std::string CurrentDirectory() const override; // empty if it is gone
    std::string DataDirectory() const override;    // by the XDG base directories
    bool EnterDirectory(const std::string& path) override;
    std::string DriveRoot() const override; // the home directory

    std::string DateText() const override;
    std::string TimeText() const override;

    bool StartProgram(const std::string& path, const std::vector<std::string>& arguments,
                      const std::string& workingDirectory) override;
    std::string ProgramOnPath(const std::string& name) const override;
    bool ShowTextFile(const std::string& path) override;
    // A .desktop file, which may be started by a click. False too if its format can't express the shortcut.
    bool CreateShortcut(const Shortcut& shortcut) override;
};

} // namespace harvelop
