#include "simulator/command_run.h"

#include <array>
#include <cerrno>
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

constexpr int Failed = 127;
constexpr int Signalled = 128;
constexpr auto Endings = std::to_array<int>({SIGTERM, SIGINT, SIGHUP, SIGQUIT});

bool isIgnored(int number)
{
    struct sigaction action = {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

// A blocked signal is taken even where it was to be ignored, as under nohup; so that one stays out.
sigset_t endingsAndChildren()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : Endings)
        if (!isIgnored(number))
            sigaddset(&signals, number);
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

// With none of the signals blocked that are so here, and none ignored but those that its starter ignores. 0 and
// `child`, or the error number.
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

// One from the keyboard has reached the command already. Of any other nothing tells whether it went to the whole group.
void passOn(const signalfd_siginfo& signal, pid_t child)
{
    if (signal.ssi_code != SI_KERNEL)
        kill(child, static_cast<int>(signal.ssi_signo));
}

} // namespace

EndSignals::EndSignals()
{
    const sigset_t signals = endingsAndChildren();
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
    std::signal(SIGCHLD, SIG_DFL); // where it is ignored, nothing tells that a child has ended
    putInEnvironment(lines);
    pid_t child = 0;
    if (const int failure = spawn(command, child); failure != 0) {
        error = "cannot start " + command.front() + ": " + std::strerror(failure);
        return Failed;
    }
    int status = 0;
    pid_t ended = 0;
    while (ended == 0) {
        loop.Run(signals.Get());
        signalfd_siginfo signal{};
        if (read(signals.Get(), &signal, sizeof signal) == sizeof signal && signal.ssi_signo != SIGCHLD)
            passOn(signal, child);
        ended = waitpid(child, &status, WNOHANG);
    }
    if (ended < 0) {
        error = "cannot tell how " + command.front() + " ended: " + std::strerror(errno);
        return Failed;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : Signalled + WTERMSIG(status);
}

} // namespace harvelop
