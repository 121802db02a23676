// The real platform without windows, for measurements.
#pragma once

#include "app/program.h"
#include "platform/qt/qt_data_files.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_serial_control.h"
#include "platform/qt/qt_settings_store.h"
#include "platform/qt/qt_sockets.h"

#include <iostream>

namespace harvelop
{

// Nothing that is measured shows a box: one that comes all the same is told.
class TellingDialogs : public Dialogs
{
public:
    BoxAnswer Show(const Box& box) override
    {
        std::cerr << box.text << '\n';
        return BoxAnswer::Cancel;
    }
    std::string AskPassword(const std::string& text, const std::string&) override
    {
        std::cerr << text << '\n';
        return {};
    }
    std::string BrowseFolder(const std::string& title, const std::string&) override { return AskPassword(title, {}); }
    std::string OpenFile(const std::string& title, const std::string&, const std::string&) override
    {
        return AskPassword(title, {});
    }
};

struct BenchPlatform {
    QtEventPump pump;
    QtSettingsStore store;
    QtSerialControl serial{store};
    QtSockets sockets;
    TellingDialogs dialogs;
    QtDataFiles files;
    QtDesktop desktop;

    Platform All() { return {pump, serial, sockets, dialogs, files, store, desktop}; }
};

} // namespace harvelop
