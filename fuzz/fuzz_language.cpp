// Any bytes as a language file: reading must not fail, nor make up text that the file does not hold.
#include "hold.h"
#include "settings/language_tables.h"
#include "support/memory_files.h"

using namespace harvelop;

namespace
{

struct NoDialogs : Dialogs {
    BoxAnswer Show(const Box&) override
    {
        fuzz::Hold(false, "a file that is there is never told to be missing");
        return BoxAnswer::Ok;
    }
    std::string AskPassword(const std::string&, const std::string&) override { return {}; }
    std::string BrowseFolder(const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const std::string&, const std::string&) override { return {}; }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    Options options;
    ProgramState state;
    test::MemoryFiles files;
    NoDialogs dialogs;
    ProgramEnd end;
    LanguageTables language(options, state, files, dialogs, end);
    files.files[".txt"] = std::string(reinterpret_cast<const char*>(data), size);
    language.LangActive = true;
    language.LoadLanguageFile();

    fuzz::Hold(!end.Ended(), "the program goes on");
    size_t characters = 0;
    for (int number = 1; number <= LangEntries; ++number) {
        const auto text = language.LangText(number);
        fuzz::Hold(text && *text == language.Text(number), "every number has an entry");
        characters += text->size();
        fuzz::Hold(text->find_first_of("\r\n\t#") == std::string::npos, "line ends, tabs and comments are no text");
        fuzz::Hold(language.LangFontName(number).size() <= 30, "font names are short");
        fuzz::Hold(language.LangFontSize(number) >= 0, "sizes are sizes");
    }
    fuzz::Hold(characters <= size, "all text comes from the file");
    return 0;
}
