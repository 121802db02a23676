#include "links/modRS232.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "links/com_port_errors.h"
#include "links/get_field.h"
#include "settings/message_texts.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

struct FlowWord {
    std::string_view word;
    int handshaking;
};

// Meant: "SWHWFC" has no entry. It leaves the handshaking of the link before in force.
constexpr std::array<FlowWord, 3> FlowWords = {{{"NOFC", 0}, {"SWFC", 1}, {"HWFC", 2}}};

long countPorts(const std::string& availablePorts)
{
    const std::string_view looked = std::string_view(availablePorts).substr(0, 50);
    return std::count(looked.begin(), looked.end(), ',');
}

} // namespace

modRS232::modRS232(Essentials essentials, SerialControl& serial, LinkState& link, Options& options, ProgramState& state,
                   Forms& forms, ProgramEnd& end)
    : MSComm1(serial), m_use(essentials), m_link(link), m_options(options), m_state(state), m_forms(forms), m_end(end)
{
    MSComm1.OnComm = [this] { MSComm1_OnComm(); };
}

modRS232::~modRS232()
{
    MSComm1.OnComm = nullptr;
}

void modRS232::FindComPorts()
{
    if (m_end.Ended())
        return;
    m_use.progress.SetProgressRange(11);
    m_use.progress.ShowProgressText(m_use.language.Text(366) + " ...");
    m_options.AvailablePorts.clear();
    MSComm1.Close();
    m_link.PortAvailable.fill(false);
    for (int port = 1; port <= ComPorts; ++port) {
        MSComm1.CommPort(port);
        const int error = MSComm1.Open();
        if (error == PortAbsent)
            continue;
        if (error == PortBusy) {
            m_link.PortBusySeen.Set(port, true);
            ComPortEngineError(error, port);
        }
        MSComm1.Close();
        m_link.PortAvailable[static_cast<size_t>(port - 1)] = true;
    }
    for (int port = 1; port <= ComPorts; ++port) {
        if (m_link.PortAvailable[static_cast<size_t>(port - 1)])
            m_options.AvailablePorts += std::to_string(port) + ",";
        m_link.PortBusySeen.Set(port, false);
    }
}

void modRS232::ReportAvailablePorts()
{
    if (m_state.StopSearch)
        return;
    // A language file's pieces are joined as they stand; the English ones want blanks between.
    const std::string gap = m_use.language.LangActive ? "" : " ";
    const auto report = [&](int before, const std::string& ports, int after) {
        m_use.progress.ShowProgressText(m_use.language.Text(before) + gap + ports + gap + m_use.language.Text(after));
    };
    if (countPorts(m_options.AvailablePorts) == 1) {
        report(367, GetField(m_options.AvailablePorts, 1), 368);
    } else {
        std::string list;
        for (int port = 1; port <= ComPorts; ++port)
            if (m_link.PortAvailable[static_cast<size_t>(port - 1)])
                list += (list.empty() ? "" : ", ") + std::to_string(port);
        report(369, list, 370);
    }
    m_use.waiting.WaitMs(1000);
}

void modRS232::FillPortLists(bool restoreLastSearch)
{
    ListState& list = m_state.cbxUnload_Ports;
    const int selected = list.Selected();
    list.Clear();
    if (m_options.AvailablePorts == "0") {
        list.Add(AllPorts);
        list.Select(0);
    } else if (countPorts(m_options.AvailablePorts) == 1) {
        list.Add("Com " + GetField(m_options.AvailablePorts, 1));
    } else {
        list.Add(AllPorts);
        for (int port = 1; port <= ComPorts; ++port)
            if (m_link.PortAvailable[static_cast<size_t>(port - 1)])
                list.Add(" Com " + std::to_string(port));
    }
    if (!restoreLastSearch)
        list.Select(selected);
    else if (const auto last = ToInt16(m_options.LastSearch))
        list.Select(*last);
}

void modRS232::OpenComPort(int port)
{
    if (m_end.Ended())
        return;
    m_link.PortOpenFailed.Set(port, false);
    m_link.LinkMode = "ComPort";
    if (MSComm1.PortOpen())
        MSComm1.Close();
    MSComm1.ClearInBuffer();
    MSComm1.ClearOutBuffer();
    MSComm1.RThreshold(m_link.ReceiveThreshold);
    MSComm1.InBufferSize(2048);
    MSComm1.RTSEnable(true);
    MSComm1.CommPort(port);
    m_link.CurrentPort = static_cast<std::int16_t>(port);
    const int error = MSComm1.Open();
    if (error == PortOk)
        return;
    if (error == PortBusy)
        tellBusy(port);
    else if (error == PortNoPermission)
        tellNoPermission(port);
    m_link.BusyPorts += std::to_string(port);
    CloseLink();
}

void modRS232::tellBusy(int port)
{
    const auto busy = [&](int first, int second) {
        return m_use.language.Text(first) + " " + std::to_string(port) + " : " + m_use.language.Text(second);
    };
    const std::string holder = MSComm1.Holder();
    m_use.progress.ShowProgressText(busy(374, 375));
    m_use.waiting.WaitMs(1000);
    if (!m_state.AbortWait) // who has cancelled meanwhile is told nothing
        ShowInFront(m_use, {busy(700, 701) + ".     ", BoxTitle, BoxIcon::Critical, BoxButtons::Ok,
                            holder.empty() ? "" : "In use by " + holder + "."});
    m_link.PortOpenFailed.Set(port, true);
    if (!m_state.LaunchCommand.empty()) {
        m_end.EndProgram();
        return;
    }
    m_use.progress.ShowMessageForm();
    if (m_state.TerminalOpen && m_forms.terminal)
        m_forms.terminal->Close();
}

void modRS232::tellNoPermission(int port)
{
    if (m_link.NoPermissionTold)
        return;
    m_link.NoPermissionTold = true;
    const std::string device = MSComm1.DeviceName(port);
    ShowInFront(m_use, {"You have no permission to open Com " + std::to_string(port) +
                            (device.empty() ? "" : " (" + device + ")") + ".     ",
                        BoxTitle, BoxIcon::Critical, BoxButtons::Ok,
                        "Add your user to the group \"dialout\", then log out and in again."});
    m_use.progress.ShowMessageForm();
}

void modRS232::CloseLink()
{
    m_link.LinkMode = "None";
    if (m_link.ConnectionKind == "Dialup") {
        // Meant: with no link mode the two lines are dropped, and only the "+++" reaches the modem.
        WriteToPort("+++");
        m_use.waiting.WaitMs(100);
        for (const char* line : {"ath0", "atz"}) {
            if (SendToLogger)
                SendToLogger(line);
            m_use.waiting.WaitMs(100);
        }
    }
    MSComm1.Close();
    m_link.CurrentPort = 0;
}

void modRS232::SetComSettings(const std::string& baud, const std::string& parity, const std::string& dataBits,
                              const std::string& stopBits, const std::string& flow)
{
    if (m_state.StopSearch)
        return;
    MSComm1.Settings(baud + "," + parity + "," + dataBits + "," + stopBits);
    SetHandshaking(flow);
    m_link.FlowControl = flow;
}

void modRS232::SetHandshaking(const std::string& flow)
{
    for (const auto& [word, handshaking] : FlowWords)
        if (flow == word)
            MSComm1.Handshaking(handshaking);
}

void modRS232::ComSend(const std::string& text)
{
    WriteToPort(text + std::string(CrLf));
}

void modRS232::WriteToPort(std::string_view bytes)
{
    if (!m_end.Ended())
        MSComm1.Output(bytes);
}

void modRS232::ComPortEngineError(int number, int port)
{
    if (const auto box = ComPortErrorBox(number, port)) {
        ShowInFront(m_use, *box);
        m_use.progress.ShowMessageForm();
    }
}

void modRS232::MSComm1_OnComm()
{
    if (MSComm1.CommEvent == CommEventReceived)
        DrainComPort();
}

void modRS232::DrainComPort()
{
    MSComm1.RThreshold(0); // no further event may nest
    while (ReceiveText && MSComm1.InBufferCount() >= 1)
        ReceiveText();
    MSComm1.RThreshold(m_link.ReceiveThreshold);
}

} // namespace harvelop
