// A whole program on fakes, in virtual time.
#pragma once

#include "app/program.h"
#include "support/fake_desktop.h"
#include "support/fake_serial.h"
#include "support/fake_sockets.h"
#include "support/memory_files.h"
#include "support/scripted_dialogs.h"
#include "support/virtual_pump.h"

namespace harvelop::test
{

struct TestProgram {
    VirtualPump pump;
    FakeSerial serial{pump};
    FakeSockets sockets{pump};
    ScriptedDialogs dialogs;
    MemoryFiles files;
    MemorySettings settings;
    FakeDesktop desktop;
    Program heart{{pump, serial, sockets, dialogs, files, settings, desktop}};

    static constexpr const char* Directory = "/home/user/loggers";
    static constexpr const char* OptionsIni = "/home/user/loggers/options.ini";
    static constexpr const char* FoundIni = "/home/user/loggers/found.ini";
    static constexpr const char* InstallIni = "/home/user/loggers/install.ini";
    static constexpr const char* StoreKey = "Harvel/Parameters/_home_user_loggers";

    // As a start leaves it that was not the first.
    void Installed()
    {
        settings.values[StoreKey] = Directory;
        files.files[InstallIni] = "Harvel was installed on 01/01/2026 at 10:00:00.\r\n";
    }
};

} // namespace harvelop::test
