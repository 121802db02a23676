#include "links/receive_window.h"

#include <utility>

namespace harvelop
{

void ReceiveWindow::Append(std::string_view text)
{
    // What would overflow is never stored, so that a flood does not grow the text for a moment.
    if (m_text.size() + text.size() >= OverflowLength)
        overflow();
    else
        m_text += text;
}

void ReceiveWindow::Clear()
{
    m_text.clear();
    ++m_generation;
}

void ReceiveWindow::Set(std::string text)
{
    ++m_generation;
    if (text.size() >= OverflowLength)
        overflow();
    else
        m_text = std::move(text);
}

void ReceiveWindow::overflow()
{
    WindowOverflowed = true;
    ++WindowClearCount;
    Clear();
}

} // namespace harvelop
