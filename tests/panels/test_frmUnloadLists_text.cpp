// What is typed and pasted into the editor of the delivery lists, and what of it is stored.
#include "lists_fixture.h"

#include <QClipboard>
#include <QTest>

namespace harvelop::test
{
namespace
{

struct TextOfUnloadLists : testing::Test, ListsFixture {
};

std::string numbered(int count, const std::string& before, const std::string& lineEnd)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += before + "a" + std::to_string(i) + "@example.com" + lineEnd;
    return text;
}

TEST_F(TextOfUnloadLists, TypedCharacterThatIsNotAllowedVanishesAtOnce)
{
    open("0:ann@example.com\r\n");
    Type(txtList(), "b o-b+<>\"',;:(é\t ");
    EXPECT_EQ(list(), "ann@example.com\nbob");
    txtList().moveCursor(QTextCursor::Start);
    Type(txtList(), " x ");
    EXPECT_EQ(list(), "xann@example.com\nbob");
    EXPECT_EQ(txtList().textCursor().position(), 1);
}

TEST_F(TextOfUnloadLists, UndoGoesBeyondACharacterTakenBack)
{
    open("");
    Type(txtList(), "ab c ");
    EXPECT_EQ(list(), "abc");
    for (int i = 0; i < 10; ++i)
        txtList().undo();
    EXPECT_EQ(list(), "");
    for (int i = 0; i < 10; ++i)
        txtList().redo();
    EXPECT_EQ(list(), "abc");
    txtList().undo();
    EXPECT_EQ(afterOk(), "0:abc\r\n"); // also if the character is back
}

TEST_F(TextOfUnloadLists, PastedTextIsFilteredWhenItIsStored)
{
    open("");
    QApplication::clipboard()->setText("<ann@example.com>, \nmy-name @ example.com;\n");
    txtList().paste();
    EXPECT_EQ(list(), "<ann@example.com>, \nmy-name @ example.com;\n"); // its last character is allowed
    cbxSchedules().setCurrentIndex(1);
    cbxSchedules().setCurrentIndex(0);
    EXPECT_EQ(list(), "ann@example.com\nmyname@example.com\n");
    EXPECT_EQ(afterOk(), "0:ann@example.com\r\n0:myname@example.com\r\n");
}

TEST_F(TextOfUnloadLists, ForbiddenEndOfAPastedTextIsTakenBackWhole)
{
    open("");
    QApplication::clipboard()->setText("ann" + QString(200000, ' '));
    txtList().paste();
    EXPECT_EQ(list(), "ann");
}

TEST_F(TextOfUnloadLists, LineBreakOfAnyKindSeparatesAddresses)
{
    open("");
    Type(txtList(), "ann");
    QTest::keyClick(&txtList(), Qt::Key_Return, Qt::ShiftModifier);
    Type(txtList(), "bob");
    QApplication::clipboard()->setText("\r\ncarl\ndora");
    txtList().paste();
    EXPECT_EQ(afterOk(), "0:ann\r\n0:bob\r\n0:carl\r\n0:dora\r\n");
}

TEST_F(TextOfUnloadLists, PasteOfAnyKindIsOneAddressALine)
{
    struct Row {
        QString pasted;
        std::string stored;
    };
    const Row rows[] = {
        {"ann\rbob\r", "0:ann\r\n0:bob\r\n"},
        {"ann\r\n\r\nbob", "0:ann\r\n0:bob\r\n"},
        {QString("ann") + QChar(QChar::LineSeparator) + "bob", "0:ann\r\n0:bob\r\n"},
        {QString("ann") + QChar(QChar::ParagraphSeparator) + "bob", "0:ann\r\n0:bob\r\n"},
        {QString("a") + QChar(QChar::Null) + "nn\t\v\n" + QChar(QChar::Nbsp) + "b\xC3\xA9ob", "0:ann\r\n0:bob\r\n"},
        {QString("ann") + QChar(QChar::Null), "0:ann\r\n"},
        {"0:ann\nA;bob", "0:0ann\r\n0:Abob\r\n"},
        {QString("\n").repeated(30) + "lost", ""},
        {QString(6000, 'a'), "0:" + std::string(5000, 'a') + "\r\n"},
        {QString::fromStdString(numbered(25, "", "\r\n")), numbered(19, "0:", "\r\n")},
    };
    for (const auto& [pasted, stored] : rows) {
        open("");
        QApplication::clipboard()->setText(pasted);
        txtList().paste();
        EXPECT_EQ(afterOk(), stored);
    }
}

TEST_F(TextOfUnloadLists, LinesThatAreNoTextAreShownAndOnlyTheListOnTheScreenIsFiltered)
{
    const std::string odd = "\xFF-\x01\xC3\xA9x";
    open("0:" + odd + "\r\nA:" + odd + "\r\nA;" + odd + "\r\n");
    EXPECT_EQ(afterOk(), "A;" + odd + "\r\n0:x\r\nA:" + odd + "\r\n");
}

TEST_F(TextOfUnloadLists, LineEndPastedIntoADescriptionStaysInItsLine)
{
    open("");
    QApplication::clipboard()->setText("one\nA:two, \xC3\xA9");
    txtDescription().paste();
    EXPECT_EQ(afterOk(), "0;one A:two, \xC3\xA9\r\n");
}

TEST_F(TextOfUnloadLists, BytesOfAnUntouchedDescriptionStay)
{
    open("A;Gr\xFC\xDF\x65\r\n");
    cbxSchedules().setCurrentIndex(1);
    EXPECT_EQ(afterOk(), "A;Gr\xFC\xDF\x65\r\n");
}

TEST_F(TextOfUnloadLists, TwentiethAddressIsDropped)
{
    open("");
    txtList().setPlainText(QString::fromStdString(numbered(20, "", "\n")));
    cbxSchedules().setCurrentIndex(1);
    cbxSchedules().setCurrentIndex(0);
    EXPECT_EQ(list(), numbered(19, "", "\n"));
    EXPECT_EQ(afterOk(), numbered(19, "0:", "\r\n"));
}

TEST_F(TextOfUnloadLists, TextEndsAtFiveThousandCharacters)
{
    open("");
    txtList().setPlainText(QString(2500, 'a') + "\n" + QString(2500, 'b') + "\nccc");
    EXPECT_EQ(afterOk(), "0:" + std::string(2500, 'a') + "\r\n0:" + std::string(2498, 'b') + "\r\n");
}

TEST_F(TextOfUnloadLists, HugeLinesOfTheFileAreShownAtOnce)
{
    const std::string huge(1 << 20, 'a');
    open("0;" + huge + "\r\n0:" + huge + "\r\n");
    QCoreApplication::processEvents();
    EXPECT_EQ(afterOk(), "0;" + huge + "\r\n0:" + std::string(5000, 'a') + "\r\n");
}

} // namespace
} // namespace harvelop::test
