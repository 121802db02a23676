// A simulated device whose characters are written down in both directions.
#pragma once

#include "simulator/simulated_device.h"

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace harvelop
{

// Writes one JSON array a line to `transcript`, at once: ["name", "in", "what arrived"], and "out" for what the device
// has sent. Bytes that are no UTF-8 come as U+FFFD. The stream must outlive the device.
class RecordedDevice : public SimulatedDevice
{
public:
    RecordedDevice(std::unique_ptr<SimulatedDevice> device, std::string name, std::ostream& transcript);

    void Receive(double nowMs, std::string_view bytes) override;
    std::string Transmit(double nowMs) override;
    double NextDueMs() const override { return m_device->NextDueMs(); }
    bool OnLine() const override { return m_device->OnLine(); }

private:
    void write(const char* direction, std::string_view bytes);

    std::unique_ptr<SimulatedDevice> m_device;
    std::string m_name;
    std::ostream& m_transcript;
};

} // namespace harvelop
