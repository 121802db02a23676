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
      rs232(essentials(), platform.serial, link, options, state, forms, end),
      exchange(waiting, link, state, forms, rs232, ethernet),
      identification(essentials(), exchange, platform.serial, link, search, tables, store, state),
      viewing(essentials(), link, search, tables, records, store, panels, controls, state, files),
      portSearch(essentials(), rs232, exchange, identification, viewing, controls, link, search, tables, panels,
                 options, state, end)
{
    // The calls that go against the order of building.
    store.FindComPorts = [this] { rs232.FindComPorts(); };
    store.SaveFoundLoggers = [this] { records.SaveFoundLoggers(); };
    rs232.ReceiveText = [this] { exchange.ReceiveText("ComPort"); };
    rs232.SendToLogger = [this](const std::string& text) { exchange.SendToLogger(text); };
}

} // namespace harvelop
