// A terminal over a whole program on fakes, with a port on Com 3.
#pragma once

#include "app/desktop_program.h"
#include "panels/frmSupport.h"
#include "settings/sample_loggers.h"
#include "simulator/simulated_logger.h"
#include "support/test_program.h"
#include "terminal/frmReceivePane.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace harvelop::test
{

class Terminal : public testing::Test
{
protected:
    Terminal()
    {
        p.state.AppPath = std::string(TestProgram::Directory) + "/";
        p.options.TerminalLeft = 1500;
        p.options.TerminalTop = 1200;
        p.options.TerminalWidth = 7500;
        p.options.TerminalHeight = 9000;
        p.options.TransmitHeight1 = 2400;
        t.serial.Plug(3, nullptr, "");
    }

    TerminalServices Services()
    {
        return {p.waiting, p.language, p.options,  p.store,    p.state, p.link,
                p.forms,   p.rs232,    p.ethernet, p.exchange, p.end};
    }
    void Open(const TerminalServices& services)
    {
        form = std::make_unique<frmTerminal>(services);
        form->Load();
        QApplication::setActiveWindow(form.get());
        QApplication::processEvents();
    }
    void Open() { Open(Services()); }
    void Link()
    {
        p.link.LinkMode = "ComPort";
        p.rs232.OpenComPort(3);
    }

    ReceivePane* Receive() { return form->findChild<ReceivePane*>("txtReceive"); }
    QPlainTextEdit* Send() { return form->findChild<QPlainTextEdit*>("txtTransmit"); }
    QSplitter* Panes() { return form->findChild<QSplitter*>("splPanes"); }
    bool Shows(const QString& text)
    {
        return QTest::qWaitFor([&] { return Receive()->Text() == text; });
    }
    void Arrive(const std::string& text)
    {
        t.serial.Arrive(text);
        p.waiting.ServeEvents();
    }
    std::string Sent()
    {
        p.waiting.ServeEvents();
        return t.serial.Sent();
    }
    int Pixels(double twips) { return TwipsToPixels(twips, *form); }

    TestProgram t;
    Program& p = t.heart;
    std::unique_ptr<frmTerminal> form;
};

} // namespace harvelop::test
