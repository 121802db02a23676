// Keeps simulated lines going, on one thread, asleep while nothing happens on any of them.
#pragma once

#include "simulator/simulated_line.h"

#include <memory>
#include <vector>

namespace harvelop
{

class SimulationLoop
{
public:
    void Add(std::unique_ptr<SimulatedLine> line) { m_lines.push_back(std::move(line)); }
    const std::vector<std::unique_ptr<SimulatedLine>>& Lines() const { return m_lines; }

    // Serves the lines until `stopFd` can be read.
    void Run(int stopFd);

private:
    std::vector<std::unique_ptr<SimulatedLine>> m_lines;
};

} // namespace harvelop
