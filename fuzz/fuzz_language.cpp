// Any bytes as a language file: reading must not fail, nor make up text that the file does not hold.
#include "hold.h"
#include "settings/language_check.h"
#include "settings/language_tables.h"
#include "settings/language_template.h"
#include "settings/message_texts.h"
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
    std::string OpenFile(const std::string&, const std::string&, const std::string&) override { return {}; }
};

} // namespace

namespace
{

// What the check passes is what it says: each number has its text, in a font that is named.
void holdToTheCheck(const std::string& text, const LanguageTables& language)
{
    const auto findings = CheckLanguage(text);
    int last = 0;
    bool missing = false;
    for (const LanguageFinding& finding : findings) {
        fuzz::Hold(finding.line == 0 || (finding.line >= last && !missing), "findings stand in the order of the lines");
        fuzz::Hold(!finding.text.empty(), "a finding says something");
        last = finding.line;
        missing = finding.line == 0;
    }
    if (!findings.empty())
        return;
    for (const int number : TextNumbers()) {
        fuzz::Hold(language.LangText(number) != "" || WordsForFile(number).empty(), "no text is missing");
        fuzz::Hold(!language.LangFontName(number).empty(), "no font is missing");
    }
}

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
    holdToTheCheck(files.files[".txt"], language);
    return 0;
}
