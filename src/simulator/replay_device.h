// A device that says again what a trace tells of it.
#pragma once

#include "simulator/simulated_device.h"
#include "simulator/trace_reader.h"

#include <deque>
#include <functional>
#include <string>

namespace harvelop
{

// Takes lines that end in CR, without line feeds, in the order of the trace, and answers each with what came next
// there; characters that were answered before their line ended are answered so again. A line that was hidden is any
// line.
//
// Where the other side departs from the trace, `Tell` hears of it, and the replay goes on at the next place that has
// the line, or else at the first one of the whole trace; a line that it does not have anywhere stays unanswered. Behind
// its end the trace begins anew. Where somebody was hung up on, the device drops the line. No line is told that is not
// in the trace: it may hold a password.
class ReplayDevice : public SimulatedDevice
{
public:
    // Exact: each begins the next run of the trace, also after the device has dropped the line. Vague: some are not
    // noticed, and some more than once.
    enum class Openings { Exact, Vague };
    enum class Pace { AsRecorded, Fast }; // fast: every answer at once

    ReplayDevice(RecordedLine line, Openings openings, Pace pace);

    std::function<void(const std::string&)> Tell;

    void Receive(double nowMs, std::string_view bytes) override;
    std::string Transmit(double nowMs) override;
    double NextDueMs() const override;
    bool OnLine() const override { return m_onLine; }
    void Opened(double nowMs) override;
    void Closed() override { m_answers.clear(); }
    bool TakesNextCaller() const override { return m_openings == Openings::Exact; }

private:
    struct Piece {
        double dueMs;
        const RecordedStep* step;
    };

    void takeLine(double nowMs);
    std::size_t nextToHear() const;
    void goOnBehind(std::size_t index, double nowMs);

    RecordedLine m_line;
    Openings m_openings;
    Pace m_pace;
    std::size_t m_at = 0; // the step that comes next: an opening, something to be heard, or behind the last
    std::string m_heard;
    std::deque<Piece> m_answers;
    bool m_onLine = true;
};

} // namespace harvelop
