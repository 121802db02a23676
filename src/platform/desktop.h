// What the program asks of the desktop around it: directories, other programs, shortcuts, the date.
#pragma once

#include <string>
#include <vector>

namespace harvelop
{

struct Shortcut {
    std::string name;                     // shown under the icon
    std::string program;                  // path of the program to start, as `StartProgram` takes it
    std::vector<std::string> arguments{}; // reach the program byte for byte
    std::string workingDirectory;         // the program's current directory
};

class Desktop
{
public:
    virtual ~Desktop() = default;

    virtual std::string CurrentDirectory() const = 0; // without a trailing separator, but for the root
    // Where this program's files belong among the user's own data, without a trailing separator; it need not exist.
    virtual std::string DataDirectory() const = 0;
    // Makes a directory, and those that it lies in, where they are missing, and makes it the current one. False if that
    // can't be done; the current one then is as before.
    virtual bool EnterDirectory(const std::string& path) = 0;
    // The root under which this user may write, with a trailing separator.
    virtual std::string DriveRoot() const = 0;

    virtual std::string DateText() const = 0; // today, in the user's short form
    virtual std::string TimeText() const = 0; // now, in the user's short form

    // Starts a program in a normal window, without a shell, and does not wait for it. A path that ends in ".exe" and is
    // not an executable file also stands for the same path without that ending. False if it could not be started.
    virtual bool StartProgram(const std::string& path, const std::vector<std::string>& arguments,
                              const std::string& workingDirectory) = 0;

    // The path of a program that lies on the user's PATH; empty without one.
    virtual std::string ProgramOnPath(const std::string& name) const = 0;

    // Opens a text file in the user's own viewer. False without a viewer.
    virtual bool ShowTextFile(const std::string& path) = 0;

    // Puts a shortcut into the user's desktop folder, replacing one of the same name. If there is no such program, it
    // starts the one of that name that lies beside the running one. False on failure.
    virtual bool CreateShortcut(const Shortcut& shortcut) = 0;
};

} // namespace harvelop
