#include "simulator/recorded_device.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace harvelop
{

RecordedDevice::RecordedDevice(std::unique_ptr<SimulatedDevice> device, std::string name, std::ostream& transcript)
    : m_device(std::move(device)), m_name(std::move(name)), m_transcript(transcript)
{
}

void RecordedDevice::Receive(double nowMs, std::string_view bytes)
{
    write("in", bytes);
    m_device->Receive(nowMs, bytes);
}

std::string RecordedDevice::Transmit(double nowMs)
{
    std::string sent = m_device->Transmit(nowMs);
    if (!sent.empty())
        write("out", sent);
    return sent;
}

void RecordedDevice::write(const char* direction, std::string_view bytes)
{
    using nlohmann::json;
    const json entry = {m_name, direction, std::string(bytes)};
    m_transcript << entry.dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
}

} // namespace harvelop
