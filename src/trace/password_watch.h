// Learns passwords from the place in a dialogue where they stand.
#pragma once

#include "trace/trace_secrets.h"

#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// Follows one link and takes for a password:
// - on a com port the first line after its opening, and behind a modem the first one after "CONNECT", where every
//   dialogue with a logger begins with its password;
// - what is sent to a logger that answers the probe (the character 127 as a line) with "<<" and has said nothing since;
// - a line that is answered with "Accepted", and with it all others that were sent since the answer before;
// - what follows "PASS ", "AUTH PLAIN " and the like, and "PASSWORD=";
// - after "AUTH", every line to the end of the link.
// The commands of an identification and of the modem's dialogue are never taken for one.
class PasswordWatch
{
public:
    enum class Line { ComPort, Network };

    explicit PasswordWatch(TraceSecrets& secrets) : m_secrets(secrets) {}

    void Opened(Line line);
    void Sent(std::string_view bytes);
    void Received(std::string_view bytes);

    // What passed last may yet turn out to be a password: it must not be written yet.
    bool Undecided() const { return !m_now.sent.empty() || m_now.asked; }
    // Part of a line has been sent, and nobody can tell how long its rest takes.
    bool LineUnderWay() const;
    // Nobody waits for that rest any more: what has been sent of it may be part of a password, and is taken for one.
    void GiveUpLine();

private:
    void takeSentLine(const std::string& line);
    bool learnNamed(const std::string& line);
    void takeAnswer(const std::string& line);

    struct Dialogue {
        std::string sent;              // the line that is being sent
        std::string received;          // the line that is being received
        std::vector<std::string> said; // the lines that were sent since the last answer, without controls
        bool asked = false;            // one of them may be a password
        bool passwordNext = false;
        bool probed = false;    // the probe is one of the lines since the last answer
        bool locked = false;    // the logger answers to nothing but the probe
        bool loggingIn = false; // "AUTH" was sent
        bool afterCr = false;   // a line feed now belongs to the line end before it
    };

    TraceSecrets& m_secrets;
    Dialogue m_now;
};

} // namespace harvelop
