// Any bytes as `options.ini`: reading must not fail, and what is then saved must say the same when it is read again.
// Any bytes as a value: they stay in its line.
#include "core/text_lines.h"
#include "hold.h"
#include "settings/option_keys.h"
#include "settings/options_store.h"
#include "support/memory_files.h"

#include <algorithm>

using namespace harvelop;

namespace
{

struct Reader {
    explicit Reader(const std::string& text)
    {
        files.files["options.ini"] = text;
        store.ReadAllOptions();
        store.LoadTerminalGeometry();
    }
    std::string saved()
    {
        store.SaveOptions();
        return files.files["options.ini"];
    }

    Options options;
    ProgramState state;
    test::MemoryFiles files;
    OptionsStore store{options, state, files};
};

// A value in which another key's name stands is found under that key, so it may wander from key to key.
bool holdsAKey(const Options& options)
{
    const auto keys = SavedOptionKeys();
    return std::any_of(keys.begin(), keys.end(), [&](const OptionKey& row) {
        const std::string value = OptionText(options, row.written);
        return std::any_of(keys.begin(), keys.end(),
                           [&](const OptionKey& other) { return HoldsIgnoringCase(value, other.key); });
    });
}

void checkShape(const std::string& saved)
{
    LineReader lines(saved);
    std::string_view line;
    for (const OptionKey& row : SavedOptionKeys()) {
        fuzz::Hold(lines.Next(line), "a line for each key");
        fuzz::Hold(line.substr(0, row.key.size()) == row.key && line.substr(row.key.size(), 1) == "=", "key=value");
    }
    fuzz::Hold(!lines.Next(line), "no line more");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    Reader first(text);
    const std::string saved = first.saved();
    checkShape(saved);
    Reader second(saved);
    fuzz::Hold(second.saved() == saved || holdsAKey(first.options), "a saved file reads as it was");
    second.store.NextIconKey();
    second.options.SMTPPassword = text; // as pasted into its field
    checkShape(second.saved());
    return 0;
}
