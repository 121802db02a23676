// The serial port engine: opens and closes the one port, sets its line, delivers what it receives, and keeps the list
// of the machine's ports.
#pragma once

#include "core/forms.h"
#include "core/program_end.h"
#include "core/program_state.h"
#include "links/link_state.h"
#include "platform/serial_control.h"
#include "settings/essentials.h"
#include "settings/options.h"

#include <functional>
#include <string>

namespace harvelop
{

// The entry of the port list that stands for every port.
constexpr const char* AllPorts = " All Ports";

class modRS232
{
public:
    modRS232(Essentials essentials, SerialControl& MSComm1, LinkState& link, Options& options, ProgramState& state,
             Forms& forms, ProgramEnd& end);
    ~modRS232();
    modRS232(const modRS232&) = delete;
    modRS232& operator=(const modRS232&) = delete;

    // Set by the exchange: ReceiveText("ComPort") and SendToLogger.
    std::function<void()> ReceiveText;
    std::function<void(const std::string&)> SendToLogger;

    // Rebuilds `AvailablePorts` and `PortAvailable` by opening each port once. A busy port counts as available.
    void FindComPorts();

    // Tells the outcome on the progress line, for a second. Nothing while `StopSearch` is set.
    void ReportAvailablePorts();

    // Refills the drop-down of the ports; selects the option `LastSearch` or what was selected before.
    void FillPortLists(bool restoreLastSearch);

    // Opens a port with the settings that are in the control. A busy port is told in a box and marked in
    // `PortOpenFailed`; any failure adds the port to `BusyPorts` and leaves no link. In a program that was started for
    // one command a busy port ends it.
    void OpenComPort(int port);

    // Ends a serial or modem link; harmless without one. `LinkMode` is "None" afterwards.
    void CloseLink();

    // Sets the line: texts as they stand, `flow` one of "NOFC", "SWFC", "HWFC"; "SWHWFC" leaves the handshaking as it
    // is. Nothing while `StopSearch` is set.
    void SetComSettings(const std::string& baud, const std::string& parity, const std::string& dataBits,
                        const std::string& stopBits, const std::string& flow);

    // Sets the handshaking alone, by the same words.
    void SetHandshaking(const std::string& flow);

    void ComSend(const std::string& text); // one line; CR LF is added

    // The one door for bytes to the port. Nothing leaves after the program's end.
    void WriteToPort(std::string_view bytes);

    void ComPortEngineError(int number, int port); // the box for an error number, if it has one

    void MSComm1_OnComm(); // characters have arrived, or something else has happened

    SerialControl& MSComm1;

private:
    void DrainComPort();
    void tellBusy(int port);
    void tellNoPermission(int port);

    Essentials m_use;
    LinkState& m_link;
    Options& m_options;
    ProgramState& m_state;
    Forms& m_forms;
    ProgramEnd& m_end;
};

} // namespace harvelop
