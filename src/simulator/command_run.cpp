#include "simulator/command_run.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sys/signalfd.h>
#include <sys/wait.h>

namespace harvelop
{

namespace
{

constexpr int NotStarted = 127;
constexpr int Signalled = 128;
constexpr auto Endings = std::to_array<int>({SIGTERM, SIGINT, SIGHUP, SIGQUIT});

sigset_t setOf(bool withChildren)
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : Endings)
        sigaddset(&signals, number);
    if (withChildren)
        sigaddset(&signals, SIGCHLD);
    return signals;
}

void putInEnvironment(const std::vector<PlacedLine>& lines)
{
    constexpr int ComPorts = 16;
    for (int com = 1; com <= ComPorts; ++com)
        setenv(("HARVELOP_COM" + std::to_string(com)).c_str(), "", 1);
    for (const std::string& assignment : Assignments(lines)) {
        const auto equals = assignment.find('=');
        setenv(assignment.substr(0, equals).c_str(), assignment.substr(equals + 1).c_str(), 1);
    }
}

// With none of the signals blocked or ignored that are so here. 0 and `child`, or the error number.
int spawn(const std::vector<std::string>& command, pid_t& child)
{
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    sigset_t none;
    sigset_t pipe;
    sigemptyset(&none);
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &pipe);
    const int error = posix_spawnp(&child, words.front(), nullptr, &attributes, words.data(), environ);
    posix_spawnattr_destroy(&attributes);
    return error;
}

// A signal from the keyboard has reached the command as well.
void passOn(const signalfd_siginfo& signal, pid_t child)
{
    if (signal.ssi_code != SI_KERNEL)
        kill(child, static_cast<int>(signal.ssi_signo));
}

} // namespace

EndSignals::EndSignals()
{
    const sigset_t signals = setOf(true);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    m_signals = LineHandle(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

void RunUntilEnd(SimulationLoop& loop, const EndSignals& signals)
{
    signalfd_siginfo signal{};
    do
        loop.Run(signals.Get());
    while (read(signals.Get(), &signal, sizeof signal) == sizeof signal && signal.ssi_signo == SIGCHLD);
}

int RunCommand(const std::vector<std::string>& command, SimulationLoop& loop, const EndSignals& signals,
               const std::vector<PlacedLine>& lines, std::string& error)
{
    putInEnvironment(lines);
    pid_t child = 0;
    if (const int failure = spawn(command, child); failure != 0) {
        error = "cannot start " + command.front() + ": " + std::strerror(failure);
        return NotStarted;
    }
    for (;;) {
        loop.Run(signals.Get());
        signalfd_siginfo signal{};
        if (read(signals.Get(), &signal, sizeof signal) == sizeof signal && signal.ssi_signo != SIGCHLD)
            passOn(signal, child);
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child)
            return WIFEXITED(status) ? WEXITSTATUS(status) : Signalled + WTERMSIG(status);
    }
}

} // namespace harvelop
