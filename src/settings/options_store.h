// The options file, `options.ini` in the application directory. The unload program reads it too: key names, order and
// the spelling of values are a contract.
#pragma once

#include "core/program_state.h"
#include "platform/data_files.h"
#include "settings/options.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// A line of the options file: what stands before its first "=" and behind it.
struct OptionLine {
    int number = 0; // from 1
    std::string key;
    std::string value;
};

// The line that a key is read from: the first one that holds it anywhere, also within another key's value: that is
// meant. None if there is none.
std::optional<OptionLine> FindOptionLine(std::string_view text, std::string_view key);

// Whether the line is a password's: no option that is read from it may be shown.
bool IsPasswordLine(const OptionLine& line);

class OptionsStore
{
public:
    // `findComPorts` is called when the file is missing, so that a first run has a port list.
    // `saveFoundLoggers` follows each save: the options and the loggers are always saved together.
    OptionsStore(Options& options, const ProgramState& state, DataFiles& files)
        : m_options(options), m_state(state), m_files(files)
    {
    }
    std::function<void()> FindComPorts;
    std::function<void()> SaveFoundLoggers;

    // Reads one key from the file and assigns it to its variable; gives the value's text, "" if the key is absent. The
    // section only chooses which variables can be assigned: "Options", "tallyCores" or "Terminal"; any other assigns
    // none. A value that does not convert leaves the variable as it was. A missing file is created with the defaults,
    // and that request gives "" whatever the defaults hold; if that fails, it is not tried again before a save has
    // succeeded. A file that is not there or can't be read assigns nothing. Each call reads the file afresh.
    std::string ReadOption(const std::string& section, const std::string& key);

    // All keys that a start asks for, in their order.
    void ReadAllOptions();

    // The five keys of the terminal window; a width or height of exactly 0 becomes the standard one.
    void LoadTerminalGeometry();

    // Rewrites the file from the variables and then the loggers' file. Nothing is reported if that fails. A file that
    // stands there and can't be read is not replaced. False if the options were not written.
    bool SaveOptions();

    // Raises the counter `Icons`, read afresh from the file, and gives the key of a new logger: "::" and the new value.
    // A counter that is not a number gives none and changes nothing.
    std::optional<std::string> NextIconKey();

private:
    std::string path() const;
    bool writeDefaultOptions();

    Options& m_options;
    const ProgramState& m_state;
    DataFiles& m_files;
    bool m_notCreated = false; // each try searches the ports and is told on stderr: one is enough
};

} // namespace harvelop
