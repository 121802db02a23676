// Being asked to end, by Ctrl+C or a signal, as an event.
#pragma once

#include "platform/qt/file_handle.h"

#include <QSocketNotifier>

#include <functional>

namespace harvelop
{

// While it lives, the first SIGINT, SIGTERM or SIGHUP calls `work` from the event loop. A second one ends the process
// at once. Those that the process was started to ignore stay ignored. One at a time; needs the application object.
class QtInterrupt
{
public:
    explicit QtInterrupt(std::function<void()> work);
    ~QtInterrupt();
    QtInterrupt(const QtInterrupt&) = delete;
    QtInterrupt& operator=(const QtInterrupt&) = delete;

private:
    FileHandle m_signals;
    QSocketNotifier m_notifier;
};

} // namespace harvelop
