#include "platform/qt/qt_event_pump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QThread>
#include <QTime>

#include <algorithm>
#include <cmath>

namespace harvelop
{

namespace
{
constexpr const char* NoGlib = "QT_NO_GLIB";
constexpr double SecondsOfDay = 86400.0;
constexpr double LongestTimerMs = 3600'000.0;
} // namespace

void PrepareEventDispatcher()
{
    qputenv(NoGlib, "1");
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

QtEventPump::QtEventPump()
{
    const std::chrono::milliseconds sinceMidnight(QTime::currentTime().msecsSinceStartOfDay());
    m_midnight = Clock::now() - sinceMidnight;
    // The choice has been made; the programs that are started from here make their own.
    qunsetenv(NoGlib);
    QCoreApplication::instance()->installEventFilter(this);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { keepAwake(); });
}

double QtEventPump::Timer() const
{
    return std::fmod(std::chrono::duration<double>(Clock::now() - m_midnight).count(), SecondsOfDay);
}

void QtEventPump::ServePending()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtEventPump::ServeFor(double ms)
{
    if (!(ms > 0)) {
        ServePending();
        return;
    }
    armTimer(ms);
    {
        const QScopedValueRollback level(m_servingLevel, QThread::currentThread()->loopLevel());
        m_served = m_returned = false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    m_served = m_returned = true;
}

// A timer that goes off too early only makes a wait return early, so one that is running already is kept wherever it is
// due in time: setting it anew for every exchange would cost more than all the rest of a wait.
void QtEventPump::armTimer(double ms)
{
    const std::chrono::milliseconds length(static_cast<int>(std::ceil(std::min(ms, LongestTimerMs))));
    const Clock::time_point due = Clock::now() + length;
    if (m_timer.isActive() && m_timerDue <= due)
        return;
    m_timerDue = due;
    m_timer.start(static_cast<int>(length.count()), Qt::PreciseTimer, this);
}

// Before it blocks, a pass of the dispatcher serves clicks and posted events, and then sleeps on although the wait may
// have been decided by them: if it did serve any, it is made to return. And so is a pass of any loop further out in
// which the pump was used, as that has swallowed the call to leave the loop if there was one.
void QtEventPump::keepAwake()
{
    const bool ownPass = m_servingLevel == QThread::currentThread()->loopLevel();
    if (m_returned || (m_served && ownPass))
        QAbstractEventDispatcher::instance()->interrupt();
    m_returned = false;
}

bool QtEventPump::eventFilter(QObject*, QEvent*)
{
    m_served = true;
    return false;
}

void QtEventPump::timerEvent(QTimerEvent*)
{
    m_timer.stop();
}

} // namespace harvelop
