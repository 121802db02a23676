// Keeps a simulation going until it is told to end, or for as long as a command runs on it.
#pragma once

#include "simulator/file_handle.h"
#include "simulator/simulation_loop.h"
#include "simulator/simulation_report.h"

#include <string>
#include <vector>

namespace harvelop
{

// Takes the signals that ask a program to end, but none that its starter ignores, and those of children, for as long as
// it lives.
class EndSignals
{
public:
    EndSignals();
    int Get() const { return m_signals.Get(); } // can be read when one has come

private:
    LineHandle m_signals;
};

// Until one of the signals has come.
void RunUntilEnd(SimulationLoop& loop, const EndSignals& signals);

// Starts the command with `lines` in its environment: HARVELOP_COM1 to 16, those without a line empty, and
// TALLYSIM_TCP_<n>. Passes on each signal that asks for the end, but those from the keyboard, which reach the command
// by themselves; one that is sent to the whole process group, as timeout(1) does, so reaches it twice. Gives the
// command's exit code, 128 and the number of the signal that has ended it, or, with the reason in `error`, 127 if it
// could not be started or waited for.
int RunCommand(const std::vector<std::string>& command, SimulationLoop& loop, const EndSignals& signals,
               const std::vector<PlacedLine>& lines, std::string& error);

} // namespace harvelop
