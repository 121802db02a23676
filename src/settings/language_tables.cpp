#include "settings/language_tables.h"

#include "settings/message_texts.h"

namespace harvelop
{

void LanguageTables::LoadLanguageFile()
{
    const std::string path = m_state.AppPath + m_options.Language + ".txt";
    const FileText file = m_files.Read(path);
    if (file.state != FileState::Read) {
        m_dialogs.Show({"The file " + path + " could not be found.     ", " Harvel", BoxIcon::Critical});
        m_end.EndProgram();
        return;
    }
    m_entries = EntriesOf(file.text);
}

const LanguageEntry* LanguageTables::entry(int number) const
{
    return number >= 1 && number <= LangEntries ? &m_entries[static_cast<size_t>(number - 1)] : nullptr;
}

std::optional<std::string> LanguageTables::LangText(int number) const
{
    const LanguageEntry* found = entry(number);
    return found ? std::optional<std::string>(found->text) : std::nullopt;
}

std::string LanguageTables::LangFontName(int number) const
{
    const LanguageEntry* found = entry(number);
    return found ? found->fontName : std::string();
}

std::int16_t LanguageTables::LangFontSize(int number) const
{
    const LanguageEntry* found = entry(number);
    return found ? found->fontSize : std::int16_t{0};
}

std::string LanguageTables::Text(int number) const
{
    return LangActive ? LangText(number).value_or("") : std::string(EnglishText(number));
}

void ApplyLangFont(const LanguageTables& language, CaptionedControl& control, const LangPieces& pieces)
{
    std::string caption;
    for (const auto& [number, suffix] : pieces)
        if (number != 0)
            caption += language.LangText(number).value_or("") + suffix;
    if (pieces.empty())
        return;
    control.SetCaption(caption);
    control.SetFontName(language.LangFontName(pieces.front().first));
    control.SetFontSize(language.LangFontSize(pieces.front().first));
}

} // namespace harvelop
