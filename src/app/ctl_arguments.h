// The command line of `harvelctl`.
#pragma once

#include "panels/add_rules.h"
#include "panels/icon_rules.h"
#include "panels/record_edits.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace harvelop
{

// One change of a schedule's delivery list.
struct ListEdit {
    enum class Kind { Description, Add, Remove, Clear }; // Clear: all addresses of the schedule
    Kind kind = Kind::Clear;
    std::string text = {}; // the description or the address
};

struct CtlCommand {
    enum class Verb {
        Help,
        Version,
        Find,
        List,
        Show,
        Set,
        Lists,
        Ports,
        Add,
        Test,
        Connect,
        Send,
        Terminal,
        Load,
        Jobs,
        Clear,
        TestSMTP,
        TestFTP,
        Options,
        Delete,
        Unload,
        Shortcut,
        Check,
        LanguageTemplate,
        LanguageCheck,
        Completion
    };
    enum class Target { Memory, Card, Flash, Job };
    Verb verb = Verb::Help;
    std::string directory = ".";         // the application directory
    std::optional<int> port;             // find: this com port only, 1 to 16
    bool yes = false;                    // find, lists, delete, load, clear: questions are answered with yes
    std::optional<std::string> password; // find: the answer to a question for a password; add: the logger's
    bool json = false;
    int number = 0;                      // of the logger, 1 to 50, for all commands that take one; unload: 0 for none
    std::vector<RecordEdit> edits;       // set: at least one; options: none to show them
    std::optional<std::string> schedule; // lists: the key of this schedule only; none: all are shown, "0" is edited
    std::vector<ListEdit> listEdits;     // lists: in their order; none: the lists are shown
    bool deleteAll = false;              // lists: of all schedules, with their descriptions
    AddValues logger;                    // add: what the dialog's controls would hold
    IconChoice icon{"Data", {}, {}, {}, false}; // shortcut
    std::string text;                           // send: one line; may be empty. completion: the shell
    std::string file;                           // load, language-check: as it was named, then absolute
    std::string trace;              // what reaches loggers or servers: the file that gets every byte; empty: none
    Target target = Target::Memory; // load: where to; clear: what
    std::string job;                // clear a job: its name without star and blanks, or what stands for all
};

// The command, or in one line what is wrong with the words. Behind "--" no word is an option.
std::variant<CtlCommand, std::string> ParseCtlArguments(const std::vector<std::string>& words);

std::string CtlUsage();

} // namespace harvelop
