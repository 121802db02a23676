#include "panels/record_edits.h"

#include "core/text_lines.h"
#include "identify/model_set_up.h"
#include "identify/panel_work.h"
#include "panels/panel_rules.h"
#include "panels/run_rules.h"
#include "panels/table_name_rules.h"
#include "platform/separator.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Refusal = std::optional<std::string>; // what follows the field's name in the line; none: it is in

struct Change {
    EditedLogger& logger;
    size_t row; // of a schedule's entry
    const std::string& value;
    const EditSurroundings& use;
};

int rowsOf(const EditedLogger& logger)
{
    return static_cast<int>(ScheduleLetters(logger.record.LoggerModel).size());
}

// `held` tells why the user may not change the box now; empty if that is open to him.
Refusal changeBox(const Change& change, bool& box, const std::string& held)
{
    if (change.value != "0" && change.value != "1")
        return " wants 0 or 1.";
    const bool wanted = change.value == "1";
    if (wanted != box && !held.empty())
        return held;
    box = wanted;
    return std::nullopt;
}

Refusal changeOn(const Change& change)
{
    return changeBox(change, change.logger.values.on.at(change.row), {});
}

Refusal changeUlast(const Change& change)
{
    PanelValues& values = change.logger.values;
    const bool open = AccessOf(values, static_cast<int>(change.row)).ulast;
    return changeBox(change, values.ulast.at(change.row), open ? "" : " is held on by HTML.");
}

Refusal changeCSV(const Change& change)
{
    PanelValues& values = change.logger.values;
    const bool open = AccessOf(values, static_cast<int>(change.row)).csv;
    const std::string holder = values.html.at(change.row) ? "HTML" : "the database";
    return changeBox(change, values.csv.at(change.row), open ? "" : " is held on by " + holder + ".");
}

Refusal changeHTML(const Change& change)
{
    PanelValues& values = change.logger.values;
    const bool before = values.html.at(change.row);
    Refusal refusal = changeBox(change, values.html.at(change.row), {});
    if (values.html.at(change.row) != before)
        ApplyHtmlRule(values, rowsOf(change.logger));
    return refusal;
}

Refusal changeViaEmail(const Change& change)
{
    PanelValues& values = change.logger.values;
    return changeBox(change, values.viaEmail,
                     values.emailEnabled ? "" : " can't be on: the email account in the options is not filled in.");
}

Refusal changeViaFTP(const Change& change)
{
    PanelValues& values = change.logger.values;
    return changeBox(change, values.viaFTP,
                     values.ftpEnabled ? "" : " can't be on: the FTP account in the options is not filled in.");
}

void setMdb(EditedLogger& logger, bool on)
{
    if (logger.values.mdb == on)
        return;
    logger.values.mdb = on;
    logger.record.LoggerMdbOn = on ? "1" : "0";
    ApplyMdbRule(logger.values, rowsOf(logger));
}

Refusal changeMdb(const Change& change)
{
    EditedLogger& logger = change.logger;
    bool wanted = logger.values.mdb;
    Refusal refusal =
        changeBox(change, wanted, logger.values.description.empty() ? " needs a LoggerDescription first." : "");
    setMdb(logger, wanted);
    return refusal;
}

// Without a description there is no database to write to.
void setDescription(EditedLogger& logger, const std::string& text)
{
    if (text.empty() && !logger.values.description.empty())
        setMdb(logger, false);
    logger.values.description = text;
}

Refusal refusedText(const std::string& value)
{
    const std::string_view why = WhyNotStored(value);
    return why.empty() ? std::nullopt : Refusal(": " + std::string(why));
}

Refusal changeRecords(const Change& change)
{
    PanelValues& values = change.logger.values;
    std::string& records = values.records.at(change.row);
    if (records == change.value)
        return std::nullopt;
    if (!AccessOf(values, static_cast<int>(change.row)).records)
        return " can be changed only while HTML of its schedule is on.";
    if (IsKR4(change.logger.record.LoggerModel)) {
        constexpr size_t Longest = 4;
        if (change.value != KeepAllowed(change.value, "0123456789"))
            return ": " + change.use.language.Text(533) + ".";
        if (change.value.size() > Longest)
            return " can't be longer than 4 characters.";
    }
    if (Refusal refusal = refusedText(change.value))
        return refusal;
    records = change.value;
    return std::nullopt;
}

// A description or a table's name; both take the same, as long as a description is one line.
Refusal refusedName(const std::string& value)
{
    if (value != KeepAllowed(value, TableNameChars))
        return " can hold only the letters A to Z, digits and _.";
    if (value.size() > TableNameLength)
        return " can't be longer than 32 characters.";
    return std::nullopt;
}

Refusal changeDescription(const Change& change)
{
    if (Refusal refusal = refusedName(change.value))
        return refusal;
    setDescription(change.logger, change.value);
    return std::nullopt;
}

Refusal changeSaveFolder(const Change& change)
{
    if (Refusal refusal = refusedText(change.value))
        return refusal;
    // As a chooser gives it: whole, and without a separator at its end.
    std::string path = change.value;
    while (path.size() > 1 && path.ends_with(PathSeparator))
        path.pop_back();
    if (!path.starts_with(PathSeparator) || !change.use.isFolder(path))
        return " wants the whole path of an existing folder.";
    const auto folder = SaveFolderOf(path);
    if (!folder)
        return " can't be a root directory.";
    change.logger.record.LoggerSaveFolder = *folder;
    return std::nullopt;
}

Refusal changeRunProgram(const Change& change)
{
    if (Refusal refusal = refusedText(change.value))
        return refusal;
    change.logger.record.LoggerRunProgram = change.value;
    return std::nullopt;
}

Refusal changeRunCommand(const Change& change)
{
    const std::string command = WithoutLineEnds(change.value);
    if (Refusal refusal = refusedText(command))
        return refusal;
    change.logger.record.LoggerRunCommand = command;
    return std::nullopt;
}

Refusal changeTableName(const Change& change)
{
    if (!change.logger.values.mdb)
        return " can be changed only while LoggerMdbOn is 1.";
    if (Refusal refusal = refusedName(change.value))
        return refusal;
    change.logger.record.LoggerTableNames.at(change.row) = change.value;
    return std::nullopt;
}

struct FieldRule {
    std::string_view table;
    Refusal (*change)(const Change&);
    bool bySchedule = false;
};

constexpr std::array<FieldRule, 13> FieldRules = {{
    {"ScheduleOn", changeOn, true},
    {"ScheduleUlast", changeUlast, true},
    {"ScheduleCSV", changeCSV, true},
    {"ScheduleHTML", changeHTML, true},
    {"ScheduleRecords", changeRecords, true},
    {"LoggerViaEmail", changeViaEmail},
    {"LoggerViaFTP", changeViaFTP},
    {"LoggerSaveFolder", changeSaveFolder},
    {"LoggerDescription", changeDescription},
    {"LoggerRunProgram", changeRunProgram},
    {"LoggerRunCommand", changeRunCommand},
    {"LoggerMdbOn", changeMdb},
    {"LoggerTableNames", changeTableName, true},
}};

// Fields that no panel edits; all that are not named here belong to the link.
struct FixedField {
    std::string_view table;
    std::string_view why;
};

constexpr std::array<FixedField, 7> FixedFields = {{
    {"LoggerModel", " can't be changed: it comes from the logger."},
    {"LoggerSerial", " can't be changed: it comes from the logger."},
    {"LoggerVersion", " can't be changed: it comes from the logger."},
    {"LoggerToDisk", " can't be changed: it is always on."},
    {"LoggerKept", " can't be changed: it tells how the logger was entered."},
    {"LoggerPassword", " can't be changed here."},
    {"LoggerIconKey", " can't be changed: shortcuts know the logger by it."},
}};

std::string whyFixed(const std::string& table)
{
    const auto row =
        std::find_if(FixedFields.begin(), FixedFields.end(), [&](const auto& r) { return r.table == table; });
    if (row != FixedFields.end())
        return std::string(row->why);
    const auto& fields = AllRecordFields();
    const bool known = std::any_of(fields.begin(), fields.end(), [&](const auto& f) { return f.table == table; });
    return known ? " can't be changed here: it belongs to the link." : " is no field of a logger.";
}

Refusal applyEdit(EditedLogger& logger, const RecordEdit& edit, const EditSurroundings& use)
{
    const size_t point = edit.field.find('.');
    const std::string table = edit.field.substr(0, point);
    const auto rule =
        std::find_if(FieldRules.begin(), FieldRules.end(), [&](const auto& r) { return r.table == table; });
    if (rule == FieldRules.end())
        return whyFixed(table);
    const bool named = point != std::string::npos;
    if (!rule->bySchedule)
        return named ? Refusal(" is no field of a logger.") : rule->change({logger, 0, edit.value, use});
    const std::string schedule = named ? edit.field.substr(point + 1) : std::string();
    if (schedule.empty())
        return " wants a schedule, as in " + table + ".A.";
    const size_t row = ScheduleLetters(logger.record.LoggerModel).find(schedule);
    if (schedule.size() != 1 || row == std::string_view::npos)
        return ": a " + ModelKey(logger.record.LoggerModel) + " has no such schedule.";
    return rule->change({logger, row, edit.value, use});
}

// As the editor of the names shows them, and so stores them.
void showTableNames(LoggerRecord& record)
{
    const size_t rows = ScheduleCaptions(record.LoggerModel).size();
    for (size_t row = 0; row < rows; ++row) {
        std::string& name = record.LoggerTableNames.at(row);
        name = KeepAllowed(ShownEntry(name), TableNameChars);
    }
}

} // namespace

std::optional<std::string> ApplyEdits(EditedLogger& logger, const std::vector<RecordEdit>& edits,
                                      const EditSurroundings& surroundings)
{
    if (!edits.empty() && !LookOf(logger.record.LoggerModel))
        return edits.front().field + " can't be changed: the logger's model is unknown.";
    EditedLogger edited = logger;
    const auto lastName = std::find_if(edits.rbegin(), edits.rend(), [](const RecordEdit& edit) {
        return edit.field.starts_with("LoggerTableNames");
    });
    if (lastName != edits.rend())
        showTableNames(edited.record);
    for (const RecordEdit& edit : edits)
        if (Refusal refusal = applyEdit(edited, edit, surroundings))
            return edit.field + *refusal;
    if (lastName != edits.rend() && FirstDuplicate(edited.record.LoggerTableNames))
        return lastName->field + ": " + surroundings.language.Text(162) + ".";
    setDescription(edited, KeepAllowed(edited.values.description, DescriptionChars));
    logger = edited;
    return std::nullopt;
}

} // namespace harvelop
