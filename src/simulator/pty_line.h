// A simulated device on a pseudo terminal, which a program opens as it would open a com port.
#pragma once

#include "simulator/file_handle.h"
#include "simulator/simulated_device.h"
#include "simulator/simulated_line.h"

#include <memory>
#include <string>

namespace harvelop
{

// Characters pass only while the terminal's speed is the line's own, as on a real line; at another speed they are lost
// both ways. The terminal can be opened and closed any number of times; what was left unread at either is dropped.
// When the device drops the line, the terminal vanishes with its link.
class PtyLine : public SimulatedLine
{
public:
    // `link` is the path of a symbolic link to make, in the place of another link if there is one; empty: none. It is
    // removed at the end. None and the reason in `error` if that fails.
    static std::unique_ptr<PtyLine> Open(std::unique_ptr<SimulatedDevice> device, unsigned baud,
                                         const std::string& link, std::string& error);
    ~PtyLine() override;

    std::string Place() const override { return m_path; }
    std::vector<pollfd> Waits() const override;
    double NextDueMs() const override;
    void Serve(double nowMs) override;

private:
    PtyLine(std::unique_ptr<SimulatedDevice> device, unsigned baud) : m_device(std::move(device)), m_baud(baud) {}

    bool openTerminal();
    bool makeLink(const std::string& link);
    void noticeUsers(double nowMs);
    void readInput(double nowMs);
    void writeOutput(double nowMs);
    bool atOwnSpeed() const;
    void vanish();

    std::unique_ptr<SimulatedDevice> m_device;
    unsigned m_baud;
    std::string m_path;
    std::string m_link;
    LineHandle m_master;
    LineHandle m_slave;   // kept open: with nobody at the other end the master would report a hang-up without end
    LineHandle m_watcher; // tells when the terminal is opened and closed
    std::string m_unsent;
};

} // namespace harvelop
