// The desktop around a program with windows.
#pragma once

#include "platform/qt/qt_desktop.h"

namespace harvelop
{

class QtWindowDesktop : public QtDesktop
{
public:
    // Hands the file to the desktop's own opener, which brings the viewer to the front.
    bool ShowTextFile(const std::string& path) override;
};

} // namespace harvelop
