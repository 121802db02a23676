// The editor of the delivery lists on a logger of the KR4 family, and one of the older family beside it.
#pragma once

#include "panel_bench.h"
#include "panels/frmUnloadLists.h"
#include "settings/sample_loggers.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include <gtest/gtest.h>
#include <memory>

namespace harvelop::test
{

struct ListsFixture : PanelBench {
    static constexpr const char* Path = "/home/user/loggers/emaillist4.ini"; // of the KR40
    static constexpr const char* OlderPath = "/home/user/loggers/emaillist2.ini";

    ListsFixture()
    {
        LoggerRecord kr4 = NetworkLogger();
        kr4.LoggerIconKey = "::4";
        Store({SerialLogger(), kr4});
        choose(2);
        heart.state.ListKind = "Email";
    }
    void choose(int number)
    {
        heart.state.CurrentLogger = heart.state.ChosenLogger = static_cast<std::int16_t>(number);
        heart.link.LinkDescription = LinkDescriptionOf(Record(number));
    }
    // The editor as it opens when its file holds `text`.
    frmUnloadLists& open(const std::string& text, const char* path = Path)
    {
        files.files[path] = text;
        form = std::make_unique<frmUnloadLists>(heart.panelServices(), nullptr);
        form->show();
        return *form;
    }
    QPlainTextEdit& txtList() const { return Find<QPlainTextEdit>(*form, "txtList"); }
    QLineEdit& txtDescription() const { return Find<QLineEdit>(*form, "txtDescription"); }
    QComboBox& cbxSchedules() const { return Find<QComboBox>(*form, "cbxSchedules"); }
    std::string list() const { return txtList().toPlainText().toStdString(); }
    std::string description() const { return txtDescription().text().toStdString(); }
    void click(const char* button) const { Find<QPushButton>(*form, button).click(); }
    std::string afterOk(const char* path = Path)
    {
        click("cmdOk");
        EXPECT_FALSE(form->isVisible());
        return files.files[path];
    }

    std::unique_ptr<frmUnloadLists> form;
};

} // namespace harvelop::test
