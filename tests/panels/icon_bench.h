// A logger's panel whose button asks for a shortcut, and a user who answers.
#pragma once

#include "panel_bench.h"
#include "panels/frmIcon.h"
#include "settings/sample_loggers.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace harvelop::test
{

struct IconBench : PanelBench {
    // Presses the button of the logger's panel; `answer` has the open form. A form that it leaves open is closed.
    void CreateIcon(int number, const std::function<void(frmIcon&)>& answer)
    {
        bool asked = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* form = qobject_cast<frmIcon*>(QApplication::activeModalWidget());
            ASSERT_TRUE(form);
            asked = true;
            const QPointer<frmIcon> open(form);
            answer(*form);
            if (open)
                open->close();
        });
        frmTallyCores* panel = Panel(number);
        Find<QPushButton>(panel ? *panel : View(number), "cmdCreateIcon").click();
        EXPECT_TRUE(asked);
    }

    const Shortcut& Made() const { return desktop.shortcuts.at(0); }
};

inline void Choose(const frmIcon& form, const char* kind)
{
    Find<QRadioButton>(form, kind).click();
}

inline void Ok(const frmIcon& form)
{
    auto& ok = Find<QPushButton>(form, "cmdOk");
    EXPECT_TRUE(ok.isEnabled());
    ok.click();
}

} // namespace harvelop::test
