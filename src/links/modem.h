// The AT dialogue with a dial-up modem on a com port: finding it, dialling, reading the speed, resetting.
#pragma once

#include "core/forms.h"
#include "core/program_end.h"
#include "links/command_exchange.h"
#include "links/link_state.h"
#include "links/modRS232.h"
#include "settings/essentials.h"
#include "settings/logger_records.h"
#include "settings/options.h"

#include <functional>
#include <string>
#include <string_view>

namespace harvelop
{

// What follows "CONNECT " on its line of a modem's answer, at most five characters, without blanks around; empty if
// nothing does. Where the word stands more than once, its speeds are joined.
std::string ConnectSpeed(std::string_view window);

class Modem
{
public:
    Modem(Essentials essentials, modRS232& rs232, CommandExchange& exchange, LinkState& link,
          const LoggerTables& tables, const Options& options, ProgramState& state, Forms& forms, ProgramEnd& end);

    std::function<void()> ConfirmConnected; // goes on where the call stands

    // Dials the logger in work through the modem on `port`. Nothing while `StopLinkWork` is set, and nothing further
    // once it is. A failed call leaves the port open, for the terminal.
    void ConnectDialup(int port);

    // The same for the add dialog, whose caption tells the progress. True if the call stands and the identification may
    // go on; false if port, modem or call failed (which is told) or the user gave up.
    bool TestDialup(int port, const std::string& number, const std::string& init);

    // Looks for the modem and resets it with the initialisation string; tells the outcome. For the add dialog, which
    // has locked its controls.
    void ResetModem(int port, const std::string& init);

private:
    enum class Outcome { Connected, PortFailed, NoModem, NoConnect, GivenUp };
    struct Call {
        int port;
        std::string number;
        std::string init;
        bool forTest; // tells its progress in the caption of the add dialog; Cancel ends it quietly
    };

    Outcome dial(const Call& call);
    bool findModem(const Call& call);
    void setLine();
    void awaitRestOfLine();
    bool pause(const Call& call, double ms);
    bool isGivenUp(const Call& call);
    bool giveUp();

    void tell(const Call& call, const std::string& text);
    void tellCaption(const std::string& text);
    void tellBox(const std::string& text, BoxIcon icon, const std::string& title);
    void tellNoModem(const Call& call);
    void tellNoConnect(const Call& call);
    void tellNoTestConnect(const Call& call);
    void tellReset(int port, const std::string& init);
    std::string either(int number, const char* english) const;

    Essentials m_use;
    modRS232& m_rs232;
    CommandExchange& m_exchange;
    LinkState& m_link;
    const LoggerTables& m_tables;
    const Options& m_options;
    ProgramState& m_state;
    Forms& m_forms;
    ProgramEnd& m_end;
};

} // namespace harvelop
