#include "app/ctl_loggers.h"

namespace harvelop
{

namespace
{

std::string pathOf(const Program& program, const char* file)
{
    return program.state.AppPath + file;
}

bool isReadable(Program& program, Console& console, const char* file)
{
    if (program.files.Read(pathOf(program, file)).state != FileState::Unreadable)
        return true;
    console.Line("The file " + pathOf(program, file) + " can't be read.");
    return false;
}

} // namespace

bool LoggersReadable(Program& program, Console& console)
{
    return isReadable(program, console, "found.ini");
}

bool OptionsReadable(Program& program, Console& console)
{
    return isReadable(program, console, "options.ini");
}

bool LoadLoggers(Program& program, Console& console)
{
    if (!LoggersReadable(program, console))
        return false;
    program.records.LoadFoundLoggers();
    if (program.records.Saved())
        return true;
    console.Line("The file " + pathOf(program, "found.ini") + " holds more than " + std::to_string(MaxLoggers) +
                 " loggers.");
    return false;
}

bool LoadLogger(Program& program, Console& console, int number)
{
    if (!LoadLoggers(program, console))
        return false;
    if (program.tables.Holds(number))
        return true;
    console.Line("There is no logger " + std::to_string(number) + ".");
    return false;
}

bool HasOptions(Program& program)
{
    return program.files.Read(pathOf(program, "options.ini")).state != FileState::NotFound;
}

} // namespace harvelop
