#include "trace/link_trace.h"

namespace harvelop
{

TracedLink::TracedLink(LinkTrace& trace) : m_trace(trace), m_mask(trace.Secrets)
{
    m_mask.Write = [&trace](const TraceEntry& entry) { trace.Write(entry); };
}

void TracedLink::Begin(const std::string& name, PasswordWatch::Line line)
{
    m_mask.Flush();
    m_mask.Opened(line);
    m_name = name;
}

void TracedLink::Note(const std::string& kind, const std::string& text)
{
    m_mask.Take({m_trace.Now(), m_name, kind, text});
}

void TracedLink::Pass(const std::string& kind, std::string_view characters)
{
    if (characters.empty())
        return;
    if (m_trace.Gather)
        m_trace.Gather();
    m_mask.Take({m_trace.Now(), m_name, kind, std::string(characters)});
}

void TracedLink::End(const std::string& kind, const std::string& text)
{
    Note(kind, text);
    m_mask.Flush();
}

} // namespace harvelop
