// The hidden main object's face to the desktop: the popup menu of the tray.
#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QAction;
class QMenu;

namespace harvelop
{

struct TaskbarHooks {
    std::function<void()> ServeEvents; // lets pending events run
    std::function<void()> ShowOptions; // makes `frmOptions` visible and gives it the focus
    std::function<void()> Exit;
};

// Never shown, made first, gone last. No icon is registered with the tray; the menu stands ready for one.
class frmTaskbar : public QObject
{
    Q_OBJECT

public:
    enum ScaleMode : int { Twips = 1, Pixels = 3 };

    explicit frmTaskbar(TaskbarHooks hooks);
    ~frmTaskbar() override;

    // The tray's notification comes as an X coordinate, in twips unless the scale mode is pixels.
    void Form_MouseMove(double x, int scaleMode);

    QMenu& mpopupSys() { return *m_mpopupSys; }
    QAction* mpopOptions = nullptr;
    QAction* mpopExit = nullptr;

private:
    TaskbarHooks m_hooks;
    std::unique_ptr<QMenu> m_mpopupSys;
};

} // namespace harvelop
