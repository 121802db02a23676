// The editor of what runs after an unload, over a program on fakes.
#pragma once

#include "panel_bench.h"
#include "panels/frmRun.h"
#include "settings/sample_loggers.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <optional>

namespace harvelop::test
{

constexpr const char* Report = "/home/user/loggers/report.sh";

inline LoggerRecord runs(const std::string& program, const std::string& command)
{
    LoggerRecord logger = SerialLogger();
    logger.LoggerRunProgram = program;
    logger.LoggerRunCommand = command;
    return logger;
}

// The editor on the first logger.
struct RunBench : PanelBench {
    void Open(const char* kind, const LoggerRecord& logger = SerialLogger())
    {
        Store({logger});
        Record(1) = logger; // also what a file can't hold
        heart.state.CurrentLogger = 1;
        heart.state.RunEditKind = kind;
        form.emplace(heart.panelServices(), nullptr);
        form->show();
        QApplication::setActiveWindow(&*form);
        files.writes.clear();
    }

    QLineEdit& Field() { return Find<QLineEdit>(*form, "txtRun"); }
    QPushButton& Button() { return Find<QPushButton>(*form, "cmdEdit"); }
    std::string Text() { return ToText(Field()); }
    std::string Word() { return Button().text().remove('&').toStdString(); }
    std::string Hint() { return Find<QLabel>(*form, "lblHint").text().toStdString(); }
    static std::string ToText(const QLineEdit& field) { return field.text().toStdString(); }
    void Paste(const QString& text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&Field(), Qt::Key_V, Qt::ControlModifier);
    }
    void Choose(const std::string& path)
    {
        dialogs.ExpectChooser(path);
        Button().click();
    }

    std::optional<frmRun> form;
};

} // namespace harvelop::test
