#include "app/ctl_output.h"

#include "app/ctl_json.h"
#include "identify/logger_viewing.h"
#include "panels/field_check.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

namespace harvelop
{

namespace
{

using Row = std::vector<std::string>;

template <typename Do> void forEachLogger(const LoggerTables& tables, Do use)
{
    for (int number = 1; number <= MaxLoggers; ++number)
        if (tables.Holds(number))
            use(number, *tables.Record(number));
}

ordered_json fieldsOf(const LoggerRecord& record)
{
    ordered_json fields = ordered_json::object();
    for (const auto& field : AllRecordFields()) {
        const std::string name(field.table);
        if (field.kind == RecordField::Kind::Schedule)
            fields[name].push_back(FieldText(record, field));
        else if (field.kind == RecordField::Kind::Integer)
            fields[name] = record.*field.integer;
        else
            fields[name] = FieldText(record, field);
    }
    return fields;
}

// "2" of a logger of the older family, "KR200 Series 2"; empty for the KR4 family.
std::string seriesOf(const std::string& model)
{
    constexpr std::string_view Word = " Series ";
    const size_t at = model.rfind(Word);
    return at == std::string::npos ? std::string() : model.substr(at + Word.size());
}

} // namespace

std::string Printable(std::string_view text, std::string_view kept)
{
    std::string printable;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        const bool pair = c == 0xC2 && next >= 0x80 && next < 0xA0; // U+0080 to U+009F
        const bool control = (c < ' ' || c == 0x7F) && kept.find(text[i]) == std::string_view::npos;
        printable += pair || control ? '?' : text[i];
        i += pair ? 1 : 0;
    }
    return printable;
}

std::string LoggersAsTable(const LoggerTables& tables)
{
    std::vector<Row> rows = {{"No", "Model", "Serial", "Version", "Port", "Baud", "Link", "Name"}};
    forEachLogger(tables, [&](int number, const LoggerRecord& r) {
        rows.push_back({std::to_string(number), r.LoggerModel, r.LoggerSerial, r.LoggerVersion, r.LoggerPort,
                        r.LoggerLinkType == "RS232" ? r.LoggerBaud : std::string("-"), r.LoggerLinkType,
                        LoggerListLine(r)});
    });
    if (rows.size() == 1)
        return {};
    for (Row& row : rows)
        for (std::string& cell : row)
            cell = Printable(cell);
    std::vector<size_t> widths(rows[0].size(), 0);
    for (const Row& row : rows)
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    std::ostringstream table;
    for (const Row& row : rows) {
        for (size_t i = 0; i < row.size(); ++i)
            table << row[i] << (i + 1 < row.size() ? std::string(widths[i] - row[i].size() + 2, ' ') : "\n");
    }
    return table.str();
}

std::string LoggersAsJson(const LoggerTables& tables)
{
    ordered_json all = ordered_json::array();
    forEachLogger(tables, [&](int number, const LoggerRecord& r) {
        all.push_back({{"number", number},
                       {"name", LoggerListLine(r)},
                       {"model", r.LoggerModel},
                       {"series", seriesOf(r.LoggerModel)},
                       {"serial", r.LoggerSerial},
                       {"version", r.LoggerVersion},
                       {"link", r.LoggerLinkType},
                       {"port", r.LoggerPort},
                       {"baud", r.LoggerBaud},
                       {"key", r.LoggerIconKey}});
    });
    return JsonText(all);
}

std::string LoggerAsText(const LoggerRecord& record)
{
    std::string lines;
    for (const auto& field : AllRecordFields()) {
        lines += FieldName(field, record.LoggerModel) + "=" + Printable(FieldText(record, field)) + "\n";
    }
    return lines;
}

std::string LoggerAsJson(const LoggerRecord& record, int number)
{
    ordered_json object = {{"number", number}};
    object.update(fieldsOf(record));
    return JsonText(object);
}

std::string ChangesAsJson(const LoggerRecord& before, const LoggerRecord& now)
{
    ordered_json changes = ordered_json::object();
    for (const auto& field : AllRecordFields()) {
        const std::string value = FieldText(now, field);
        if (value == FieldText(before, field))
            continue;
        if (field.kind == RecordField::Kind::Integer)
            changes[FieldName(field, now.LoggerModel)] = now.*field.integer;
        else
            changes[FieldName(field, now.LoggerModel)] = value;
    }
    return JsonText(changes);
}

std::string ListsAsText(const std::vector<ShownList>& lists)
{
    std::string lines;
    for (const ShownList& list : lists) {
        if (list.description.empty() && list.addresses.empty())
            continue;
        lines += list.caption + (list.description.empty() ? "" : ": " + Printable(list.description)) + "\n";
        for (const std::string& address : list.addresses)
            lines += "  " + Printable(address) + "\n";
    }
    return lines;
}

std::string ListsAsJson(const std::vector<ShownList>& lists)
{
    ordered_json all = ordered_json::array();
    for (const ShownList& list : lists)
        all.push_back({{"schedule", list.key}, {"description", list.description}, {"addresses", list.addresses}});
    return JsonText(all);
}

} // namespace harvelop
