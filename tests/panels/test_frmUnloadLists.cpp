#include "lists_fixture.h"
#include "panels/frmSupport.h"

#include <QLabel>
#include <QTest>
#include <QTimer>

namespace harvelop::test
{
namespace
{

struct FrmUnloadLists : testing::Test, ListsFixture {
};

TEST_F(FrmUnloadLists, CaptionNamesTheKindAndTheLogger)
{
    open("");
    EXPECT_EQ(form->windowTitle().toStdString(), " Email List for the " + heart.link.LinkDescription);
    EXPECT_FALSE(heart.link.LinkDescription.empty());
}

TEST_F(FrmUnloadLists, SchedulesFollowTheFamily)
{
    open("");
    ASSERT_EQ(cbxSchedules().count(), 13);
    EXPECT_EQ(cbxSchedules().itemText(0), "All Schedules");
    EXPECT_EQ(cbxSchedules().itemText(12), "Schedule X");
    EXPECT_EQ(cbxSchedules().currentIndex(), 0);
    choose(1);
    open("", OlderPath);
    ASSERT_EQ(cbxSchedules().count(), 6);
    EXPECT_EQ(cbxSchedules().itemText(5), "Schedule X");
}

TEST_F(FrmUnloadLists, OpensWithTheListOfAllSchedules)
{
    open("0;Everyone\r\nA;Only A\r\n0:ann@example.com\r\nA:no\r\n0:bob@example.com\r\n");
    EXPECT_EQ(list(), "ann@example.com\nbob@example.com\n");
    EXPECT_EQ(description(), "Everyone");
    EXPECT_TRUE(txtList().textCursor().atEnd());
    EXPECT_TRUE(files.writes.empty() || files.writes.back() != Path);
}

TEST_F(FrmUnloadLists, MissingFileIsCreatedEmptyOnOpening)
{
    form = std::make_unique<frmUnloadLists>(heart.panelServices(), nullptr);
    EXPECT_EQ(files.files.at(Path), "");
    EXPECT_EQ(list(), "");
    EXPECT_EQ(txtList().placeholderText(), "One address a line, at most 19.");
}

TEST_F(FrmUnloadLists, OnlyTheKindEmailReadsTheFile)
{
    heart.state.ListKind = "Disk";
    heart.lists.Tables().ListDescriptions[0] = "in memory";
    open("0;from the file\r\n");
    EXPECT_EQ(form->windowTitle().toStdString(), " Disk List for the " + heart.link.LinkDescription);
    EXPECT_EQ(description(), "in memory");
    EXPECT_EQ(std::count(files.reads.begin(), files.reads.end(), Path), 0);
}

TEST_F(FrmUnloadLists, SwitchingSchedulesAndBackShowsTheEdits)
{
    open("0;Everyone\r\n0:ann@example.com\r\nX;Alarms\r\nX:eve@example.com\r\n");
    Type(txtList(), "bob@example.com");
    txtDescription().setText("All of us");
    cbxSchedules().setCurrentIndex(12);
    EXPECT_EQ(list(), "eve@example.com\n");
    EXPECT_EQ(description(), "Alarms");
    EXPECT_TRUE(txtList().textCursor().atEnd());
    cbxSchedules().setCurrentIndex(0);
    EXPECT_EQ(list(), "ann@example.com\nbob@example.com\n");
    EXPECT_EQ(description(), "All of us");
    EXPECT_EQ(files.files[Path], "0;Everyone\r\n0:ann@example.com\r\nX;Alarms\r\nX:eve@example.com\r\n");
}

TEST_F(FrmUnloadLists, OkWritesAllSchedules)
{
    open("");
    Type(txtList(), "ann@example.com");
    PressKey(txtList(), Qt::Key_Return, "\r");
    Type(txtList(), "bob@example.com");
    Type(txtDescription(), "To: all; of us");
    cbxSchedules().setCurrentIndex(11);
    Type(txtList(), "k@example.com");
    EXPECT_EQ(afterOk(), "0;To: all; of us\r\n0:ann@example.com\r\n0:bob@example.com\r\nK:k@example.com\r\n");
}

TEST_F(FrmUnloadLists, ScheduleXOfTheOlderFamilyFollowsD)
{
    choose(1);
    open("E:lost\r\nK;lost\r\nX:x@example.com\r\n", OlderPath);
    cbxSchedules().setCurrentIndex(5);
    EXPECT_EQ(list(), "x@example.com\n");
    txtDescription().setText("Alarms");
    EXPECT_EQ(afterOk(OlderPath), "X;Alarms\r\nX:x@example.com\r\n");
}

TEST_F(FrmUnloadLists, NothingIsStoredByClosingInAnyWay)
{
    const std::string before = "0;Everyone\r\n0:ann@example.com\r\n";
    for (const bool escape : {false, true}) {
        open(before);
        Type(txtList(), "bob");
        cbxSchedules().setCurrentIndex(1);
        Type(txtList(), "carl");
        if (escape)
            PressKey(txtList(), Qt::Key_Escape);
        else
            form->close();
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(files.files[Path], before);
    }
    open(before); // and it is forgotten
    EXPECT_EQ(list(), "ann@example.com\n");
}

TEST_F(FrmUnloadLists, DeleteAllAsksAndEmptiesEverySchedule)
{
    FakeAddDialog addDialog;
    heart.forms.add = &addDialog;
    heart.state.AddDialogOpen = true;
    const std::string before = "0;Everyone\r\nX;Alarms\r\n0:ann\r\nX:eve\r\n";
    open(before);
    dialogs.Expect(BoxAnswer::Yes);
    click("cmdDeleteAllEmails");
    ASSERT_EQ(dialogs.shown.size(), 1u);
    const Box& box = dialogs.shown[0];
    EXPECT_EQ(box.text, "Are you sure you want to remove all email addresses and descriptions for all schedules for "
                        "this tallyCore ?     ");
    EXPECT_EQ(box.title, " tallyCore Harvel");
    EXPECT_EQ(box.icon, BoxIcon::Exclamation);
    EXPECT_EQ(box.buttons, BoxButtons::YesNo);
    EXPECT_EQ(addDialog.steps, (std::vector<std::string>{"clear", "set"}));
    EXPECT_EQ(list(), "");
    EXPECT_EQ(description(), "");
    cbxSchedules().setCurrentIndex(12);
    EXPECT_EQ(list(), "");
    EXPECT_EQ(description(), "");
    EXPECT_EQ(files.files[Path], before); // nothing is written yet
    EXPECT_EQ(afterOk(), "");
}

TEST_F(FrmUnloadLists, NoKeepsEverything)
{
    open("0;Everyone\r\n0:ann\r\n");
    dialogs.Expect(BoxAnswer::No);
    Type(txtList(), "bob");
    click("cmdDeleteAllEmails");
    EXPECT_EQ(list(), "ann\nbob");
    EXPECT_EQ(afterOk(), "0;Everyone\r\n0:ann\r\n0:bob\r\n");
}

TEST_F(FrmUnloadLists, WindowClosedWhileTheQuestionStandsChangesNothing)
{
    open("0:ann\r\n");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.whileShown = [this] { form->close(); };
    click("cmdDeleteAllEmails");
    EXPECT_EQ(heart.lists.Tables().Lists(2)->at(0)[0], "ann");
    EXPECT_EQ(files.files[Path], "0:ann\r\n");
}

TEST_F(FrmUnloadLists, WindowGoneWhileTheQuestionStandsIsNoHarm)
{
    open("0:ann\r\n");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.whileShown = [this] { form.reset(); };
    auto& button = Find<QPushButton>(*form, "cmdDeleteAllEmails");
    QMetaObject::invokeMethod(&button, "clicked", Q_ARG(bool, false));
    EXPECT_EQ(heart.lists.Tables().Lists(2)->at(0)[0], "ann");
}

TEST_F(FrmUnloadLists, EndOfTheProgramWhileTheQuestionStandsStoresNothing)
{
    open("0:ann\r\n");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.whileShown = [this] { heart.end.EndProgram(); };
    click("cmdDeleteAllEmails");
    EXPECT_EQ(list(), "ann\n");
    EXPECT_EQ(afterOk(), "0:ann\r\n");
}

TEST_F(FrmUnloadLists, FileThatCanNotBeReadLocksTheEditor)
{
    files.unreadable.insert(Path);
    open("0:ann\r\n");
    for (const char* name : {"txtList", "txtDescription", "cmdDeleteAllEmails"}) {
        EXPECT_FALSE(Find<QWidget>(*form, name).isEnabled()) << name;
        EXPECT_EQ(Find<QWidget>(*form, name).toolTip(), "The file that keeps these lists can't be read.");
    }
    EXPECT_EQ(txtList().placeholderText(), "The file that keeps these lists can't be read.");
    cbxSchedules().setCurrentIndex(3);
    EXPECT_EQ(afterOk(), "0:ann\r\n");
}

TEST_F(FrmUnloadLists, WhatCouldNotBeSavedStandsThereAgain)
{
    open("0:ann\r\n");
    files.full = true;
    txtList().setPlainText("bob");
    EXPECT_EQ(afterOk(), "0:ann\r\n"); // no message, and it closes all the same
    open("0:ann\r\n");
    EXPECT_EQ(list(), "bob\n");
    files.full = false;
    EXPECT_EQ(afterOk(), "0:bob\r\n");
}

TEST_F(FrmUnloadLists, LanguageFileGivesTheCaptions)
{
    std::string language;
    for (const int number : {240, 241, 242, 243, 244, 247, 503})
        language += std::to_string(number) + ":" + "Sans:14:T" + std::to_string(number) + "\r\n";
    Speak(language);
    open("");
    EXPECT_EQ(form->windowTitle().toStdString(), " Email T240 " + heart.link.LinkDescription);
    EXPECT_EQ(Find<QPushButton>(*form, "cmdDeleteAllEmails").text(), "T241");
    EXPECT_EQ(Find<QLabel>(*form, "lblDescription").text(), "T242");
    EXPECT_EQ(Find<QLabel>(*form, "lblEmailAddresses").text(), "T243");
    EXPECT_EQ(Find<QPushButton>(*form, "cmdOk").text(), "T244");
    EXPECT_EQ(Find<QLabel>(*form, "lblDescription").font().pointSize(), 14);
    EXPECT_EQ(cbxSchedules().itemText(1), "Schedule A"); // have no number: meant
    dialogs.Expect(BoxAnswer::No);
    click("cmdDeleteAllEmails");
    EXPECT_EQ(dialogs.shown[0].text, "T247     ");
    EXPECT_EQ(dialogs.shown[0].title, " T503");
}

TEST_F(FrmUnloadLists, CaptionsAreThoseOfTheNumberedTexts)
{
    open("");
    for (const auto& [number, name] : {std::pair{241, "cmdDeleteAllEmails"}, {244, "cmdOk"}})
        EXPECT_EQ(Find<QPushButton>(*form, name).text().toStdString(), heart.language.Text(number));
    for (const auto& [number, name] : {std::pair{242, "lblDescription"}, {243, "lblEmailAddresses"}})
        EXPECT_EQ(Find<QLabel>(*form, name).text().toStdString(), heart.language.Text(number));
}

TEST_F(FrmUnloadLists, KeyboardReachesAllInReadingOrder)
{
    open("");
    QApplication::setActiveWindow(form.get());
    EXPECT_TRUE(txtList().hasFocus());
    for (const char* name : {"cmdDeleteAllEmails", "cmdOk", "cbxSchedules", "txtDescription", "txtList"}) {
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(form->focusWidget()->objectName().toStdString(), name);
    }
    EXPECT_EQ(list(), "");
    EXPECT_EQ(Find<QLabel>(*form, "lblEmailAddresses").buddy(), &txtList());
    EXPECT_EQ(Find<QLabel>(*form, "lblDescription").buddy(), &txtDescription());
    EXPECT_TRUE(Find<QPushButton>(*form, "cmdOk").isDefault());
}

TEST_F(FrmUnloadLists, EnterInTheDescriptionIsOk)
{
    open("");
    Type(txtDescription(), "All");
    QTest::keyClick(&txtDescription(), Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(files.files[Path], "0;All\r\n");
}

TEST_F(FrmUnloadLists, OpensWideEnoughForItsTitleButNotForOneOfAnyLength)
{
    const auto natural = [this](const std::string& link) {
        heart.link.LinkDescription = link;
        return open("").width();
    };
    const QString title = " Email List for the KR305 Series 3 via Modem on Com 14";
    const int shown = natural("KR305 Series 3 via Modem on Com 14");
    EXPECT_EQ(form->windowTitle(), title);
    EXPECT_GT(shown, form->fontMetrics().horizontalAdvance(title));
    EXPECT_GT(natural("KR305 Series 3 via Modem on Com 14 and then some"), shown);
    EXPECT_EQ(natural(std::string(200, 'x')), natural(std::string(2000, 'x')));
    EXPECT_LT(form->minimumSizeHint().width(), shown); // the user may make it smaller
}

TEST_F(FrmUnloadLists, HintIsReadableOnADarkPalette)
{
    const QPalette usual = QApplication::palette();
    QPalette dark = usual;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::PlaceholderText, Qt::black);
    QApplication::setPalette(dark);
    MakePlaceholdersLegible();
    open("");
    QColor hint = txtList().palette().color(QPalette::PlaceholderText);
    QApplication::setPalette(usual);
    hint.setAlpha(255);
    EXPECT_EQ(hint, QColor(Qt::white));
}

TEST_F(FrmUnloadLists, LoggersPanelOpensItForItsOwnLogger)
{
    files.files[Path] = "0:ann\r\n";
    View(1);
    frmTallyCores& panel = View(2);
    choose(1); // as another panel leaves it
    bool seen = false;
    QTimer::singleShot(0, [&] {
        auto* open = dynamic_cast<frmUnloadLists*>(QApplication::activeModalWidget());
        ASSERT_TRUE(open);
        seen = true;
        EXPECT_EQ(open->windowTitle().toStdString(), " Email List for the " + LinkDescriptionOf(Record(2)));
        Type(Find<QPlainTextEdit>(*open, "txtList"), "bob");
        Find<QPushButton>(*open, "cmdOk").click();
    });
    Find<QPushButton>(panel, "cmdEditEmailList").click();
    EXPECT_TRUE(seen);
    EXPECT_EQ(files.files[Path], "0:ann\r\n0:bob\r\n");
    EXPECT_TRUE(panel.isEnabled());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
} // namespace harvelop::test
