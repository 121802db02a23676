// Any bytes as `found.ini`: reading must not fail, a record says the same when its line is read again, and a saved file
// holds what was loaded.
#include "core/text_lines.h"
#include "hold.h"
#include "settings/logger_records.h"
#include "support/memory_files.h"

using namespace harvelop;

namespace
{

bool sameFields(const LoggerRecord& a, const LoggerRecord& b)
{
    for (const RecordField& field : AllRecordFields())
        if (FieldText(a, field) != FieldText(b, field))
            return false;
    return a.LoggerLinkType == b.LoggerLinkType && a.LoggerHost == b.LoggerHost && a.LoggerTcpPort == b.LoggerTcpPort;
}

void checkRecord(const LoggerRecord& record)
{
    const std::string line = RecordText(record);
    LoggerRecord again;
    ParseRecord(line, again);
    fuzz::Hold(sameFields(record, again), "a record reads as it was");
    fuzz::Hold(RecordText(again) == line, "and is written as it was");
}

struct Reader {
    explicit Reader(const std::string& text)
    {
        files.files["found.ini"] = text;
        records.LoadFoundLoggers();
    }

    LoggerTables tables;
    ProgramState state;
    LoggerPanels panels;
    test::MemoryFiles files;
    LoggerRecords records{tables, state, panels, files};
};

// A record that begins with an "=" is cut by the next load, and so says something else.
bool isCutAgain(const std::string& record)
{
    return Holds(std::string_view(record).substr(0, 3), "=");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    Reader first(text);
    first.records.FindLoggerByKey(text.substr(0, 3));
    bool cutAgain = false;
    for (int number = 1; number <= MaxLoggers; ++number) {
        if (!first.tables.Holds(number))
            continue;
        checkRecord(*first.tables.Record(number));
        cutAgain = cutAgain || isCutAgain(first.tables.FoundLoggerStrings[static_cast<size_t>(number - 1)]);
    }

    first.records.SaveFoundLoggers();
    fuzz::Hold(first.records.Saved() || first.files.files["found.ini"] == text, "a line too many is not lost");
    Reader second(first.files.files["found.ini"]);
    fuzz::Hold(second.tables.Count() == first.tables.Count() || cutAgain, "no record is lost or made by a save");
    second.records.SaveFoundLoggers();
    if (!cutAgain)
        fuzz::Hold(second.files.files["found.ini"] == first.files.files["found.ini"], "a saved file reads as it was");

    second.records.BuildLoggerSettings(1);
    return 0;
}
