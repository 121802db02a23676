// Connecting to a stored logger: a whole program on fakes, in virtual time.
#pragma once

#include "simulator/simulated_logger.h"
#include "support/fake_forms.h"
#include "support/test_program.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace harvelop::test
{

inline std::shared_ptr<SimulatedLogger> SimulatedModel(const std::string& model, const std::string& series = "")
{
    LoggerConfig config;
    config.model = model;
    config.series = series;
    return std::make_shared<SimulatedLogger>(config);
}

// A program with one stored logger, which is the one in work.
struct ConnectTest : testing::Test, TestProgram {
    ConnectTest()
    {
        heart.forms.loadMessages = [this] { return &messages; };
        heart.state.CurrentLogger = 1;
        heart.link.DefaultTimeout = 5000;
        heart.options.ShowMessages = true;
    }

    void Store(const std::string& model, const std::string& port, const std::string& baud = "",
               const std::string& parity = "", const std::string& dataBits = "", const std::string& stopBits = "")
    {
        LoggerRecord record;
        record.LoggerModel = model;
        record.LoggerPort = port;
        record.LoggerBaud = baud;
        record.LoggerParity = parity;
        record.LoggerDataBits = dataBits;
        record.LoggerStopBits = stopBits;
        record.LoggerFlow = stopBits.empty() ? "" : "SWFC";
        heart.tables.FoundLoggerStrings[0] = RecordText(record);
        heart.records.ParseLoggerSettings(1);
    }
    void StoreSerial(const std::string& parity = "None") { Store("KR200 Series 2", "3", "9600", parity, "8", "1"); }
    void StoreNetwork(const std::string& model = "KR40") { Store(model, "10.0.0.5:3000"); }
    void Connect() { heart.connecting.ConnectLogger(1); }
    void UseLanguageFile(const std::string& texts)
    {
        heart.options.Language = "Test";
        files.files["Test.txt"] = texts;
        heart.language.LangActive = true;
        heart.language.LoadLanguageFile();
    }
    bool Connected() const { return heart.link.LinkConnected; }

    FakeMessages messages;
};

} // namespace harvelop::test
