// The modem dialogue on a fake port with a simulated modem, in virtual time.
#pragma once

#include "links/link_bench.h"
#include "links/modem.h"
#include "simulator/simulated_logger.h"
#include "simulator/simulated_modem.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

// Logger 2 of the table stands behind the modem on com port 3. No modem is plugged in at first.
class ModemTest : public LinkTest
{
protected:
    ModemTest()
    {
        LoggerRecord& record = *tables.Record(2);
        record.LoggerModel = "KR200 Series 1";
        record.LoggerPort = "3";
        record.LoggerBaud = "5551234";
        record.LoggerParity = "at&f";
        record.LoggerDataBits = "9600";
        state.CurrentLogger = 2;
        link.ConnectionKind = "Dialup";
        options.ModemTimeout = "45";
        options.ShowMessages = true;
        serial.ports[3] = {};
        forms.add = &dialog;
        state.AddDialogOpen = true;
        dialog.caption = " Add a tallyCore";
        progress.ShowMessageForm();
        modem.ConfirmConnected = [this] {
            confirmedMs = pump.NowMs();
            timeoutAtConfirmation = link.DefaultTimeout;
        };
    }

    void Plug(const ModemConfig& config = {})
    {
        const auto logger = std::make_shared<SimulatedLogger>(LoggerConfig());
        serial.Plug(3, std::make_shared<SimulatedModem>(config, PhoneBook{{"5551234", logger}}), "9600");
    }
    void PlugFailing(ModemFailure failure)
    {
        ModemConfig config;
        config.failure = failure;
        Plug(config);
    }

    // What was sent, each with its time in whole milliseconds: "1000 +++".
    std::vector<std::string> Wire()
    {
        waiting.ServeEvents();
        std::vector<std::string> wire;
        for (const auto& event : serial.events)
            if (event.kind == FakeSerial::Event::Kind::Sent)
                wire.push_back(std::to_string(std::lround(event.ms)) + " " + event.text);
        return wire;
    }

    LoggerTables tables;
    FakeAddDialog dialog;
    Modem modem{{waiting, progress, dialogs, language}, rs232, exchange, link, tables, options, state, forms, end};
    double confirmedMs = -1; // when the call stood; below 0: it never did
    double timeoutAtConfirmation = -1;
};

} // namespace harvelop::test
