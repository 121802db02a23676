// The link layer on a fake port, in virtual time.
#pragma once

#include "core/gates.h"
#include "links/command_exchange.h"
#include "links/modRS232.h"
#include "support/fake_forms.h"
#include "support/fake_serial.h"
#include "support/memory_files.h"
#include "support/scripted_dialogs.h"
#include "support/virtual_pump.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace harvelop::test
{

// Fails the test if it is asked to block for a time that makes no sense.
class StrictPump : public VirtualPump
{
public:
    using VirtualPump::VirtualPump;
    void ServeFor(double ms) override
    {
        EXPECT_GT(ms, 0.0);
        EXPECT_LE(ms, 60000.0);
        VirtualPump::ServeFor(ms);
    }
};

// Notes the calls that prepare an opening, in order.
class RecordingSerial : public FakeSerial
{
public:
    using FakeSerial::FakeSerial;
    using SerialControl::CommPort;

    void CommPort(int port) override
    {
        calls.push_back("CommPort " + std::to_string(port));
        FakeSerial::CommPort(port);
    }
    int CommPort() const override { return FakeSerial::CommPort(); }
    int Open() override
    {
        calls.push_back("Open");
        if (whenOpened)
            whenOpened();
        return FakeSerial::Open();
    }
    void Close() override
    {
        if (PortOpen())
            calls.push_back("Close");
        FakeSerial::Close();
    }
    void RTSEnable(bool on) override
    {
        calls.push_back(on ? "RTSEnable true" : "RTSEnable false");
        FakeSerial::RTSEnable(on);
    }
    void InBufferSize(int characters) override
    {
        calls.push_back("InBufferSize " + std::to_string(characters));
        FakeSerial::InBufferSize(characters);
    }
    void ClearInBuffer() override
    {
        calls.push_back("ClearInBuffer");
        FakeSerial::ClearInBuffer();
    }
    void ClearOutBuffer() override
    {
        calls.push_back("ClearOutBuffer");
        FakeSerial::ClearOutBuffer();
    }
    void RThreshold(int count) override
    {
        calls.push_back("RThreshold " + std::to_string(count));
        FakeSerial::RThreshold(count);
    }

    std::vector<std::string> calls;
    std::function<void()> whenOpened; // just before each opening
};

class FakeEthernet : public EthernetLink
{
public:
    void EthernetSend(const std::string& text) override { sent.push_back(text); }
    void CloseEthernet() override {}

    std::vector<std::string> sent;
};

class LinkTest : public testing::Test
{
protected:
    explicit LinkTest(double clock = 36000.0) : pump(clock)
    {
        rs232.ReceiveText = [this] { exchange.ReceiveText("ComPort"); };
        rs232.SendToLogger = [this](const std::string& text) { exchange.SendToLogger(text); };
        forms.loadMessages = [this] { return &window; };
        forms.terminal = &terminal;
    }

    // A silent port 1, opened, and the traces of that forgotten.
    void OpenPort1()
    {
        serial.ports[1] = {};
        rs232.OpenComPort(1);
        serial.calls.clear();
        serial.events.clear();
    }

    // `texts` as lines of a language file, which is in use from now on.
    void UseLanguageFile(const std::string& texts)
    {
        options.Language = "Test";
        files.files["Test.txt"] = texts;
        language.LangActive = true;
        language.LoadLanguageFile();
    }

    StrictPump pump;
    ProgramEnd end;
    Waiting waiting{pump, end};
    ProgramState state;
    Options options;
    LinkState link;
    Forms forms;
    FakeMessages window;
    FakeTerminal terminal;
    ScriptedDialogs shownDialogs;
    GatedDialogs dialogs{shownDialogs, end};
    MemoryFiles files;
    LanguageTables language{options, state, files, dialogs, end};
    Progress progress{forms, state, waiting};
    RecordingSerial serial{pump};
    modRS232 rs232{{waiting, progress, dialogs, language}, serial, link, options, state, forms, end};
    FakeEthernet ethernet;
    CommandExchange exchange{waiting, link, state, forms, rs232, ethernet};
};

} // namespace harvelop::test
