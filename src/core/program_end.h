// The one way in which the program ends.
#pragma once

#include <functional>
#include <utility>

namespace harvelop
{

// After `EndProgram` every wait returns at once, no byte leaves, no dialogue shows and no file changes: whoever is on
// the stack, however deep, runs out quietly. Whoever owns the event loop sets `OnEnd` and leaves it with `ExitCode`.
class ProgramEnd
{
public:
    // The first call counts; later ones change nothing.
    void EndProgram(int exitCode = 0)
    {
        if (m_ended)
            return;
        m_ended = true;
        m_exitCode = exitCode;
        if (OnEnd)
            OnEnd();
    }

    bool Ended() const { return m_ended; }
    int ExitCode() const { return m_exitCode; }

    std::function<void()> OnEnd;

private:
    bool m_ended = false;
    int m_exitCode = 0;
};

} // namespace harvelop
