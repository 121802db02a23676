#include "loading/flash_texts.h"

#include "core/text_lines.h"

namespace harvelop
{

std::string FlashCaution(const LanguageTables& language, bool kr4, const std::string& logger, const std::string& file)
{
    const int first = kr4 ? 654 : 648;
    return language.Text(first) + " " + logger + ". " + language.Text(first + 1) + ".\r\r" + language.Text(first + 2) +
           " : \r\r" + file + "\r\r" + language.Text(first + 3) + ".";
}

std::string TooLargeText(const LanguageTables& language, const std::string& file)
{
    return language.Text(643) + ".     \rThe size of " + file + " " + language.Text(644) + ".     ";
}

std::optional<std::string> JobNameOf(std::string_view line)
{
    if (!Holds(line, "BEGIN\""))
        return std::nullopt;
    std::string name;
    for (size_t open = line.find('"'); open != std::string_view::npos;) {
        const size_t close = line.find('"', open + 1);
        name += line.substr(open + 1, close - open - 1);
        open = close == std::string_view::npos ? close : line.find('"', close + 1);
    }
    return name;
}

bool NeedsFlashOnReset(std::string_view version)
{
    return version.empty() || version[0] < '5' || version[0] > '9';
}

} // namespace harvelop
