#include "trace/trace_secrets.h"

#include <utility>

namespace harvelop
{

namespace
{

constexpr size_t ShortestAnywhere = 4;
constexpr size_t LongestOpen = 4096; // what is undecided for longer is hidden

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isOfWord(char c)
{
    const char small = lower(c);
    return (small >= 'a' && small <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) > '~';
}

bool isLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

} // namespace

void TraceSecrets::Learn(std::string_view secret)
{
    if (m_given.contains(secret))
        return;
    m_given.emplace(secret);
    std::string plain;
    for (const char c : secret)
        if (!IsControl(c))
            plain += lower(c);
    if (!plain.empty())
        m_plain.push_back(plain);
}

TraceSecrets::Match TraceSecrets::LookAt(std::string_view text, bool wordBegins, bool lineEnds) const
{
    Match best = Match::None;
    for (const std::string& secret : m_plain) {
        const bool lastWord = secret.size() < ShortestAnywhere;
        if (lastWord && !wordBegins)
            continue;
        size_t same = 0;
        bool differs = false;
        for (const char c : text) {
            if (IsControl(c))
                continue;
            differs = same < secret.size() ? lower(c) != secret[same] : lastWord;
            if (differs || (same == secret.size() && !lastWord))
                break;
            ++same;
        }
        if (differs)
            continue;
        const bool isWhole =
            same == secret.size() ? !lastWord || lineEnds : lineEnds && wordBegins && same >= ShortestAnywhere;
        if (isWhole)
            return Match::Whole;
        best = Match::Beginning;
    }
    return best;
}

void SecretFilter::Restart()
{
    m_before = '\0';
    m_hiding = false;
}

std::string SecretFilter::Take(std::string_view bytes)
{
    std::string verdicts;
    for (const char c : bytes)
        takeCharacter(c, verdicts);
    return verdicts;
}

std::string SecretFilter::GiveUp()
{
    m_hiding = m_hiding || !m_open.empty();
    return std::string(std::exchange(m_open, {}).size(), Hidden);
}

void SecretFilter::takeCharacter(char c, std::string& verdicts)
{
    if (isLineEnd(c)) {
        settle(true, verdicts);
        verdicts += Shown;
        m_hiding = false;
        m_before = '\0';
    } else if (m_hiding) {
        verdicts += Hidden;
    } else {
        m_open += c;
        settle(false, verdicts);
        if (m_open.size() > LongestOpen)
            verdicts += GiveUp();
    }
}

void SecretFilter::settle(bool lineEnds, std::string& verdicts)
{
    size_t decided = 0;
    while (decided < m_open.size()) {
        const char first = m_open[decided];
        if (!IsControl(first)) {
            const bool wordBegins = !isOfWord(m_before);
            const auto rest = std::string_view(m_open).substr(decided);
            const auto match = m_secrets.LookAt(rest, wordBegins, lineEnds);
            if (match == TraceSecrets::Match::Beginning && !lineEnds)
                break;
            if (match == TraceSecrets::Match::Whole) {
                verdicts.append(m_open.size() - decided, Hidden);
                m_open.clear();
                m_hiding = true;
                return;
            }
            m_before = first;
        }
        verdicts += Shown;
        ++decided;
    }
    m_open.erase(0, decided);
}

} // namespace harvelop
