// The start of the program: from its current directory to the first window.
#pragma once

#include "app/launch.h"
#include "app/program.h"

#include <functional>
#include <string>

namespace harvelop
{

// What a start shows and begins. A hook that is not set is something that this build does not do: the start then says
// so and ends the program with exit code 1.
struct StartUpHooks {
    std::function<void()> showOptions;              // makes the options panel visible; its first use loads it
    std::function<void()> loadOptions;              // loads it without showing it
    std::function<void(const Launch&)> sendText;    // connects to `CurrentLogger` and sends
    std::function<void(const Launch&)> loadProgram; // loads the program file of `LaunchCommand` into `CurrentLogger`
    std::function<void(const std::string&)> say;    // a line to whoever started the program
    // A language file is in use: what is not in it, too, speaks this language from now on. Need not be set.
    std::function<void(const std::string& language)> speak = {};
};

class StartUp
{
public:
    StartUp(Program& program, StartUpHooks hooks) : m_program(program), m_hooks(std::move(hooks)) {}

    // The whole start-up. The program may have ended when it returns.
    void Run(const std::string& commandLine);

private:
    void findAppPath();
    bool isSetUp();
    // Sets the current directory up as the application directory. False if nothing can be written there.
    bool FirstRunSetup();
    // Offers the user's data directory in place of the current one, goes there and remembers it for the next start from
    // here. False if the user declines or nothing can be written there either, which is told.
    bool workInDataDirectory();
    void followPath();
    void greet();
    void showSinglePanel();

    Program& m_program;
    StartUpHooks m_hooks;
};

// The pieces of a start that the command-line client shares.

// Sets `AppPath` and `DriveRoot`; `directory` without a trailing separator.
void SetAppPath(Program& program, const std::string& directory);
// Reads the options, the terminal's geometry, the records and, where one is asked for, the language file, which ends
// the program if it can't be read. Lays down the fixed values.
void LoadSettings(Program& program);
// Without probing: the ports that the option `AvailablePorts` lists.
void TakeListedPorts(Program& program);

} // namespace harvelop
