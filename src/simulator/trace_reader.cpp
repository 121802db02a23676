#include "simulator/trace_reader.h"

#include "simulator/trace_words.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace harvelop
{

namespace
{

using Kind = RecordedStep::Kind;

constexpr std::string_view Magic = "# harvelop trace 1";
constexpr std::size_t MostErrors = 10;
constexpr std::string_view HiddenAnswer = "***";
constexpr double DayMs = 86400000;

// A port or a host on its way through the trace.
struct Place {
    struct Step {
        RecordedStep step;
        unsigned baud; // at which it happened; 0 on a network
    };

    RecordedLine line = {};
    std::vector<Step> steps = {};
    unsigned baud = 0;
    RecordedStep heard = {Kind::Heard}; // what has come in of a line that is not whole yet
    bool restIsHidden = false;          // of the line that comes in: its step has been made

    void Add(const RecordedStep& step)
    {
        endHeard();
        steps.push_back({step, baud});
    }
    // What is taken after a loss had come before it.
    void Answer(const RecordedStep& step)
    {
        endHeard();
        const bool isLost = !steps.empty() && steps.back().step.kind == Kind::Lost;
        steps.insert(steps.end() - (isLost ? 1 : 0), {step, baud});
    }
    void Hear(const TraceText& text, std::size_t number, double ms)
    {
        for (const int code : text) {
            if (restIsHidden) {
                restIsHidden = code != '\r' && code != '\n';
            } else if (code != '\n') {
                heard.isHidden = restIsHidden = code == HiddenPart;
                if (!heard.isHidden)
                    heard.text += static_cast<char>(code);
                heard.number = number;
                heard.ms = ms;
                if (heard.EndsLine())
                    endHeard();
            }
        }
    }
    void endHeard()
    {
        if (!heard.text.empty() || heard.isHidden)
            steps.push_back({std::exchange(heard, {Kind::Heard}), baud});
    }

    // What the device answers at is its speed: only what happened at that speed counts, and a loss only at the end:
    // otherwise the device has come back.
    RecordedLine Finished()
    {
        endHeard();
        std::map<unsigned, std::size_t> answers;
        for (const Step& step : steps)
            answers[step.baud] += step.step.text.size() * (step.step.kind == Kind::Answered ? 1 : 0);
        const auto most = std::ranges::max_element(answers, {}, [](const auto& entry) { return entry.second; });
        if (line.com > 0 && most != answers.end())
            line.baud = most->first;
        for (Step& step : steps)
            if (line.com == 0 || (step.step.kind == Kind::Lost ? &step == &steps.back() : step.baud == line.baud))
                line.steps.push_back(std::move(step.step));
        return std::move(line);
    }
};

class Reading
{
public:
    void Take(std::string_view text)
    {
        const auto behind = text.substr(0, Magic.size() + 1).substr(std::min(text.size(), Magic.size()));
        const bool isTrace = text.starts_with(Magic) && (behind.empty() || behind == "," || behind == "\n");
        if (text.size() > LargestTrace || !isTrace) {
            m_errors.emplace_back("line 1: this is no trace, or one of another kind");
            return;
        }
        for (std::size_t number = 1; !text.empty() && m_errors.size() < MostErrors; ++number) {
            const std::string_view line = text.substr(0, text.find('\n'));
            const bool isWhole = line.size() < text.size();
            text.remove_prefix(line.size() + (isWhole ? 1 : 0));
            const bool runEnds = text.empty() || text.starts_with('#') || text.starts_with('\n');
            if (line.starts_with('#'))
                m_ms = m_dayMs = 0; // the run may be of another day
            if (line.empty() || line.starts_with('#'))
                continue;
            const std::string error = takeLine(line, number);
            if (!error.empty() && !runEnds)
                m_errors.push_back("line " + std::to_string(number) + ": " + error);
        }
    }

    RecordedTrace Finished()
    {
        RecordedTrace trace{{}, std::move(m_errors)};
        for (Place& place : m_places)
            trace.lines.push_back(place.Finished());
        return trace;
    }

private:
    // Gives what is wrong with it, or nothing.
    std::string takeLine(std::string_view line, std::size_t number)
    {
        TraceWords words(line);
        const double timeMs = words.TimeMs();
        if (!words.Good())
            return "it does not begin with a time";
        const std::string link = words.Word();
        const std::string kind = words.Word();
        noteTime(timeMs);
        if (link.starts_with("com"))
            return takeComLine(link, kind, words, number);
        if (link.starts_with("tcp"))
            return takeTcpLine(link, kind, words, number);
        return "there is no link \"" + shown(link) + "\"";
    }

    // The clock begins anew at midnight; a little backwards it goes only between two programs.
    void noteTime(double timeMs)
    {
        if (m_dayMs + timeMs < m_ms - DayMs / 2)
            m_dayMs += DayMs;
        m_ms = std::max(m_ms, m_dayMs + timeMs);
    }

    std::string takeComLine(const std::string& link, const std::string& kind, TraceWords& words, std::size_t number)
    {
        constexpr int ComPorts = 16;
        TraceWords ofLink(std::string_view(link).substr(3));
        const int com = ofLink.Number(ComPorts);
        if (com == 0)
            return "there is no link \"" + shown(link) + "\"";
        if (kind == "open" || kind == "set") {
            const std::string settings = PlainText(words.Quoted(), {});
            TraceWords ofSettings(std::string_view(settings).substr(0, settings.find(',')));
            const int baud = ofSettings.Number(10000000);
            words.Number(2);
            if (!words.Good() || !ofSettings.Good() || baud == 0)
                return "the settings of the port are not as they should be";
            if (kind == "open")
                words.Quoted();
            if (!words.AtEnd())
                return "something is wrong behind the settings";
            Place& place = placeOf(link, [&] { return RecordedLine{com}; });
            place.endHeard();
            place.baud = static_cast<unsigned>(baud);
            if (kind == "open")
                place.Add({Kind::Opened, number, m_ms});
            return {};
        }
        return takeEvent(link, kind, words, number);
    }

    std::string takeTcpLine(const std::string& link, const std::string& kind, TraceWords& words, std::size_t number)
    {
        if (kind != "open")
            return takeEvent(link, kind, words, number);
        const std::string host = PlainText(words.Quoted(), {});
        const auto colon = host.rfind(':');
        TraceWords ofHost(colon == std::string::npos ? std::string_view() : std::string_view(host).substr(colon + 1));
        const int port = ofHost.Number(65535);
        if (!words.AtEnd() || !ofHost.Good())
            return "the host is not as it should be";
        m_open.erase(link);
        placeOf(host, [&] { return RecordedLine{0, host, port}; });
        m_open[link] = m_byName[host];
        m_places[m_open[link]].Add({Kind::Opened, number, m_ms});
        return {};
    }

    std::string takeEvent(const std::string& link, const std::string& kind, TraceWords& words, std::size_t number)
    {
        const bool isOut = kind == "out";
        const bool isAnswer = kind == "in" || kind == "drop";
        Place* place = m_open.contains(link) ? &m_places[m_open[link]] : nullptr;
        if (isOut || isAnswer) {
            const TraceText text = words.Quoted();
            if (!words.AtEnd())
                return "its text is not as it should be";
            if (!place)
                return "its link is not open";
            if (isOut)
                place->Hear(text, number, m_ms);
            else
                place->Answer({Kind::Answered, number, m_ms, PlainText(text, HiddenAnswer), false, kind == "drop"});
        } else if ((kind == "lost" || (kind == "error" && link.starts_with("tcp"))) && place) {
            place->Add({Kind::Lost, number, m_ms});
        } else if (kind != "close" && kind != "connected" && kind != "unsent" && kind != "error") {
            return place || kind != "lost" ? "\"" + shown(kind) + "\" is nothing that can happen"
                                           : "its link is not open";
        }
        return {};
    }

    template <typename Make> Place& placeOf(const std::string& name, Make make)
    {
        const auto [found, isNew] = m_byName.try_emplace(name, m_places.size());
        if (isNew)
            m_places.emplace_back().line = make();
        m_open[name] = found->second;
        return m_places[found->second];
    }

    static std::string shown(const std::string& word)
    {
        constexpr std::size_t Longest = 20;
        std::string text = word.substr(0, Longest);
        std::ranges::replace_if(
            text, [](char c) { return c < ' ' || c > '~'; }, '?');
        return text;
    }

    std::vector<Place> m_places;
    std::map<std::string, std::size_t> m_byName; // "com3" or "host:port"; index in `m_places`
    std::map<std::string, std::size_t> m_open;   // the place that "com3" or "tcp1" stands for now
    std::vector<std::string> m_errors;
    double m_dayMs = 0;
    double m_ms = 0;
};

} // namespace

RecordedTrace ReadTrace(std::string_view text)
{
    Reading reading;
    reading.Take(text);
    return reading.Finished();
}

} // namespace harvelop
