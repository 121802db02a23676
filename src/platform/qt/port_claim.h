// The right to use a com port, which programs on one machine have to share out among themselves.
#pragma once

#include "platform/qt/file_handle.h"

#include <string>

namespace harvelop
{

// Holds a device against other programs, by every sign that those agree on: lock files, `flock` and exclusive opening.
// A device that is held elsewhere is left as it is. Lets go when it is destroyed.
class PortClaim
{
public:
    // Claims the device, after letting go of an earlier one. Gives PortOk, PortAbsent, PortBusy, PortNoPermission or
    // PortFailed.
    int Take(const std::string& device);
    void Release() { m_handle = FileHandle(); }

    // The device that was claimed last, with links resolved: the name under which other programs know it too.
    const std::string& Device() const { return m_device; }
    // After PortBusy: "minicom (process 1234)", or empty if not known.
    const std::string& Holder() const { return m_holder; }
    // Lets go after the device's lock file could not be made. Gives PortBusy if somebody alive was faster, otherwise
    // PortNoPermission: what is left of an ended program is another user's, and this one may not remove it.
    int LockRefused();

private:
    bool isLocked();
    int refuse(int error);
    int open();

    FileHandle m_handle;
    std::string m_device;
    std::string m_holder;
};

} // namespace harvelop
