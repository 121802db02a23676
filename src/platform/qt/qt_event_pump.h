// Waiting on Qt's event loop.
#pragma once

#include "platform/event_pump.h"

#include <QBasicTimer>
#include <QObject>

#include <chrono>

namespace harvelop
{

// Chooses Qt's own lean event dispatcher, which serves a com port markedly faster than the one built on GLib. To be
// called before the application object is made. Dialogs of the desktop that need GLib's loop are switched off with it.
void PrepareEventDispatcher();

// Works inside and outside of `exec`, at any depth, with or without windows; needs the application object.
class QtEventPump : public QObject, public EventPump
{
public:
    QtEventPump();

    double Timer() const override;
    void ServePending() override;
    void ServeFor(double ms) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    using Clock = std::chrono::steady_clock;

    void armTimer(double ms);
    void keepAwake();

    Clock::time_point m_midnight; // the one before the start of the program
    QBasicTimer m_timer;
    Clock::time_point m_timerDue;
    bool m_served = false;   // an event has been served since the innermost ServeFor began
    bool m_returned = false; // the pump has been used, and no loop has come to block since
    int m_servingLevel = -1; // depth of event loops at which the innermost ServeFor runs; -1 without one
};

} // namespace harvelop
