#include "app/program.h"

namespace harvelop
{

Program::Program(const Platform& platform)
    : dialogs(platform.dialogs, end),
      files(platform.files, end),
      settings(platform.store),
      desktop(platform.desktop),
      waiting(platform.pump, end),
      progress(forms, state, waiting),
      language(options, state, files, dialogs, end),
      controls(forms, state, options.LockControls),
      store(options, state, files),
      records(tables, state, panels, files),
      lists(deliveryTables, state, tables, files),
      loggerControls(state, tables, panels, progress),
      rs232(essentials(), platform.serial, link, options, state, forms, end),
      ethernet(platform.sockets, link, waiting, end),
      exchange(waiting, link, state, forms, rs232, ethernet),
      modem(essentials(), rs232, exchange, link, tables, options, state, forms, end),
      connecting(essentials(), rs232, ethernet, modem, exchange, link, tables, state, options, end),
      identification(essentials(), exchange, platform.serial, link, search, tables, store, state),
      viewing(essentials(), link, search, tables, records, store, panels, controls, state, files),
      portSearch(essentials(), rs232, exchange, identification, viewing, controls, link, search, tables, panels,
                 options, state, end),
      programLoading(loadingServices()),
      flashLoading(loadingServices(), programLoading),
      clearing(loadingServices(), programLoading),
      smtpTest(serverServices()),
      ftpTest(serverServices())
{
    // The calls that go against the order of building.
    store.FindComPorts = [this] { rs232.FindComPorts(); };
    store.SaveFoundLoggers = [this] { records.SaveFoundLoggers(); };
    ethernet.ReceiveText = [this] { exchange.ReceiveText("Ethernet"); };
    rs232.ReceiveText = [this] { exchange.ReceiveText("ComPort"); };
    modem.ConfirmConnected = [this] { connecting.ConfirmConnected(); };
    connecting.IdentifyLogger = [this] {
        identification.IdentifyLogger(true);
        return search.IdentifiedModel.Get(state.CurrentLogger);
    };
    actions.ConnectLogger = [this](int number) { connecting.ConnectLogger(number); };
    actions.CloseLink = [this] { connecting.ReleaseLink(); };
    actions.LoadProgram = [this] { programLoading.LoadProgram(); };
    actions.LoadCardProgram = [this] { programLoading.LoadCardProgram(); };
    actions.LoadFlashProgram = [this] { flashLoading.LoadFlashProgram(); };
    actions.ClearPrograms = [this] { clearing.ClearPrograms(); };
    actions.ClearCardPrograms = [this] { clearing.ClearCardPrograms(); };
    actions.ClearFlash = [this] { clearing.ClearFlash(); };
    rs232.SendToLogger = [this](const std::string& text) { exchange.SendToLogger(text); };
}

} // namespace harvelop
