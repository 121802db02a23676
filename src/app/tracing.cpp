#include "app/tracing.h"

#include "servers/base64.h"

#include <cstdlib>
#include <utility>

namespace harvelop
{

std::string TraceOfEnvironment()
{
    const char* path = std::getenv("HARVELOP_TRACE");
    return path ? path : "";
}

Tracing::Parts::Parts(const Platform& outside, std::function<void(const std::string&)> complain)
    : file(std::move(complain)),
      trace(outside.pump, file),
      serial(outside.serial, trace),
      sockets(outside.sockets, trace),
      dialogs(outside.dialogs, trace.Secrets)
{
}

Tracing::Tracing(const std::string& path, const std::string& program, const Platform& outside,
                 std::function<void(const std::string&)> complain)
    : m_outside(outside)
{
    if (path.empty())
        return;
    m_parts.emplace(outside, std::move(complain));
    m_parts->file.Open(path, program);
}

Platform Tracing::Inside()
{
    if (!m_parts)
        return m_outside;
    return {m_outside.pump,  m_parts->serial, m_parts->sockets, m_parts->dialogs,
            m_outside.files, m_outside.store, m_outside.desktop};
}

void Tracing::Watch(const Program& program)
{
    if (!m_parts)
        return;
    m_parts->trace.Gather = [&secrets = m_parts->trace.Secrets, &program] {
        for (const LoggerRecord& record : program.tables.records)
            secrets.Learn(record.LoggerPassword);
        secrets.Learn(program.options.FTPPassword);
        secrets.Learn(program.options.SMTPPassword);
        secrets.Learn(EncodeBase64(program.options.SMTPPassword)); // as a mail server gets it
    };
}

} // namespace harvelop
