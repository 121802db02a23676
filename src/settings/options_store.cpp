#include "settings/options_store.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "settings/option_keys.h"
#include "settings/replace_file.h"

namespace harvelop
{

namespace
{

// A longer line that names a key but has no "=" ends the look-up: that is meant.
constexpr size_t LongestLineWithoutValue = 300;

constexpr float StandardTerminalWidth = 6345; // twips
constexpr float StandardTerminalHeight = 5880;

} // namespace

std::optional<OptionLine> FindOptionLine(std::string_view text, std::string_view key)
{
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; lines.Next(line); ++number) {
        if (!HoldsIgnoringCase(line, key))
            continue;
        const size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            return OptionLine{number, std::string(line.substr(0, equals)), std::string(line.substr(equals + 1))};
        if (line.size() > LongestLineWithoutValue)
            break;
    }
    return std::nullopt;
}

bool IsPasswordLine(const OptionLine& line)
{
    return HoldsIgnoringCase(line.key, "Password");
}

std::string OptionsStore::path() const
{
    return m_state.AppPath + "options.ini";
}

bool OptionsStore::writeDefaultOptions()
{
    std::string text;
    for (const std::string_view line : DefaultOptionLines())
        text.append(line).append(CrLf);
    return m_files.Replace(path(), text);
}

std::string OptionsStore::ReadOption(const std::string& section, const std::string& key)
{
    const FileText file = m_files.Read(path());
    if (file.state == FileState::NotFound && !m_notCreated) {
        if (FindComPorts)
            FindComPorts();
        m_notCreated = !writeDefaultOptions();
        return {};
    }
    if (file.state != FileState::Read)
        return {};

    std::string value = FindOptionLine(file.text, key).value_or(OptionLine()).value;
    if (const OptionKey* known = FindOptionKey(section, key)) {
        const bool repaired = value.empty() && !known->insteadOfEmpty.empty();
        const std::string stored = repaired ? std::string(known->insteadOfEmpty) : value;
        AssignOption(m_options, known->variable, stored);
        if (repaired && known->repairIsReturned)
            value = stored;
    }
    return value;
}

void OptionsStore::ReadAllOptions()
{
    for (const OptionRequest& request : StartOptionRequests())
        ReadOption(std::string(request.section), std::string(request.key));
}

void OptionsStore::LoadTerminalGeometry()
{
    for (const OptionRequest& request : TerminalOptionRequests())
        ReadOption(std::string(request.section), std::string(request.key));
    if (m_options.TerminalWidth == 0)
        m_options.TerminalWidth = StandardTerminalWidth;
    if (m_options.TerminalHeight == 0)
        m_options.TerminalHeight = StandardTerminalHeight;
}

bool OptionsStore::SaveOptions()
{
    std::string text;
    for (const OptionKey& row : SavedOptionKeys())
        text.append(row.key).append("=").append(OneLine(OptionText(m_options, row.written))).append(CrLf);
    const bool written = ReplaceFile(m_files, path(), text);
    m_notCreated = m_notCreated && !written;
    if (SaveFoundLoggers)
        SaveFoundLoggers();
    return written;
}

std::optional<std::string> OptionsStore::NextIconKey()
{
    ReadOption("Options", "Icons");
    const auto counter = ToDouble(m_options.Icons);
    if (!counter)
        return std::nullopt;
    m_options.Icons = NumberText(*counter + 1);
    return "::" + m_options.Icons;
}

} // namespace harvelop
