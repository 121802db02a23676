#include "platform/qt/qt_interrupt.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace harvelop
{

namespace
{

bool isIgnored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

// A blocked signal is taken even where it was to be ignored, as under nohup; so that one stays out.
sigset_t interrupts()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal))
            sigaddset(&set, signal);
    return set;
}

FileHandle blockedInterrupts()
{
    const sigset_t set = interrupts();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    return FileHandle(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
}

void unblockInterrupts()
{
    const sigset_t set = interrupts();
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

} // namespace

QtInterrupt::QtInterrupt(std::function<void()> work)
    : m_signals(blockedInterrupts()), m_notifier(m_signals.Number(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this, work = std::move(work)] {
        m_notifier.setEnabled(false);
        signalfd_siginfo taken{};
        const bool any = ::read(m_signals.Number(), &taken, sizeof(taken)) == sizeof(taken);
        unblockInterrupts(); // the next one does what it does without us
        if (any)
            work();
    });
}

QtInterrupt::~QtInterrupt()
{
    unblockInterrupts();
}

} // namespace harvelop
