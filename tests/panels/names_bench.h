// The editor of a logger's table names, over a program on fakes.
#pragma once

#include "panel_bench.h"
#include "panels/frmEditMDB.h"
#include "panels/table_name_rules.h"
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

inline LoggerRecord withNames(LoggerRecord logger, const std::vector<std::pair<size_t, std::string>>& names)
{
    logger.LoggerTableNames.fill("");
    for (const auto& [entry, name] : names)
        logger.LoggerTableNames.at(entry) = name;
    return logger;
}

// The editor on the first logger. Not through the panel, which saves once more.
struct NamesBench : PanelBench {
    void Open(const LoggerRecord& logger)
    {
        Store({logger});
        Record(1) = logger; // also what a file can't hold
        heart.state.CurrentLogger = 1;
        form.emplace(heart.panelServices(), nullptr);
        form->show();
        QApplication::setActiveWindow(&*form);
        files.writes.clear();
    }
    void OpenUnder(QWidget& owner)
    {
        child = new frmEditMDB(heart.panelServices(), &owner);
        child->show();
    }

    QLineEdit& Row(int row) { return Find<QLineEdit>(*form, "txtMDBTableNames_" + std::to_string(row)); }
    QLabel& Caption(int row) { return Find<QLabel>(*form, "lblSchedule_" + std::to_string(row)); }
    void Paste(int row, const QString& text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&Row(row), Qt::Key_V, Qt::ControlModifier);
    }
    void Ok() { Find<QPushButton>(*form, "cmdOk").click(); }
    void OkWithBox()
    {
        dialogs.Expect(BoxAnswer::Ok);
        Ok();
    }
    const std::string& Name(size_t row) { return Record(1).LoggerTableNames.at(row); }

    std::optional<frmEditMDB> form;
    QPointer<frmEditMDB> child;
};

} // namespace harvelop::test
