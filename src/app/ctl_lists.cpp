#include "app/ctl_lists.h"

#include "app/ctl_commands.h"
#include "app/ctl_loggers.h"
#include "app/ctl_output.h"
#include "app/start_up.h"
#include "core/text_lines.h"
#include "identify/model_set_up.h"
#include "panels/list_rules.h"

#include <algorithm>

namespace harvelop
{

namespace
{

using Refusal = std::optional<std::string>; // the line that tells it; none: it is done

std::string listPath(const Program& p, const LoggerRecord& record)
{
    return p.lists.PathOf(ListNumber(record.LoggerIconKey));
}

// Makes the logger the one in work and reads its lists. False, and told, if they can't be read.
bool readLists(Program& p, Console& console, int number)
{
    const LoggerRecord& record = *p.tables.Record(number);
    p.state.CurrentLogger = p.state.ChosenLogger = static_cast<std::int16_t>(number);
    if (p.files.Read(listPath(p, record)).state == FileState::NotFound)
        return true; // there is nothing in it, and reading would make it
    if (p.lists.ReadDeliveryList(ListNumber(record.LoggerIconKey)))
        return true;
    console.Line("The file " + listPath(p, record) + " can't be read.");
    return false;
}

int write(Program& p, Console& console, int number)
{
    if (p.lists.WriteDeliveryList())
        return CtlDone;
    console.Line("The file " + listPath(p, *p.tables.Record(number)) + " can't be written.");
    return CtlFailed;
}

Refusal add(AddressList& list, const std::string& address)
{
    const auto end = std::find(list.begin(), list.end(), "");
    if (address.empty())
        return "An address can't be empty.";
    if (address != KeepAllowed(address, AddressChars) || address != OneLine(address))
        return address + ": an address can hold only the letters A to Z, digits and . @ _";
    if (std::find(list.begin(), list.end(), address) != list.end())
        return address + " is in the list already.";
    if (std::distance(list.begin(), end) >= MaxListEntries - 1)
        return address + " has no room: a list holds 19 addresses.";
    *end = address;
    if (AddressesIn(AddressText(list)) != list)
        return address + " has no room: a list holds 5000 characters.";
    return std::nullopt;
}

Refusal remove(AddressList& list, const std::string& address)
{
    const auto end = std::remove(list.begin(), list.end(), address);
    if (address.empty() || end == list.end())
        return address + " is not in the list.";
    std::fill(end, list.end(), "");
    return std::nullopt;
}

Refusal apply(const ListEdit& edit, AddressList& list, std::string& description)
{
    switch (edit.kind) {
    case ListEdit::Kind::Add:
        return add(list, edit.text);
    case ListEdit::Kind::Remove:
        return remove(list, edit.text);
    case ListEdit::Kind::Clear:
        list.fill("");
        return std::nullopt;
    case ListEdit::Kind::Description:
        break;
    }
    if (edit.text != OneLine(edit.text))
        return "A description can't hold a line end.";
    description = edit.text;
    return std::nullopt;
}

int editList(Program& p, Console& console, const CtlCommand& command, size_t schedule)
{
    AddressList& list = p.lists.Tables().Lists(command.number)->at(schedule);
    std::stable_partition(list.begin(), list.end(), [](const std::string& address) { return !address.empty(); });
    for (const ListEdit& edit : command.listEdits)
        if (const Refusal refusal = apply(edit, list, p.lists.Tables().ListDescriptions.at(schedule))) {
            console.Line(Printable(*refusal));
            return CtlFailed;
        }
    return write(p, console, command.number);
}

int deleteAll(Program& p, Console& console, int number)
{
    if (p.dialogs.Show(DeleteAllQuestion(p.language)) != BoxAnswer::Yes)
        return CtlFailed;
    p.lists.Tables().Clear();
    return write(p, console, number);
}

int change(Program& p, Console& console, const CtlCommand& command, size_t schedule)
{
    if (!LookOf(p.tables.Record(command.number)->LoggerModel)) {
        console.Line("The lists can't be changed: the logger's model is unknown.");
        return CtlFailed;
    }
    return command.deleteAll ? deleteAll(p, console, command.number) : editList(p, console, command, schedule);
}

std::vector<ShownList> shownLists(Program& p, const CtlCommand& command, const std::string& keys)
{
    const auto captions = ListCaptions(p.tables.Record(command.number)->LoggerModel);
    const LoggerLists& lists = *p.lists.Tables().Lists(command.number);
    std::vector<ShownList> shown;
    for (size_t schedule = 0; schedule < keys.size(); ++schedule) {
        const std::string key(1, keys[schedule]);
        if (key != command.schedule.value_or(key))
            continue;
        shown.push_back({key, captions.at(schedule), p.lists.Tables().ListDescriptions.at(schedule)});
        const AddressList& list = lists.at(schedule);
        std::copy_if(list.begin(), list.end(), std::back_inserter(shown.back().addresses),
                     [](const std::string& address) { return !address.empty(); });
    }
    return shown;
}

} // namespace

int WorkOnLists(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    if (!LoadLogger(program, console, command.number))
        return CtlFailed;
    if (HasOptions(program))
        LoadSettings(program); // for the user's language
    if (program.end.Ended())
        return CtlFailed;
    const LoggerRecord& record = *program.tables.Record(command.number);
    const std::string keys = ScheduleKeysOf(record.LoggerModel);
    const std::string key = command.schedule.value_or("0");
    const size_t schedule = keys.find(key);
    if (key.size() != 1 || schedule == std::string::npos) {
        console.Line("A " + ModelKey(record.LoggerModel) + " has no schedule " + Printable(key) + ".");
        return CtlFailed;
    }
    if (!readLists(program, console, command.number))
        return CtlFailed;
    const bool changes = command.deleteAll || !command.listEdits.empty();
    const int code = changes ? change(program, console, command, schedule) : CtlDone;
    if (code != CtlDone || (changes && !command.json))
        return code;
    const auto shown = shownLists(program, command, keys);
    out << (command.json ? ListsAsJson(shown) : ListsAsText(shown));
    return CtlDone;
}

} // namespace harvelop
