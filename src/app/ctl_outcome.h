// What came of a dialogue, for an exit code.
#pragma once

#include "core/gates.h"

namespace harvelop
{

// Listens to the boxes while it lives, beside who did so before. What a dialogue tells is known by the kind of its
// boxes: it has failed with any message that is not information, and with a caution that was not agreed to; it is done
// with information. A box with a question mark only offers something more: to decline that is no refusal, and once it
// is agreed to, information must follow anew.
class Outcome
{
public:
    explicit Outcome(GatedDialogs& dialogs);
    ~Outcome() { m_dialogs.OnAnswered = m_before; }
    Outcome(const Outcome&) = delete;
    Outcome& operator=(const Outcome&) = delete;

    bool Done() const { return m_told && !m_failed && !m_unconfirmed; }
    bool Told() const { return m_told || m_failed; } // a message, of whatever kind
    bool Failed() const { return m_failed; }         // and that has been told; without it and without Done nothing was

private:
    void take(const Box& box, BoxAnswer answer);

    GatedDialogs& m_dialogs;
    std::function<void(const Box&, BoxAnswer)> m_before;
    bool m_told = false;
    bool m_failed = false;
    bool m_unconfirmed = false; // more was offered though nothing had been told of what was wanted
};

} // namespace harvelop
