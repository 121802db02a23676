#include "settings/language_check.h"

#include "core/text_lines.h"
#include "core/utf8.h"
#include "settings/language_lines.h"
#include "settings/language_template.h"
#include "settings/message_texts.h"

#include <algorithm>
#include <map>

namespace harvelop
{

namespace
{

constexpr int SmallestSize = 5; // points; 0 stands for the size of the desktop
constexpr int LargestSize = 36;

std::string quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

struct Mnemonics {
    int keys = 0;    // letters with a & before them
    int strayed = 0; // & with nothing, a blank or a sign behind them
};

// Two of them in a row stand for the sign itself.
Mnemonics mnemonicsIn(std::string_view text)
{
    Mnemonics found;
    for (size_t i = text.find('&'); i != std::string_view::npos; i = text.find('&', i + 1)) {
        const auto next =
            i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : static_cast<unsigned char>(' ');
        if (next == '&')
            ++i;
        else if (next >= 0x80 ||
                 std::string_view("0123456789").find(static_cast<char>(next)) != std::string_view::npos ||
                 (next >= 'A' && next <= 'Z') || (next >= 'a' && next <= 'z'))
            ++found.keys;
        else
            ++found.strayed;
    }
    return found;
}

class LanguageChecker
{
public:
    explicit LanguageChecker(std::string_view text) : m_text(text) {}

    std::vector<LanguageFinding> Run()
    {
        m_unreadFrom = ReadLanguageLines(m_text, [this](const LanguageLine& line) {
            for (size_t font = 0; font < LangFonts; ++font)
                m_fontNamed[font] = m_fontNamed[font] || (line.fonts[font] && !line.fontName.empty());
        });
        ReadLanguageLines(m_text, [this](const LanguageLine& line) {
            if (!stopped())
                checkLine(line);
        });
        const bool wasStopped = stopped();
        if (m_unreadFrom != 0)
            m_findings.push_back({m_unreadFrom, "nothing is read from here on: " + std::to_string(MaxMessageLines) +
                                                    " lines of texts are the most"});
        if (wasStopped)
            return m_findings;
        for (const int number : m_numbers)
            if (!m_first.contains(number))
                m_findings.push_back(
                    {0, "number " + std::to_string(number) + " is missing: " + quoted(EnglishText(number))});
        return m_findings;
    }

private:
    void add(int line, std::string text)
    {
        if (m_findings.size() < MostFindings)
            m_findings.push_back({line, std::move(text)});
        else if (!stopped())
            m_findings.push_back({line, StoppedHere});
    }
    bool stopped() const { return m_findings.size() > MostFindings; }

    void checkLine(const LanguageLine& line)
    {
        if (const auto byte = FirstBadByte(line.text))
            add(line.line, "no UTF-8 from byte " + std::to_string(*byte) + " on");
        const char* end = line.text.data() + line.text.size();
        const char* last = m_text.data() + m_text.size();
        if (end < last && *end == '\r' && (end + 1 == last || end[1] != '\n'))
            add(line.line, "the line ends in a lone carriage return");
        const bool namesFont = std::ranges::find(line.fonts, true) != line.fonts.end();
        if (namesFont)
            checkFontLine(line);
        if (line.message)
            checkMessage(line.line, line.text, *line.message);
        else if (!namesFont && line.line != m_unreadFrom)
            checkPassedOver(line);
    }

    void checkFontLine(const LanguageLine& line)
    {
        for (size_t font = 0; font < LangFonts; ++font) {
            if (!line.fonts[font])
                continue;
            const std::string key = "Font" + std::to_string(font + 1);
            if (!line.text.starts_with(key + "="))
                add(line.line,
                    key + "= stands behind the first column: its name would be read as " + quoted(line.fontName));
            if (m_fontLine[font] != 0)
                add(line.line,
                    key + " is named again, first in line " + std::to_string(m_fontLine[font]) + ": this name holds");
            else
                m_fontLine[font] = line.line;
        }
        if (line.fontName.empty())
            add(line.line, "the font has no name");
        if (line.text.size() > FontNameStart + FontNameLength)
            add(line.line,
                "the name is cut after " + std::to_string(FontNameLength) + " bytes: " + quoted(line.fontName));
    }

    // A line that is neither a font nor a text: all but blank lines and comments are told.
    void checkPassedOver(const LanguageLine& line)
    {
        const size_t start = line.text.find_first_not_of(" \t");
        if (start == std::string_view::npos || line.text[start] == '#')
            return;
        if (Holds(line.text, "#"))
            add(line.line, "passed over: the number sign makes a comment of the whole line");
        else if (!Holds(line.text, ":"))
            add(line.line, "passed over: neither a font, a text nor a comment");
        else if (!line.looksLikeMessage)
            add(line.line, "passed over: shorter than " + std::to_string(ShortestMessageLine) + " characters");
        else if (std::ranges::count(line.text, ':') < 3)
            add(line.line, "passed over: a text needs three colons, number:font:size:text");
        else
            add(line.line, "passed over: " + quoted(line.text.substr(start, line.text.find(':') - start)) +
                               " is no whole number from 1 to " + std::to_string(LangEntries));
    }

    void checkMessage(int line, std::string_view whole, const LanguageMessage& message)
    {
        const std::string number = std::to_string(message.number);
        const auto [first, isFirst] = m_first.try_emplace(message.number, line);
        if (!isFirst)
            add(line, "number " + number + " is here again, first in line " + std::to_string(first->second) +
                          ": its text and size go on where that ends");
        if (!std::ranges::binary_search(m_numbers, message.number)) {
            add(line, "the program uses no number " + number);
            return;
        }
        checkFont(line, message.font);
        checkSize(line, message.size);
        if (Holds(whole, "\t"))
            add(line, "tabs are dropped");
        if (whole.ends_with(' '))
            add(line, "blanks at the end are dropped; a no-break space (U+00A0) would stay");
        checkText(line, message);
    }

    void checkFont(int line, const std::string& digit)
    {
        const auto font = FontOf(digit);
        if (!font)
            add(line, digit.empty() ? "the font is missing" : "font " + quoted(digit) + " is none of 1 to 5");
        else if (!m_fontNamed[*font])
            add(line, "no line names Font" + digit);
    }

    void checkSize(int line, const std::string& size)
    {
        if (size.empty())
            return add(line, "the size is missing");
        if (size.find_first_not_of("0123456789") != std::string::npos)
            return add(line, "size " + quoted(size) + " holds more than digits: they are dropped");
        constexpr size_t MostDigits = 4; // what is longer is out of range anyhow
        const int points = size.size() > MostDigits ? LargestSize + 1 : std::stoi(size);
        if (points != 0 && (points < SmallestSize || points > LargestSize))
            add(line, "size " + size + " is not from " + std::to_string(SmallestSize) + " to " +
                          std::to_string(LargestSize) + " points");
    }

    void checkText(int line, const LanguageMessage& message)
    {
        const std::string words = WordsForFile(message.number);
        const std::string& text = message.text;
        const TextJoint* joint = JointOf(message.number);
        const auto startsBlank = [](std::string_view t) { return t.starts_with(' ') || t.starts_with(NoBreakSpace); };
        if (text.find_first_not_of(' ') == std::string::npos && !words.empty())
            return add(line, "the text is empty; in English it is " + quoted(words));
        if (joint && joint->blankBefore && !startsBlank(text))
            add(line, "a blank is wanted before the text: other words stand right before it");
        if (joint && joint->blankBehind && !text.ends_with(NoBreakSpace))
            add(line, "a no-break space (U+00A0) is wanted behind the text: other words follow at once");
        const Mnemonics found = mnemonicsIn(text);
        const bool wanted = mnemonicsIn(words).keys > 0;
        if (found.strayed > 0)
            add(line, "a & stands before no letter");
        if (wanted && found.keys != 1)
            add(line, found.keys == 0 ? "no letter has a & before it: the control gets no key"
                                      : "more than one letter has a & before it");
        if (!wanted && found.keys > 0)
            add(line, "a & stands in a text that has no key");
    }

    std::string_view m_text;
    int m_unreadFrom = 0; // the line at which the reading stops
    const std::vector<int> m_numbers = TextNumbers();
    std::array<bool, LangFonts> m_fontNamed = {};
    std::array<int, LangFonts> m_fontLine = {}; // the line that names each font first
    std::map<int, int> m_first;                 // by number, the line that holds it first
    std::vector<LanguageFinding> m_findings;
};

} // namespace

std::vector<LanguageFinding> CheckLanguage(std::string_view text)
{
    return LanguageChecker(text).Run();
}

} // namespace harvelop
