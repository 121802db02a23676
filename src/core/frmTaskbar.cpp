#include "core/frmTaskbar.h"

#include "panels/frmSupport.h"

#include <QAction>
#include <QCursor>
#include <QMenu>

#include <utility>

namespace harvelop
{

namespace
{
constexpr int RightButtonDown = 516;
} // namespace

frmTaskbar::frmTaskbar(TaskbarHooks hooks) : m_hooks(std::move(hooks)), m_mpopupSys(std::make_unique<QMenu>("&Systray"))
{
    setObjectName("frmTaskbar");
    m_mpopupSys->setObjectName("mpopupSys");
    mpopOptions = m_mpopupSys->addAction("Options", this, [this] { m_hooks.ShowOptions(); });
    mpopOptions->setObjectName("mpopOptions");
    mpopExit = m_mpopupSys->addAction("Exit", this, [this] { m_hooks.Exit(); });
    mpopExit->setObjectName("mpopExit");
}

frmTaskbar::~frmTaskbar() = default;

void frmTaskbar::Form_MouseMove(double x, int scaleMode)
{
    m_hooks.ServeEvents();
    const int notification = scaleMode == Pixels ? static_cast<int>(x) : TwipsToPixels(x, *m_mpopupSys);
    if (notification == RightButtonDown)
        m_mpopupSys->popup(QCursor::pos());
}

} // namespace harvelop
