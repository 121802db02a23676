// The job chooser as the Clear button of a panel opens it, in the whole program.
#include "app/desktop_program.h"
#include "loading/far_end.h"
#include "settings/sample_loggers.h"
#include "support/test_program.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QWindow>

#include <functional>
#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

class JobChooserOfTheProgram : public testing::Test
{
protected:
    JobChooserOfTheProgram()
    {
        t.Installed();
        t.files.files[TestProgram::OptionsIni] = "ShowMessages=1\r\nShowLoadMessages=1\r\nAvailablePorts=0\r\n"
                                                 "FindPorts=0\r\n";
        t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(NetworkLogger()) + "\r\n";
        far->Identify("KR40");
        far->Answer("DIRJOBS", "*ALPHA\r\nBETA\r\n");
        far->Answer("CURJOB", "*ALPHA\r\n");
        t.sockets.Plug("10.0.0.5", 3000, far);
        t.dialogs.whileShown = [this] { t.dialogs.Expect(BoxAnswer::Yes); };
        // The chooser is the only window that is waited for: what is to happen while it stands open.
        t.pump.whenWaiting = [this](double) {
            QApplication::processEvents();
            frmDelJob* form = Chooser();
            if (form && form != m_seen) {
                m_seen = form;
                ++opened;
                work(*form);
            }
        };
        program.Start("::4");
    }

    static frmDelJob* Chooser()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* form = qobject_cast<frmDelJob*>(window); form && form->isVisible())
                return form;
        return nullptr;
    }
    frmTallyCores* Panel() { return dynamic_cast<frmTallyCores*>(p.panels.At(1)); }
    static QPushButton& Button(const QWidget& form, const char* name)
    {
        auto* button = form.findChild<QPushButton*>(name);
        if (!button)
            throw std::runtime_error(std::string("no button ") + name);
        return *button;
    }
    void Clear()
    {
        m_seen = nullptr;
        Button(*Panel(), "cmdProgramClear").click();
    }
    std::string LastBox() const { return t.dialogs.shown.empty() ? "" : t.dialogs.shown.back().text; }
    bool Sent(const std::string& text) const
    {
        return std::any_of(far->lines.begin(), far->lines.end(), [&](const auto& line) { return line.text == text; });
    }

    std::shared_ptr<FarEnd> far = std::make_shared<FarEnd>();
    int opened = 0;
    std::function<void(frmDelJob&)> work = [](frmDelJob& form) { form.close(); };
    TestProgram t;
    DesktopProgram program{{t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop}};
    Program& p = program.heart;

private:
    const frmDelJob* m_seen = nullptr;
};

} // namespace

TEST_F(JobChooserOfTheProgram, DeletesTheJobThatIsChosen)
{
    work = [this](frmDelJob& form) {
        auto& jobs = *form.findChild<QComboBox*>("cbxJobs");
        EXPECT_EQ(jobs.count(), 3);
        EXPECT_FALSE(Button(*Panel(), "cmdProgramClear").isEnabled());
        EXPECT_EQ(form.windowHandle()->transientParent(), Panel()->windowHandle()); // it stands over its panel
        jobs.setCurrentIndex(1);
        Button(form, "cmdYes").click();
    };
    Clear();
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(Sent("DELJOB\"BETA\""));
    EXPECT_EQ(LastBox(), "The Job BETA has been successfully deleted.     ");
    EXPECT_TRUE(Button(*Panel(), "cmdProgramClear").isEnabled());
    EXPECT_EQ(p.link.LinkMode, "None");
}

TEST_F(JobChooserOfTheProgram, ASecondOneBeginsAnew)
{
    work = [](frmDelJob& form) { Button(form, "cmdYes").click(); };
    Clear();
    EXPECT_TRUE(Sent("DELJOB\"ALPHA\""));
    far->lines.clear();
    far->Answer("DIRJOBS", "GAMMA\r\n");
    work = [](frmDelJob& form) {
        EXPECT_EQ(form.findChild<QComboBox*>("cbxJobs")->count(), 2);
        EXPECT_EQ(form.findChild<QComboBox*>("cbxJobs")->currentText(), "GAMMA");
        form.close();
    };
    Clear();
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(LastBox(), "No Jobs deleted.     ");
    EXPECT_FALSE(Sent("DELJOB\"ALPHA\""));
}

TEST_F(JobChooserOfTheProgram, GoesOnWhenItsPanelIsClosed)
{
    p.state.LaunchCommand.clear(); // as if the panel had been opened from the options
    work = [this](frmDelJob& form) {
        Panel()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
        EXPECT_FALSE(Panel());
        EXPECT_TRUE(form.isVisible());
        Button(form, "cmdYes").click();
    };
    Clear();
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(LastBox(), "The Job ALPHA has been successfully deleted.     ");
    EXPECT_EQ(p.link.LinkMode, "None");
    EXPECT_FALSE(p.state.ClearMode);
    EXPECT_FALSE(p.end.Ended());
}

TEST_F(JobChooserOfTheProgram, IsLeftWhenTheProgramEnds)
{
    size_t sent = 0;
    work = [&](frmDelJob&) {
        sent = far->lines.size();
        p.end.EndProgram();
    };
    Clear();
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(far->lines.size(), sent);
    EXPECT_EQ(p.link.LinkMode, "None");
}

TEST_F(JobChooserOfTheProgram, ALinkThatClosesMeanwhileIsToldAsAnError)
{
    work = [this](frmDelJob& form) {
        t.sockets.made.back()->PeerCloses();
        t.pump.After(200, [&form] { Button(form, "cmdYes").click(); });
    };
    Clear();
    EXPECT_EQ(LastBox(), "There was an error deleting the Job ALPHA");
    EXPECT_TRUE(Button(*Panel(), "cmdProgramClear").isEnabled());
}

} // namespace harvelop::test
