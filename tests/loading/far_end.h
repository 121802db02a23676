// A logger at the far end of a fake line that does nothing but answer by a table.
#pragma once

#include "simulator/report_texts.h"
#include "simulator/simulated_device.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace harvelop::test
{

// Takes lines that end in CR LF, as the program sends them, and keeps what stands between, blank lines too. A line
// without a row in the table is taken in silence.
class FarEnd : public SimulatedDevice
{
public:
    struct Line {
        double ms; // when it arrived
        std::string text;
    };
    struct Reply {
        std::string text; // all of it, line ends too
        double afterMs = 10;
    };

    // The reply to each such line, or those to the first, the second, ...; the last one stands for all that follow.
    void Answer(const std::string& line, const std::string& text, double afterMs = 10)
    {
        m_rows[line] = {{text, afterMs}};
    }
    void Answer(const std::string& line, std::vector<Reply> replies) { m_rows[line] = std::move(replies); }

    // As that model answers an identification; "KR200 Series 2", "KR400".
    void Identify(const std::string& model)
    {
        constexpr std::string_view Series = " Series ";
        const size_t at = model.find(Series);
        LoggerConfig config;
        config.model = model.substr(0, at);
        config.series = at == std::string::npos ? "" : model.substr(at + Series.size());
        const auto row = FindModel(config.model, config.series);
        if (!row)
            return;
        Answer("TEST0", TestReport(config, *row) + "\r\n");
        if (!row->IsKR4())
            return;
        Answer("/h/U/N", VersionReport(config, *row) + "\r\n");
        Answer("CHARAC1", SerialReport(config, *row) + "\r\n");
    }

    void Receive(double nowMs, std::string_view bytes) override
    {
        m_input += bytes;
        for (size_t end = m_input.find("\r\n"); end != std::string::npos; end = m_input.find("\r\n")) {
            const std::string line = m_input.substr(0, end);
            m_input.erase(0, end + 2);
            take(nowMs, line);
        }
    }
    std::string Transmit(double nowMs) override
    {
        std::string text;
        while (!m_due.empty() && m_due.begin()->first <= nowMs) {
            text += m_due.begin()->second;
            m_due.erase(m_due.begin());
        }
        return text;
    }
    double NextDueMs() const override { return m_due.empty() ? Never : m_due.begin()->first; }

    std::vector<Line> lines;
    bool silent = false;                                           // takes lines, but answers no more
    std::function<void(const std::string& line)> whenLine;         // before it answers
    std::function<std::string(const std::string& line)> otherwise; // the answer to a line without a row; may be empty

private:
    void take(double nowMs, const std::string& line)
    {
        lines.push_back({nowMs, line});
        if (whenLine)
            whenLine(line);
        const Reply reply = replyTo(line);
        if (!silent && !reply.text.empty())
            m_due.emplace(nowMs + reply.afterMs, reply.text);
    }
    Reply replyTo(const std::string& line)
    {
        const auto row = m_rows.find(line);
        if (row == m_rows.end() || row->second.empty())
            return {otherwise ? otherwise(line) : ""};
        const Reply reply = row->second.front();
        if (row->second.size() > 1)
            row->second.erase(row->second.begin());
        return reply;
    }

    std::map<std::string, std::vector<Reply>> m_rows;
    std::string m_input;
    std::multimap<double, std::string> m_due; // when it leaves
};

} // namespace harvelop::test
