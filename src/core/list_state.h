// The state of a list or drop-down: its lines and the chosen one.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace harvelop
{

// The heart fills and reads it; a form, if there is one, shows it and writes the user's choice back. An index outside
// the lines changes nothing.
class ListState
{
public:
    void Clear();                                       // no lines, nothing chosen, empty text
    void Insert(int position, const std::string& line); // the chosen line stays chosen
    void Add(const std::string& line) { Insert(Count(), line); }
    void RemoveAt(int position);           // removing the chosen line leaves nothing chosen
    void Select(int index);                // -1: nothing chosen, empty text
    void SetText(const std::string& text); // selects the line with this text, or shows the text alone

    int Count() const { return static_cast<int>(m_lines.size()); }
    int Selected() const { return m_selected; }        // from 0; -1 if nothing is chosen
    const std::string& Text() const { return m_text; } // of the chosen line, or what SetText gave
    const std::vector<std::string>& Lines() const { return m_lines; }

    std::function<void()> Changed; // after each change above

private:
    void changed();

    std::vector<std::string> m_lines;
    std::string m_text;
    int m_selected = -1;
};

} // namespace harvelop
