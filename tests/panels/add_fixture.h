// The add dialog over a whole program on fakes.
#pragma once

#include "app/add_services.h"
#include "panel_bench.h"
#include "panels/frmAddTallyCore.h"
#include "settings/sample_loggers.h"
#include "simulator/simulated_logger.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

struct AddBench : PanelBench {
    AddBench()
    {
        heart.options.AvailablePorts = "1,3,";
        heart.viewing.UnloadAddDialog = [this] {
            if (form)
                form->Unload();
        };
    }
    ~AddBench() { delete form; }

    // As the Add button does.
    void Add()
    {
        heart.state.AddingLogger = heart.state.AddRebuildPending = heart.state.NewLoggerMode = true;
        make();
    }
    // As the Set Com button of the logger's panel does.
    void Change(int number)
    {
        heart.state.EditingExisting = true;
        heart.state.CurrentLogger = static_cast<std::int16_t>(number);
        make();
    }

    template <typename Widget = QWidget> Widget& The(const char* name) { return Find<Widget>(*form, name); }
    std::string Choice(const char* list) { return The<QComboBox>(list).currentText().toStdString(); }
    void Choose(const char* list, const char* text) { The<QComboBox>(list).setCurrentText(text); }
    std::string Text(const char* field) { return The<QLineEdit>(field).text().toStdString(); }
    void Fill(const char* field, const char* text) { The<QLineEdit>(field).setText(text); }
    void Click(const char* button) { The<QAbstractButton>(button).click(); }
    bool Shown(const char* name) { return The(name).isVisibleTo(form); }
    std::string Caption() { return form->windowTitle().toStdString(); }
    std::vector<std::string> Entries(const char* list)
    {
        std::vector<std::string> entries;
        for (int i = 0; i < The<QComboBox>(list).count(); ++i)
            entries.push_back(The<QComboBox>(list).itemText(i).toStdString());
        return entries;
    }
    const Box& LastBox() { return dialogs.shown.back(); }

    static std::shared_ptr<SimulatedLogger> Logger(const std::string& model, const std::string& series = "")
    {
        LoggerConfig config;
        config.model = model;
        config.series = series;
        return std::make_shared<SimulatedLogger>(config);
    }

    QPointer<frmAddTallyCore> form;

private:
    void make()
    {
        delete form;
        form = new frmAddTallyCore(AddServicesOf(heart), nullptr);
        form->show();
        QApplication::setActiveWindow(form);
    }
};

} // namespace harvelop::test
