#include "platform/qt/desktop_entry.h"

#include <QString>

#include <algorithm>
#include <string_view>

namespace harvelop
{

namespace
{

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

// What a value can hold after its escaping.
bool Expressible(const std::string& text)
{
    constexpr std::string_view Escapable = "\n\r\t";
    const bool plain = std::all_of(
        text.begin(), text.end(), [&](char c) { return !IsControl(c) || Escapable.find(c) != std::string_view::npos; });
    return plain && QString::fromStdString(text).toStdString() == text;
}

// The escaping that every value of the format gets.
std::string EscapeValue(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '\\':
            escaped += "\\\\";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\t':
            escaped += "\\t";
            break;
        case ' ': // at the front it would be taken for a mere gap behind the "="
            escaped += escaped.empty() ? "\\s" : " ";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

// A name that can be shown everywhere: whole characters, none of which controls anything.
std::string Showable(const std::string& name, char substitute)
{
    std::string text = QString::fromStdString(name).toStdString();
    std::replace_if(text.begin(), text.end(), IsControl, substitute);
    return text;
}

std::string NameLine(const std::string& shortcutName)
{
    return "\nName=" + EscapeValue(Showable(shortcutName, ' ')) + "\n";
}

} // namespace

std::string QuoteExecArgument(const std::string& argument)
{
    constexpr std::string_view Reserved = " \t\n\r\"'\\><~|&;$*?#()`";
    constexpr std::string_view EscapedInQuotes = "\"`$\\";
    const bool quoted = argument.empty() || argument.find_first_of(Reserved) != std::string::npos;
    std::string text = quoted ? "\"" : "";
    for (const char c : argument) {
        if (EscapedInQuotes.find(c) != std::string_view::npos)
            text += '\\';
        else if (c == '%') // otherwise it would begin a field code
            text += '%';
        text += c;
    }
    return quoted ? text + "\"" : text;
}

std::optional<std::string> DesktopEntryText(const Shortcut& shortcut)
{
    // Some desktops refuse a program whose own path holds a "%", however it is written; as an argument it passes.
    std::string command = shortcut.program.find('%') == std::string::npos ? "" : "/usr/bin/env ";
    command += QuoteExecArgument(shortcut.program);
    for (const std::string& argument : shortcut.arguments)
        command += " " + QuoteExecArgument(argument);
    if (!Expressible(command) || !Expressible(shortcut.workingDirectory))
        return std::nullopt;
    std::string text = "[Desktop Entry]\nType=Application" + NameLine(shortcut.name);
    text += "Exec=" + EscapeValue(command);
    if (!shortcut.workingDirectory.empty())
        text += "\nPath=" + EscapeValue(shortcut.workingDirectory);
    return text + "\nTerminal=false\n";
}

bool HasName(const std::string& entryText, const std::string& shortcutName)
{
    return entryText.find(NameLine(shortcutName)) != std::string::npos;
}

std::string DesktopFileName(const std::string& shortcutName, int number)
{
    constexpr size_t LongestStem = 230; // leaves room for the ending, and for that of a file in the making
    std::string name = Showable(shortcutName, '_');
    std::replace(name.begin(), name.end(), '/', '_');
    if (name.empty() || name.front() == '.') // would be hidden
        name.insert(0, "_");
    if (name.size() > LongestStem) {
        const auto continues = [&](size_t at) { return (static_cast<unsigned char>(name[at]) & 0xC0) == 0x80; };
        size_t end = LongestStem;
        while (end > 1 && continues(end))
            --end;
        name.resize(end);
    }
    return (number > 1 ? name + "_" + std::to_string(number) : name) + ".desktop";
}

} // namespace harvelop
