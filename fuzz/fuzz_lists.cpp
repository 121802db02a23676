// Any bytes as a logger's delivery lists: reading must not fail, what is then saved holds only lines of schedules that
// the logger has, and says the same when it is read again.
#include "core/text_lines.h"
#include "hold.h"
#include "settings/delivery_lists.h"
#include "support/memory_files.h"

using namespace harvelop;

namespace
{

struct Reader {
    Reader(const std::string& text, const char* model)
    {
        state.CurrentLogger = state.ChosenLogger = 1;
        loggers.Record(1)->LoggerModel = model;
        files.files[Path] = text;
        fuzz::Hold(lists.ReadDeliveryList(""), "a file that is there is read");
    }
    std::string saved()
    {
        fuzz::Hold(lists.WriteDeliveryList(), "lists can be saved");
        return files.files[Path];
    }

    static constexpr const char* Path = "emaillist.ini";
    ProgramState state;
    LoggerTables loggers;
    test::MemoryFiles files;
    DeliveryTables tables;
    DeliveryLists lists{tables, state, loggers, files};
};

void check(const std::string& text, const char* model)
{
    Reader first(text, model);
    const std::string saved = first.saved();
    LineReader lines(saved);
    std::string_view line;
    while (lines.Next(line)) {
        fuzz::Hold(line.size() > 2 && Holds(ScheduleKeysOf(model), line.substr(0, 1)), "a schedule's key, and a value");
        fuzz::Hold(line[1] == ';' || line[1] == ':', "key;value or key:value");
        fuzz::Hold(Holds(text, line), "all lines come from the file");
    }
    Reader second(saved, model);
    fuzz::Hold(second.saved() == saved, "a saved file reads as it was");
    second.tables.Lists(1)->at(0).at(0) = text; // as never typed: it stays in its line
    second.tables.ListDescriptions.at(0) = text;
    Reader third(second.saved(), model);
    fuzz::Hold(third.tables.ListDescriptions.at(0) == OneLine(text), "a value stays in its line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    check(text, "KR40");
    check(text, "KR200");
    return 0;
}
