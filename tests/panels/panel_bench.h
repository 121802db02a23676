// A program with stored loggers, whose panels are real widgets.
#pragma once

#include "panels/frmTallyCores.h"
#include "support/fake_forms.h"
#include "support/test_program.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <string>
#include <vector>

namespace harvelop::test
{

struct PanelBench : TestProgram {
    PanelBench()
    {
        heart.state.AppPath = std::string(Directory) + "/";
        heart.state.DriveRoot = desktop.DriveRoot();
        heart.forms.options = &options;
    }

    void Store(const std::vector<LoggerRecord>& loggers)
    {
        for (size_t i = 0; i < loggers.size(); ++i) {
            heart.tables.records.at(i) = loggers[i];
            heart.tables.FoundLoggerStrings.at(i) = RecordText(loggers[i]);
        }
        heart.records.SaveFoundLoggers();
        heart.records.LoadFoundLoggers();
        heart.viewing.RebuildList();
    }

    // Gives the program a language file of these lines.
    void Speak(const std::string& lines)
    {
        heart.options.Language = "Plain";
        files.files[heart.state.AppPath + "Plain.txt"] = lines;
        heart.language.LangActive = true;
        heart.language.LoadLanguageFile();
    }

    // Opens the logger's panel as the View button does.
    frmTallyCores& View(int number)
    {
        heart.state.cbxUnload_TallyCores.Select(number - 1);
        heart.viewing.cmdUnload_View_Click();
        return *Panel(number);
    }
    frmTallyCores* Panel(int number) { return dynamic_cast<frmTallyCores*>(heart.panels.At(number)); }

    LoggerRecord& Record(int number) { return *heart.tables.Record(number); }
    const std::string& RecordLine(int number) const
    {
        return heart.tables.FoundLoggerStrings.at(static_cast<size_t>(number - 1));
    }

    static void RunDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    FakeOptions options;
    TallyCorePanels panels{heart.panelServices()};
};

// A control of a form by its name; a missing one ends the test program with its name.
template <typename Control> Control& Find(const QWidget& form, const std::string& name)
{
    auto* control = form.findChild<Control*>(QString::fromStdString(name));
    if (!control)
        throw std::runtime_error("no control " + name);
    return *control;
}

inline void PressKey(QWidget& widget, int key, const QString& text = {})
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &release);
}

inline void Type(QWidget& widget, const QString& text)
{
    for (const QChar character : text)
        PressKey(widget, 0, character);
}

inline void ClickAt(QWidget& widget, QPoint place)
{
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

} // namespace harvelop::test
