// The terminal's copy of what arrives.
#pragma once

#include "core/forms.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace harvelop
{

// Stands for the whole text since it was last emptied, but holds only what no terminal has shown yet: a pane gets what
// is new, so that showing costs the same however much is shown already.
class TerminalText
{
public:
    void Append(std::string_view text) { m_unseen += text; }

    // A pane hears of it when it is next brought up to date.
    void clear()
    {
        m_unseen.clear();
        m_emptied = true;
    }

    // Keeps only so many characters from the end.
    void KeepEnd(std::size_t length) { m_unseen.erase(0, m_unseen.size() - std::min(length, m_unseen.size())); }

    // Brings a pane up to date.
    void ShowOn(TerminalForm& terminal)
    {
        if (m_emptied)
            terminal.ClearReceived();
        m_emptied = false;
        terminal.Append(m_unseen);
        m_unseen.clear();
    }

    bool empty() const { return m_unseen.empty(); }
    const std::string& Unseen() const { return m_unseen; }

private:
    std::string m_unseen;
    bool m_emptied = false;
};

} // namespace harvelop
