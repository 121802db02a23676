#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include <set>

namespace harvelop::test
{

TEST(FrmTallyCores, EveryControlHasANameForScreenReaders)
{
    PanelBench bench;
    bench.Store({NetworkLogger()});
    frmTallyCores& form = bench.View(1);
    int controls = 0;
    for (QWidget* control : form.findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->objectName().startsWith("qt_"))
            continue;
        ++controls;
        QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(control);
        ASSERT_TRUE(seen);
        EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty()) << control->objectName().toStdString();
    }
    EXPECT_GT(controls, 130); // both grids, the stored data and the rest
    EXPECT_EQ(Find<QCheckBox>(form, "chkKR400CSV_0").accessibleName(), "Schedule A, CSV");
    EXPECT_EQ(Find<QLineEdit>(form, "txtKR400_11").accessibleName(), "Schedule X, records");
    EXPECT_EQ(Find<QLineEdit>(form, "txtInternal_11").accessibleName(), "Schedule X, bytes in internal memory");
    EXPECT_EQ(Find<QLabel>(form, "lblUnloadDescription").buddy(), &Find<QLineEdit>(form, "txtDescription"));
}

namespace
{

std::string heard(QWidget& control)
{
    return QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Name).toStdString();
}

} // namespace

TEST(FrmTallyCores, TheNameForScreenReadersHoldsTheCaption)
{
    PanelBench bench;
    bench.Store({NetworkLogger()});
    int captions = 0;
    for (auto* button : bench.View(1).findChildren<QAbstractButton*>()) {
        const QString caption = button->text().remove('&');
        if (button->accessibleName().isEmpty() || caption.isEmpty())
            continue;
        ++captions;
        EXPECT_TRUE(button->accessibleName().contains(caption, Qt::CaseInsensitive)) << caption.toStdString();
    }
    EXPECT_GT(captions, 20);
}

TEST(FrmTallyCores, InAnotherLanguageScreenReadersHearItsCaptions)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.Speak("54:1:14:Programm\r\n67:1:14:Beschreibung\r\n");
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(heard(Find<QPushButton>(form, "cmdProgram")), "Programm");
    EXPECT_EQ(heard(Find<QLineEdit>(form, "txtDescription")), "Beschreibung");
}

TEST(FrmTallyCores, WhatWorkLocksSaysSoAndWhatWasLockedBeforeKeepsItsReason)
{
    PanelBench bench;
    bench.Store({NetworkLogger()});
    frmTallyCores& form = bench.View(1);
    auto& card = Find<QPushButton>(form, "cmdCard");
    auto& program = Find<QPushButton>(form, "cmdProgram");
    const QString always = card.toolTip();
    const QString before = program.toolTip();
    EXPECT_FALSE(always.isEmpty());
    for (const char* name : {"cmdCard", "cmdProgram"})
        form.SetControlEnabled(name, false);
    EXPECT_EQ(card.toolTip(), always);
    EXPECT_EQ(program.toolTip(), "Wait until the work in hand is done.");
    form.SetControlEnabled("cmdProgram", true);
    EXPECT_EQ(program.toolTip(), before);
}

TEST(FrmTallyCores, MnemonicsAreUniqueOnEachTab)
{
    PanelBench bench;
    bench.Store({NetworkLogger()});
    frmTallyCores& form = bench.View(1);
    auto& tabs = Find<QTabWidget>(form, "tsTallycores");
    std::vector<QString> shared;
    for (int i = 0; i < tabs.count(); ++i)
        shared.push_back(tabs.tabText(i));
    for (const char* button : {"cmdOk", "cmdCancel", "cmdApply"})
        shared.push_back(Find<QPushButton>(form, button).text());
    for (int i = 0; i < tabs.count(); ++i) {
        std::vector<QString> texts = shared;
        for (auto* button : tabs.widget(i)->findChildren<QPushButton*>())
            texts.push_back(button->text());
        for (auto* box : tabs.widget(i)->findChildren<QCheckBox*>())
            if (box->text().size() > 1)
                texts.push_back(box->text());
        for (auto* label : tabs.widget(i)->findChildren<QLabel*>())
            if (label->buddy())
                texts.push_back(label->text());
        std::set<QString> used;
        for (const QString& text : texts) {
            const QString key = QKeySequence::mnemonic(text).toString();
            EXPECT_FALSE(key.isEmpty()) << text.toStdString();
            EXPECT_TRUE(used.insert(key).second) << text.toStdString();
        }
    }
}

TEST(FrmTallyCores, TheTabKeyGoesInReadingOrder)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    const char* chain[] = {
        "chkKR200A", "chkKR200Ulast_0", "chkKR200CSV_0",       "chkKR200HTML_0",  "txtKR200_0", "chkKR200B",
        "chkKR200X", "txtDescription",  "chkSendUnloadToDisk", "cmdEditDiskList", "chkMdb",     "cmdEditMDB",
        "cmdRun",    "cmdOk",           "cmdCancel",           "cmdApply"};
    const QWidget* at = &form;
    for (const char* name : chain) {
        const QWidget* sought = &Find<QWidget>(form, name);
        do
            at = at->nextInFocusChain();
        while (at != sought && at != &form);
        ASSERT_EQ(at, sought) << name;
    }
}

TEST(FrmTallyCores, EscCancelsAndEnterIsOk)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& cancelled = bench.View(1);
    Type(Find<QLineEdit>(cancelled, "txtDescription"), "Mill");
    PressKey(cancelled, Qt::Key_Escape);
    EXPECT_EQ(bench.Panel(1), nullptr);
    EXPECT_EQ(bench.Record(1).LoggerDescription, "");

    frmTallyCores& accepted = bench.View(1);
    Type(Find<QLineEdit>(accepted, "txtDescription"), "Mill");
    EXPECT_TRUE(Find<QPushButton>(accepted, "cmdOk").isDefault());
    PressKey(accepted, Qt::Key_Return);
    EXPECT_EQ(bench.Panel(1), nullptr);
    EXPECT_EQ(bench.Record(1).LoggerDescription, "Mill");
}

} // namespace harvelop::test
