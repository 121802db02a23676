// The job chooser.
#include "loading/clearing.h"
#include "loading/frmDelJob.h"
#include "panel_bench.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>
#include <optional>

namespace harvelop::test
{
namespace
{

struct DelJobBench : PanelBench {
    DelJobBench()
    {
        heart.forms.loadMessages = [this] { return &messages; };
        heart.progress.ShowMessageForm();
    }

    void Open(const std::vector<std::string>& jobs = {"*ALPHA", "BETA", "DIRJOBS"})
    {
        form.emplace(DelJobServices{heart.progress, heart.language, heart.loading, "KR400 on Com 3"});
        form->Show(jobs);
        QApplication::setActiveWindow(&*form);
        QApplication::processEvents();
    }

    QLabel& Text() { return Find<QLabel>(*form, "lblDeljob"); }
    QComboBox& List() { return Find<QComboBox>(*form, "cbxJobs"); }
    QPushButton& Delete() { return Find<QPushButton>(*form, "cmdYes"); }
    QPushButton& Cancel() { return Find<QPushButton>(*form, "cmdNo"); }
    bool Confirmed() const { return heart.loading.JobDeleteConfirmed; }
    const std::string& Chosen() const { return heart.loading.ChosenJob; }
    // All of the instructions can be read.
    void ExpectNotCut()
    {
        EXPECT_GE(Text().height(), Text().heightForWidth(Text().width()));
        const QSize screen = QGuiApplication::primaryScreen()->availableSize();
        EXPECT_LE(form->frameGeometry().width(), screen.width());
        EXPECT_LE(form->frameGeometry().height(), screen.height());
    }

    FakeMessages messages;
    std::optional<frmDelJob> form;
};

void pressAlt(QWidget& window, Qt::Key key)
{
    QTest::keyClick(&window, key, Qt::AltModifier);
}

} // namespace

TEST(FrmDelJob, ExplainsAndOffersTheJobs)
{
    DelJobBench bench;
    bench.Open();
    EXPECT_EQ(bench.form->windowTitle(), "Delete a Job in the KR400");
    EXPECT_EQ(
        bench.Text().text(),
        "Caution : Below is a list of all Jobs running in the KR400 on Com 3. The DIRJOBS entry represents all "
        "Jobs. The job with the star in front of it is the current Job. Choose DIRJOBS to delete all Jobs running "
        "in the KR400, or choose one of the other Jobs just to delete that Job. Note that this action cannot be "
        "reversed and the job(s) you choose will be permanently deleted. \n\n"
        "Select a Job from the list and Click Delete to permanently delete it, or click Cancel to exit.");
    EXPECT_EQ(bench.List().count(), 3);
    EXPECT_EQ(bench.List().currentText(), "*ALPHA");
    EXPECT_EQ(bench.List().itemText(2), "DIRJOBS");
    EXPECT_FALSE(bench.List().isEditable());
    EXPECT_EQ(bench.Delete().text(), "&Delete");
    EXPECT_EQ(bench.Cancel().text(), "&Cancel");
    EXPECT_FALSE(Find<QLabel>(*bench.form, "Image1").pixmap().isNull());
    EXPECT_TRUE(bench.form->IsVisible());
    EXPECT_FALSE(bench.form->isModal()); // all other windows stay live
    bench.ExpectNotCut();
}

TEST(FrmDelJob, ProgressIsHiddenWhileItStandsOpen)
{
    for (const char* button : {"cmdYes", "cmdNo", ""}) {
        DelJobBench bench;
        EXPECT_TRUE(bench.messages.Visible());
        bench.Open();
        EXPECT_FALSE(bench.messages.Visible());
        if (*button)
            Find<QPushButton>(*bench.form, button).click();
        else
            bench.form->close();
        EXPECT_FALSE(bench.form->IsVisible());
        EXPECT_TRUE(bench.messages.Visible());
    }
}

TEST(FrmDelJob, DeleteTakesTheJobWithoutItsStarAndBlanks)
{
    DelJobBench bench;
    bench.Open({"* AL PHA", "BETA", "DIRJOBS"});
    bench.Delete().click();
    EXPECT_TRUE(bench.Confirmed());
    EXPECT_EQ(bench.Chosen(), "ALPHA");
    bench.Open();
    bench.List().setCurrentIndex(2);
    bench.Delete().click();
    EXPECT_EQ(bench.Chosen(), "DIRJOBS");
}

TEST(FrmDelJob, CancelConfirmsNothing)
{
    DelJobBench bench;
    bench.heart.loading.JobDeleteConfirmed = true;
    bench.heart.loading.ChosenJob = "OLD";
    bench.Open();
    bench.Cancel().click();
    EXPECT_FALSE(bench.Confirmed());
    EXPECT_EQ(bench.Chosen(), "OLD");
}

TEST(FrmDelJob, EscAndClosingConfirmNothing)
{
    DelJobBench bench;
    bench.Open();
    QTest::keyClick(&bench.List(), Qt::Key_Escape);
    EXPECT_FALSE(bench.form->IsVisible());
    EXPECT_FALSE(bench.Confirmed());
    bench.Open();
    bench.form->close();
    EXPECT_FALSE(bench.form->IsVisible());
    EXPECT_FALSE(bench.Confirmed());
    EXPECT_EQ(bench.Chosen(), "");
}

TEST(FrmDelJob, IsWorkedByTheKeyboard)
{
    DelJobBench bench;
    bench.Open();
    EXPECT_TRUE(bench.List().hasFocus());
    EXPECT_EQ(bench.List().accessibleName(), "Job");
    QTest::keyClick(&bench.List(), Qt::Key_Down);
    EXPECT_EQ(bench.List().currentText(), "BETA");
    QTest::keyClick(&bench.List(), Qt::Key_Tab);
    EXPECT_TRUE(bench.Delete().hasFocus());
    QTest::keyClick(&bench.Delete(), Qt::Key_Tab);
    EXPECT_TRUE(bench.Cancel().hasFocus());
    QTest::keyClick(&bench.Cancel(), Qt::Key_Backtab);
    QTest::keyClick(&bench.Delete(), Qt::Key_Return); // the button that has the focus
    EXPECT_TRUE(bench.Confirmed());
    EXPECT_EQ(bench.Chosen(), "BETA");
}

TEST(FrmDelJob, EnterInTheListCancels)
{
    DelJobBench bench;
    bench.Open();
    EXPECT_TRUE(bench.Cancel().isDefault());
    QTest::keyClick(&bench.List(), Qt::Key_Return);
    EXPECT_FALSE(bench.form->IsVisible());
    EXPECT_FALSE(bench.Confirmed());
}

TEST(FrmDelJob, MnemonicsPressItsButtons)
{
    DelJobBench bench;
    bench.Open();
    pressAlt(*bench.form, Qt::Key_D);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.Confirmed(); }));
    bench.Open();
    pressAlt(*bench.form, Qt::Key_C);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.form->IsVisible(); }));
    EXPECT_FALSE(bench.Confirmed());
}

TEST(FrmDelJob, ALongNameWidensNothingAndGoesThroughByteForByte)
{
    DelJobBench bench;
    bench.Open();
    const int natural = bench.form->width();
    const std::string name = "M\xFChle\xC3\xBC\x01&" + std::string(4000, 'x');
    bench.Open({"*" + name, "DIRJOBS"});
    EXPECT_EQ(bench.form->width(), natural);
    bench.ExpectNotCut();
    bench.Delete().click();
    EXPECT_EQ(bench.Chosen(), name);
}

TEST(FrmDelJob, FiveHundredJobsAreOfferedAtOnce)
{
    std::vector<std::string> jobs;
    for (int i = 1; i <= 500; ++i)
        jobs.push_back("JOB" + std::to_string(i));
    jobs.emplace_back("DIRJOBS");
    DelJobBench bench;
    bench.Open(jobs);
    EXPECT_EQ(bench.List().count(), 501);
    EXPECT_EQ(bench.List().currentIndex(), 0);
    QTest::keyClick(&bench.List(), Qt::Key_End);
    EXPECT_EQ(bench.List().currentText(), "DIRJOBS");
    bench.List().showPopup();
    const QWidget* popup = bench.List().view()->window();
    EXPECT_LE(popup->height(), QGuiApplication::primaryScreen()->availableSize().height());
    bench.List().hidePopup();
}

TEST(FrmDelJob, SpeaksTheUsersLanguageEachPieceInItsFont)
{
    DelJobBench bench;
    bench.Speak("Font1=Courier\r\nFont2=Times\r\n150:1:9:Auftrag\r\n151:1:11:Eins <b>\r\n152:2:12:Zwei & \"zwei\"\r\n"
                "153:3:0:Drei\r\n154:1:14:Weg\r\n155:2:15:Nein\r\n");
    bench.Open();
    EXPECT_EQ(bench.form->windowTitle(), "Auftrag");
    EXPECT_EQ(bench.Text().text(), "<span style=\"font-family:'Courier';font-size:11pt;\">Eins &lt;b&gt; KR400 on Com "
                                   "3. </span><span style=\"font-family:'Times';font-size:12pt;\">Zwei &amp; "
                                   "&quot;zwei&quot;. <br><br></span><span style=\"\">Drei.</span>");
    EXPECT_EQ(bench.Text().textFormat(), Qt::RichText);
    EXPECT_EQ(bench.Delete().text(), "Weg");
    EXPECT_EQ(bench.Delete().font().family(), "Courier");
    EXPECT_EQ(bench.Delete().font().pointSize(), 14);
    EXPECT_EQ(bench.Cancel().text(), "Nein");
    EXPECT_EQ(bench.Cancel().font().family(), "Times");
    EXPECT_EQ(bench.Cancel().font().pointSize(), 15);
    bench.ExpectNotCut();
}

TEST(FrmDelJob, LongTextsInALargeFontAreNotCut)
{
    DelJobBench bench;
    std::string words;
    for (int i = 0; i < 20; ++i)
        words += "Auftragsbezeichnung ";
    bench.Speak("151:1:12:" + words + "\r\n152:1:12:" + words + "\r\n153:1:12:" + words + "\r\n");
    bench.Open();
    bench.ExpectNotCut();
}

TEST(FrmDelJob, InALargeFontNothingIsCut)
{
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSize(before.pointSize() * 2);
    QApplication::setFont(large);
    DelJobBench bench;
    bench.Open();
    QApplication::setFont(before);
    bench.ExpectNotCut();
}

TEST(FrmDelJob, CanBeMadeWider)
{
    DelJobBench bench;
    bench.Open();
    const int list = bench.List().width();
    const int button = bench.Delete().width();
    bench.form->resize(bench.form->size() + QSize(200, 100));
    QApplication::processEvents();
    EXPECT_EQ(bench.List().width(), list + 200);
    EXPECT_EQ(bench.Delete().width(), button);
    bench.ExpectNotCut();
}

} // namespace harvelop::test
