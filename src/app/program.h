// The whole heart, wired once.
#pragma once

#include "core/forms.h"
#include "core/gates.h"
#include "core/options_controls.h"
#include "core/program_end.h"
#include "core/program_state.h"
#include "core/progress.h"
#include "core/waiting.h"
#include "identify/identification.h"
#include "identify/logger_viewing.h"
#include "identify/panel_steps.h"
#include "identify/port_search.h"
#include "identify/search_state.h"
#include "links/command_exchange.h"
#include "links/connect.h"
#include "links/link_state.h"
#include "links/modEthernet.h"
#include "links/modRS232.h"
#include "links/modem.h"
#include "loading/clearing.h"
#include "loading/flash_load.h"
#include "loading/program_load.h"
#include "platform/desktop.h"
#include "platform/settings_store.h"
#include "servers/ftp_test.h"
#include "servers/smtp_test.h"
#include "settings/delivery_lists.h"
#include "settings/essentials.h"
#include "settings/language_tables.h"
#include "settings/logger_controls.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

namespace harvelop
{

// What the heart is handed from outside.
struct Platform {
    EventPump& pump;
    SerialControl& serial;
    SocketMaker& sockets;
    Dialogs& dialogs;
    DataFiles& files;
    SettingsStore& store;
    Desktop& desktop;
};

// Owns every state and every module; reading the constructors is reading the architecture. Two programs can live side
// by side. Members are in the order in which they build on each other.
class Program
{
public:
    explicit Program(const Platform& platform);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    ProgramEnd end;
    GatedDialogs dialogs;
    GatedDataFiles files;
    SettingsStore& settings;
    Desktop& desktop;

    ProgramState state;
    Options options;
    LoggerTables tables;
    DeliveryTables deliveryTables;
    LinkState link;
    SearchState search;
    LoadingState loading;
    Forms forms;
    LoggerPanels panels;
    LoggerActions actions;

    Waiting waiting;
    Progress progress;
    LanguageTables language;
    OptionsControls controls;
    OptionsStore store;
    LoggerRecords records;
    DeliveryLists lists;
    LoggerControls loggerControls;
    modRS232 rs232;
    modEthernet ethernet;
    CommandExchange exchange;
    Modem modem;
    Connecting connecting;
    Identification identification;
    LoggerViewing viewing;
    PortSearch portSearch;
    ProgramLoading programLoading;
    FlashLoading flashLoading;
    Clearing clearing;
    SMTPTest smtpTest;
    FTPTest ftpTest;

    LoadingServices loadingServices()
    {
        return {essentials(), exchange, connecting, link,           loading, state, options,
                tables,       files,    desktop,    loggerControls, forms,   end};
    }
    ServerServices serverServices() { return {essentials(), exchange, ethernet, link, state, options, controls}; }
    Essentials essentials() { return {waiting, progress, dialogs, language}; }
    PanelServices panelServices()
    {
        return {essentials(), options, state, store,  tables, records,        panels,  viewing, controls,
                forms,        link,    end,   search, lists,  loggerControls, actions, files,   desktop};
    }
};

} // namespace harvelop
