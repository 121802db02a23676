#include "app/ctl_settings.h"

#include "app/ctl_commands.h"
#include "app/ctl_json.h"
#include "app/ctl_loggers.h"
#include "app/ctl_output.h"
#include "core/text_numbers.h"
#include "panels/option_edits.h"
#include "settings/option_keys.h"

#include <algorithm>
#include <map>

namespace harvelop
{

namespace
{

// What the file would hold that the first start makes.
Options defaults()
{
    std::string text;
    for (const std::string_view line : DefaultOptionLines())
        text.append(line).append("\n");
    Options options;
    for (const OptionKey& row : SavedOptionKeys()) {
        const std::string value = FindOptionLine(text, row.key).value_or(OptionLine()).value;
        AssignOption(options, row.variable, value.empty() ? std::string(row.insteadOfEmpty) : value);
    }
    return options;
}

// The options of which each has a variable of its own.
std::vector<const OptionKey*> shownKeys()
{
    std::vector<const OptionKey*> keys;
    for (const OptionKey& row : SavedOptionKeys())
        if (row.variable == row.written)
            keys.push_back(&row);
    return keys;
}

// What is told of an option: of a password only whether there is one, as its field shows no more. An option that `file`
// has on a password's line holds the password too.
ordered_json toldOf(const Options& options, const OptionKey& row, const std::string& file)
{
    const auto line = FindOptionLine(file, row.key);
    const bool password = row.key.ends_with("Password") || (line && IsPasswordLine(*line));
    if (password && std::holds_alternative<std::string Options::*>(row.variable) &&
        !OptionText(options, row.variable).empty())
        return "(set)";
    if (std::holds_alternative<float Options::*>(row.variable)) // as the file has it, not the float's nearest double
        return ToDouble(OptionText(options, row.variable)).value_or(0);
    return std::visit([&](auto member) { return ordered_json(options.*member); }, row.variable);
}

void show(const Options& options, const std::string& file, bool json, std::ostream& out)
{
    ordered_json all = ordered_json::object();
    for (const OptionKey* row : shownKeys()) {
        const ordered_json& told = all[std::string(row->key)] = toldOf(options, *row, file);
        if (!json)
            out << row->key << "="
                << Printable(told.is_string() ? told.get<std::string>() : OptionText(options, row->variable)) << "\n";
    }
    if (json)
        out << JsonText(all);
}

// Those that are another than before.
ordered_json changed(const Options& before, const Options& now, const std::string& file)
{
    ordered_json all = ordered_json::object();
    for (const OptionKey* row : shownKeys())
        if (OptionText(before, row->variable) != OptionText(now, row->variable))
            all[std::string(row->key)] = toldOf(now, *row, file);
    return all;
}

} // namespace

int WorkOnOptions(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!OptionsReadable(p, console) || !LoggersReadable(p, console))
        return CtlFailed;
    p.store.FindComPorts = nullptr; // no port is touched for this
    const std::string file = p.files.Read(p.state.AppPath + "options.ini").text;
    if (HasOptions(p)) {
        p.store.ReadAllOptions(); // not the language file, which may be what is to be changed
        p.store.LoadTerminalGeometry();
    } else {
        p.options = defaults();
    }
    if (command.edits.empty()) {
        show(p.options, file, command.json, out);
        return CtlDone;
    }
    const Options before = p.options;
    std::vector<OptionEdit> edits;
    edits.reserve(command.edits.size());
    for (const RecordEdit& edit : command.edits)
        edits.push_back({edit.field, edit.value});
    if (const auto refusal = ApplyOptionEdits(p.options, edits)) {
        console.Line(Printable(*refusal));
        return CtlFailed;
    }
    p.records.LoadFoundLoggers(); // which are saved along
    if (!p.store.SaveOptions()) {
        console.Line("The file " + p.state.AppPath + "options.ini can't be written.");
        return CtlFailed;
    }
    if (command.json)
        out << JsonText(changed(before, p.options, file));
    return CtlDone;
}

} // namespace harvelop
