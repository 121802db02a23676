// What the commands of `harvelctl` print with --json.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "core/gates.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace harvelop
{

using nlohmann::ordered_json;

// With a line end behind it. Texts of loggers and files are bytes; what is no UTF-8 in them is replaced, since JSON
// can't hold it. `compact`: on one line.
std::string JsonText(const ordered_json& value, bool compact = false);

// Keeps the boxes that a command shows while it lives, with their answers, for what the console keeps.
class BoxKeeper
{
public:
    BoxKeeper(GatedDialogs& dialogs, Console& console);
    ~BoxKeeper() { m_dialogs.OnAnswered = nullptr; }
    BoxKeeper(const BoxKeeper&) = delete;
    BoxKeeper& operator=(const BoxKeeper&) = delete;

private:
    GatedDialogs& m_dialogs;
};

// Prints the result of a command. `shown` is what it has printed itself: of a command that only shows something that is
// the result. Of all others, and of one that could show nothing, it is an object: whether it is done, its messages, and
// what it has found under a name of its own.
void PrintJson(const CtlCommand& command, const Console& console, bool done, const std::string& shown,
               std::ostream& out);

} // namespace harvelop
