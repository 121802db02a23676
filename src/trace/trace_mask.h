// What passes on one link, on its way into the trace: held back for as long as it may yet turn out to hold a password.
#pragma once

#include "trace/password_watch.h"
#include "trace/trace_secrets.h"

#include <deque>
#include <functional>
#include <string>

namespace harvelop
{

struct TraceEntry {
    double seconds = 0;      // since midnight
    std::string link = {};   // "com3", "tcp1"
    std::string kind = {};   // "out", "in" and "drop" carry characters of the link
    std::string text = {};   // those characters as they passed, or what the trace says as it stands
    std::string hidden = {}; // one verdict of SecretFilter for each character

    bool IsSent() const { return kind == "out"; }
    bool IsStream() const { return IsSent() || kind == "in" || kind == "drop"; }
};

// Gives the entries to `Write` in their order and with all verdicts. An entry waits while a password may be under way,
// at most until the first one that comes ten seconds later, or a thousand entries later, or until Flush. What is
// then still open is hidden. Only a line that is still being sent waits longer than ten seconds: somebody types it.
class TraceMask
{
public:
    explicit TraceMask(TraceSecrets& secrets) : m_watch(secrets), m_sent(secrets), m_received(secrets) {}

    std::function<void(const TraceEntry&)> Write;

    void Opened(PasswordWatch::Line line); // another link begins; nothing of the one before is waiting
    void Take(TraceEntry entry);
    void Flush(); // nothing more can come of what has passed: the link has ended

private:
    void release();
    void writeDecided();
    void hideOldest();
    SecretFilter& filterOf(const TraceEntry& entry) { return entry.IsSent() ? m_sent : m_received; }
    void spread(bool isSent, const std::string& verdicts);

    PasswordWatch m_watch;
    SecretFilter m_sent;
    SecretFilter m_received;
    std::deque<TraceEntry> m_held;    // until the dialogue has told whether a password is among them
    double m_heldSince = 0;           // its first entry, or what came last while a line was typed
    std::deque<TraceEntry> m_waiting; // until the filters have decided on all characters of the first one
};

} // namespace harvelop
