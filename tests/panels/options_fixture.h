// The options panel over a whole program on fakes.
#pragma once

#include "core/frmMessages.h"
#include "panels/frmOptions.h"
#include "support/test_program.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>

namespace harvelop::test
{

// A logger's panel as far as the options panel reaches it.
class FakePanel : public LoggerPanel
{
public:
    void Load() override {}
    PanelValues Values() const override { return {}; }
    void SetUp(const PanelSetUp&) override {}
    void SetCaption(const std::string&) override {}
    void Place(int) override {}
    void SetVisible(bool on) override
    {
        visible = on;
        ++shows;
    }
    bool IsVisible() const override { return visible; }
    void DescribeModel(const std::string&) override {}
    void SetControlEnabled(std::string_view, bool) override {}
    void SetPanelEnabled(bool) override {}
    void SetDelivery(std::optional<bool> emailEnabled, std::optional<bool> ftpEnabled) override
    {
        email = emailEnabled;
        ftp = ftpEnabled;
        ++deliveries;
    }
    void Unload() override {}
    void Replaced() override {}

    bool visible = false;
    int shows = 0;
    int deliveries = 0;
    std::optional<bool> email;
    std::optional<bool> ftp;
};

class OptionsPanel : public testing::Test
{
protected:
    OptionsPanel()
    {
        p.state.AppPath = std::string(TestProgram::Directory) + "/";
        p.panels.Make = [this](int) { return &panel; };
        p.forms.loadMessages = [this]() -> MessageForm* {
            if (!messages) {
                messages = std::make_unique<frmMessages>(
                    MessagesServices{p.progress, p.waiting, p.language, p.options, p.store, p.controls, p.end,
                                     [this] { return form ? form->frameGeometry() : QRect(); }});
                messages->Load();
            }
            return messages.get();
        };
    }

    OptionsServices Services()
    {
        return {p.essentials(), p.options, p.state,    p.store, p.tables,  p.panels, p.rs232,
                p.portSearch,   p.viewing, p.controls, p.forms, p.desktop, p.end};
    }

    // Puts loggers into the tables, as a start does.
    void Store(int loggers)
    {
        for (int i = 0; i < loggers; ++i) {
            LoggerRecord record;
            record.LoggerPort = "3";
            record.LoggerModel = "KR40";
            record.LoggerSerial = std::to_string(i + 1);
            record.LoggerStopBits = "1";
            record.LoggerIconKey = "::" + std::to_string(i + 2);
            p.tables.records[static_cast<size_t>(i)] = record;
            p.tables.FoundLoggerStrings[static_cast<size_t>(i)] = RecordText(record);
        }
        p.tables.HaveFoundLoggers = loggers > 0;
    }

    void Speak(const std::string& lines)
    {
        p.options.Language = "Plain";
        t.files.files[p.state.AppPath + "Plain.txt"] = lines;
        p.language.LangActive = true;
        p.language.LoadLanguageFile();
    }

    void Load(const OptionsServices& services)
    {
        form = std::make_unique<frmOptions>(services);
        form->Load();
    }
    void Load() { Load(Services()); }

    // With a logger, so that no question comes; shown, and with the focus.
    void Open()
    {
        if (!p.tables.HaveFoundLoggers)
            Store(1);
        Load();
        Show();
    }
    void Show()
    {
        form->show();
        QApplication::setActiveWindow(form.get());
        QApplication::processEvents();
    }

    template <typename Widget = QWidget> Widget* Find(const char* name)
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_TRUE(widget) << name;
        return widget;
    }
    QCheckBox* Check(const char* name) { return Find<QCheckBox>(name); }
    QLineEdit* Field(const char* name) { return Find<QLineEdit>(name); }
    QPushButton* Button(const char* name) { return Find<QPushButton>(name); }
    bool Enabled(const char* name) { return Find(name)->isEnabled(); }
    QTabWidget* Tabs() { return Find<QTabWidget>("tsOptions"); }

    // Brings the page of a control to the front, so that it can be clicked and typed into.
    void Reveal(QWidget* control)
    {
        for (int i = 0; i < Tabs()->count(); ++i)
            if (Tabs()->widget(i)->isAncestorOf(control))
                Tabs()->setCurrentIndex(i);
    }
    void Click(const char* name)
    {
        QWidget* control = Find(name);
        Reveal(control);
        // The text side of a check box may be cut off by its own size; its left end never is.
        QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
    }
    void Type(const char* name, const char* keys)
    {
        QLineEdit* field = Field(name);
        Reveal(field);
        field->setFocus();
        field->selectAll();
        if (*keys)
            QTest::keyClicks(field, keys);
        else
            QTest::keyClick(field, Qt::Key_Delete);
    }
    std::string Text(const char* name) { return Field(name)->text().toStdString(); }

    // After a reload of the saved file: what a later start finds.
    std::string Saved(const std::string& key)
    {
        const std::string& text = t.files.files[TestProgram::OptionsIni];
        const size_t at = text.find("\r\n" + key + "=");
        if (at == std::string::npos)
            return "(not saved)";
        const size_t begin = at + key.size() + 3;
        return text.substr(begin, text.find("\r\n", begin) - begin);
    }

    TestProgram t;
    Program& p = t.heart;
    FakePanel panel;
    std::unique_ptr<frmMessages> messages;
    std::unique_ptr<frmOptions> form;
};

} // namespace harvelop::test
