// The language tables: the numbered texts, in the user's language where a language file is in use.
#pragma once

#include "core/program_end.h"
#include "core/program_state.h"
#include "platform/data_files.h"
#include "platform/dialogs.h"
#include "settings/language_lines.h"
#include "settings/options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace harvelop
{

class LanguageTables
{
public:
    LanguageTables(const Options& options, const ProgramState& state, DataFiles& files, Dialogs& dialogs,
                   ProgramEnd& end)
        : m_options(options), m_state(state), m_files(files), m_dialogs(dialogs), m_end(end)
    {
    }

    bool LangActive = false; // a language file was asked for: its texts take the place of the English ones

    // Reads `Language` + ".txt" from the application directory. A file that can't be read is told in a box and ends
    // the program; a malformed line is lost alone.
    void LoadLanguageFile();

    // Plain look-ups; none for a number outside 1 to 1000. A number that the file does not hold is empty or 0.
    std::optional<std::string> LangText(int number) const;
    std::string LangFontName(int number) const;
    std::int16_t LangFontSize(int number) const;

    // What the user sees for a number: the language file's text if one is in use (empty where it has none), otherwise
    // the English words. Empty outside 1 to 1000.
    std::string Text(int number) const;

private:
    const LanguageEntry* entry(int number) const; // nullptr outside 1 to 1000

    const Options& m_options;
    const ProgramState& m_state;
    DataFiles& m_files;
    Dialogs& m_dialogs;
    ProgramEnd& m_end;
    LanguageEntries m_entries;
};

// A control that may have a caption and a font; each setter gives false where it has none, which is passed over.
class CaptionedControl
{
public:
    virtual ~CaptionedControl() = default;
    virtual bool SetCaption(const std::string& caption) = 0;
    virtual bool SetFontName(const std::string& name) = 0; // an empty name keeps the font
    virtual bool SetFontSize(int points) = 0;              // 0 keeps the size
};

// Sets the caption to the texts of up to six numbers, each followed by its suffix; a number of 0 is passed over. The
// font is that of the first number. Texts and fonts are the language file's: call it only while one is in use.
using LangPieces = std::vector<std::pair<int, std::string>>;
void ApplyLangFont(const LanguageTables& language, CaptionedControl& control, const LangPieces& pieces);

} // namespace harvelop
