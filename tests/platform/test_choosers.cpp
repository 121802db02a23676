#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

// Does `work` with the chooser that opens next. One that is still there afterwards is closed and fails the test.
void withNext(const std::function<void(QFileDialog&)>& work)
{
    auto* looking = new QTimer(qApp);
    QObject::connect(looking, &QTimer::timeout, looking, [looking, work] {
        const QPointer<QFileDialog> chooser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!chooser)
            return;
        looking->stop();
        looking->deleteLater();
        work(*chooser);
        if (chooser && chooser->isVisible()) {
            ADD_FAILURE() << "the chooser still stands open";
            chooser->reject();
        }
    });
    looking->start(1);
}

// Types a name into the field that has the keys when the chooser opens.
void type(QFileDialog& chooser, const QString& name)
{
    auto* field = chooser.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_TRUE(field);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&chooser));
    ASSERT_TRUE(field->hasFocus());
    QInputMethodEvent typed; // any letters, as keyClicks knows the plain ones only
    typed.setCommitString(name);
    QApplication::sendEvent(field, &typed);
}

// Types a name and presses Enter.
void choose(QFileDialog& chooser, const QString& name)
{
    type(chooser, name);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
}

struct Choosers : testing::Test {
    void SetUp() override
    {
        ASSERT_TRUE(scratch.isValid());
        ASSERT_TRUE(QDir(scratch.path()).mkdir(QString::fromUtf8("m\xC3\xBCll, alt")));
        QFile report(scratch.path() + "/report");
        ASSERT_TRUE(report.open(QIODevice::WriteOnly));
    }
    std::string Path(const char* name = "") const { return scratch.path().toStdString() + name; }

    QTemporaryDir scratch;
    QtDialogs dialogs;
};

} // namespace

TEST_F(Choosers, AFolderIsGivenWithoutATrailingSeparator)
{
    withNext([&](QFileDialog& chooser) {
        EXPECT_EQ(chooser.windowTitle(), "Choose a Folder");
        EXPECT_EQ(chooser.directory().path(), scratch.path());
        EXPECT_EQ(chooser.fileMode(), QFileDialog::Directory);
        choose(chooser, QString::fromUtf8("m\xC3\xBCll, alt/"));
    });
    EXPECT_EQ(dialogs.BrowseFolder("Choose a Folder", Path("/")), Path("/m\xC3\xBCll, alt"));
}

TEST_F(Choosers, TheRootKeepsItsSeparator)
{
    withNext([](QFileDialog& chooser) { choose(chooser, "/"); });
    EXPECT_EQ(dialogs.BrowseFolder("Choose a Folder", Path()), "/");
}

TEST_F(Choosers, AFileIsGivenByItsPath)
{
    withNext([](QFileDialog& chooser) {
        EXPECT_EQ(chooser.fileMode(), QFileDialog::ExistingFile);
        choose(chooser, "report");
    });
    EXPECT_EQ(dialogs.OpenFile(" Choose a Program", Path(), "cmd"), Path("/report"));
}

TEST_F(Choosers, TheExtensionOfProgramsNeedNotBeTyped)
{
    for (const char* name : {"/pump.cmd", "/report.cmd"}) {
        QFile program(scratch.path() + name);
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    }
    withNext([](QFileDialog& chooser) { choose(chooser, "pump"); });
    EXPECT_EQ(dialogs.OpenFile(" Choose a Program", Path(), "cmd"), Path("/pump.cmd"));
    withNext([](QFileDialog& chooser) { choose(chooser, "report"); });
    EXPECT_EQ(dialogs.OpenFile(" Choose a Program", Path(), "cmd"), Path("/report")); // what is there as typed is meant
}

TEST_F(Choosers, WithoutItsExtensionAProgramCanBeOpenedByTheButtonToo)
{
    QFile program(scratch.path() + "/pump.exe");
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    withNext([](QFileDialog& chooser) {
        auto* open = chooser.findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open);
        type(chooser, "pum");
        EXPECT_FALSE(open->isEnabled());
        type(chooser, "p");
        EXPECT_TRUE(open->isEnabled());
        QTest::mouseClick(open, Qt::LeftButton);
    });
    EXPECT_EQ(dialogs.OpenFile(" Choose a Program", Path(), "exe"), Path("/pump.exe"));
}

TEST_F(Choosers, FilesOfEveryKindAreShown)
{
    withNext([](QFileDialog& chooser) {
        const auto* kinds = chooser.findChild<QComboBox*>("fileTypeCombo");
        ASSERT_TRUE(kinds);
        EXPECT_EQ(kinds->count(), 1);
        EXPECT_EQ(kinds->itemText(0).trimmed(), "All Files (*.*)");
        const auto* files = chooser.findChild<QFileSystemModel*>();
        ASSERT_TRUE(files);
        EXPECT_EQ(files->nameFilters(), QStringList("*"));
        chooser.reject();
    });
    EXPECT_EQ(dialogs.OpenFile(" Choose a Program", Path(), "cmd"), "");
}

TEST_F(Choosers, ACancelledOrClosedChooserGivesNothing)
{
    for (const auto& cancel :
         {std::function([](QFileDialog& chooser) { chooser.reject(); }),
          std::function([](QFileDialog& chooser) { chooser.close(); }),
          std::function([](QFileDialog& chooser) { QTest::keyClick(&chooser, Qt::Key_Escape); })}) {
        withNext(cancel);
        EXPECT_EQ(dialogs.BrowseFolder("Choose", Path()), "");
        withNext(cancel);
        EXPECT_EQ(dialogs.OpenFile("Choose", Path(), "cmd"), "");
    }
}

TEST_F(Choosers, AFolderThatIsGoneIsNoPlaceToBeginAndNoHindrance)
{
    withNext([](QFileDialog& chooser) { chooser.reject(); });
    EXPECT_EQ(dialogs.BrowseFolder("Choose", Path("/gone/long/ago/")), "");
}

TEST_F(Choosers, AChooserWhoseWindowGoesAwayGivesNothing)
{
    const QPointer<QWidget> owner = new QWidget;
    owner->show();
    owner->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(owner));
    withNext([&](QFileDialog&) { delete owner; });
    EXPECT_EQ(dialogs.BrowseFolder("Choose", Path()), "");
}

} // namespace harvelop::test
