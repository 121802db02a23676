// The passwords that must not stand in a trace, and the filter that keeps them out of one stream of characters.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// Compared without regard to ASCII case and to control characters, which a line may throw in anywhere. One of fewer
// than four characters would be found in every other line: it counts only as the last word of a line. So does the
// beginning of a longer one, of four characters or more: somebody has mistyped it.
class TraceSecrets
{
public:
    enum class Match { None, Beginning, Whole };

    void Learn(std::string_view secret); // an empty or known one changes nothing

    // What `text` is from its first character on: a whole secret, maybe with more behind it, or the beginning of one.
    // `wordBegins`: no letter or digit stands before it; `lineEnds`: nothing can follow.
    Match LookAt(std::string_view text, bool wordBegins, bool lineEnds) const;

private:
    std::set<std::string, std::less<>> m_given;
    std::vector<std::string> m_plain; // as they are compared
};

// Characters that do not count when secrets are compared.
inline bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

// Tells of each character of one direction whether it may be shown. From the beginning of a secret all is hidden to the
// end of the line, so that neither its length nor what is left of the line gives it away. A character that may yet turn
// out to begin a secret is not decided on before the next ones are known.
class SecretFilter
{
public:
    static constexpr char Shown = '.';
    static constexpr char Hidden = '*';

    explicit SecretFilter(const TraceSecrets& secrets) : m_secrets(secrets) {}

    // Another link begins, and with it a line. Nothing may be undecided.
    void Restart();

    // What has been decided on by these characters: one verdict each, in their order, beginning with those left over.
    std::string Take(std::string_view bytes);

    // Waits no longer: hides what is undecided, and the rest of its line.
    std::string GiveUp();

private:
    void takeCharacter(char c, std::string& verdicts);
    void settle(bool lineEnds, std::string& verdicts);

    const TraceSecrets& m_secrets;
    std::string m_open;    // not decided on yet
    char m_before = '\0';  // the last character shown of the line; NUL: none
    bool m_hiding = false; // until the line ends
};

} // namespace harvelop
