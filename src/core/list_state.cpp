#include "core/list_state.h"

#include <algorithm>

namespace harvelop
{

void ListState::changed()
{
    if (Changed)
        Changed();
}

void ListState::Clear()
{
    m_lines.clear();
    m_text.clear();
    m_selected = -1;
    changed();
}

void ListState::Insert(int position, const std::string& line)
{
    if (position < 0 || position > Count())
        return;
    m_lines.insert(m_lines.begin() + position, line);
    if (m_selected >= position)
        ++m_selected;
    changed();
}

void ListState::RemoveAt(int position)
{
    if (position < 0 || position >= Count())
        return;
    m_lines.erase(m_lines.begin() + position);
    if (m_selected == position) {
        m_selected = -1;
        m_text.clear();
    } else if (m_selected > position) {
        --m_selected;
    }
    changed();
}

void ListState::Select(int index)
{
    if (index < -1 || index >= Count())
        return;
    m_selected = index;
    m_text = index < 0 ? std::string() : m_lines[static_cast<size_t>(index)];
    changed();
}

void ListState::SetText(const std::string& text)
{
    const auto found = std::find(m_lines.begin(), m_lines.end(), text);
    m_selected = found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
    m_text = text;
    changed();
}

} // namespace harvelop
