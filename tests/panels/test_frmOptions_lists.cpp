// The two lists of the panel.
#include "panels/options_fixture.h"

namespace harvelop::test
{
namespace
{

class OptionsLists : public OptionsPanel
{
protected:
    QListWidget* List() { return Find<QListWidget>("cbxUnload_TallyCores"); }
    QPoint RowCentre(int row) { return List()->visualItemRect(List()->item(row)).center(); }
};

TEST_F(OptionsLists, SeveralRowsAreInSight)
{
    Store(5);
    Open();
    for (int row = 0; row < 5; ++row)
        EXPECT_TRUE(List()->viewport()->rect().contains(RowCentre(row))) << row;
}

TEST_F(OptionsLists, ClickChoosesALoggerAndMovesTheFocusToView)
{
    Store(3);
    Open();
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, RowCentre(1));
    EXPECT_EQ(p.state.cbxUnload_TallyCores.Selected(), 1);
    EXPECT_EQ(p.state.cbxUnload_TallyCores.Text(), "KR40 sn 2 on Com 3");
    EXPECT_TRUE(Button("cmdUnload_View")->hasFocus());
    EXPECT_FALSE(Enabled("cmdApply"));
}

TEST_F(OptionsLists, KeysMoveThroughTheListWithoutLeavingIt)
{
    Store(3);
    Open();
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::keyClick(List(), Qt::Key_Down);
    EXPECT_EQ(p.state.cbxUnload_TallyCores.Selected(), 2);
    EXPECT_TRUE(List()->hasFocus());
}

TEST_F(OptionsLists, ChoiceFromCodeMovesTheFocusToView)
{
    Store(3);
    Open();
    p.state.cbxUnload_TallyCores.Select(2);
    EXPECT_EQ(List()->currentRow(), 2);
    EXPECT_TRUE(Button("cmdUnload_View")->hasFocus());
}

TEST_F(OptionsLists, SearchThatFillsTheListLeavesTheFocus)
{
    Store(3);
    Open();
    Button("cmdOk")->setFocus();
    p.state.SearchRunning = true;
    p.state.cbxUnload_TallyCores.Select(2);
    EXPECT_TRUE(Button("cmdOk")->hasFocus());
}

TEST_F(OptionsLists, EmptyListCanBeReadInTheDark)
{
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::Text, QColor(239, 240, 241));
    dark.setColor(QPalette::PlaceholderText, Qt::black); // as a theme leaves it that does not know it
    form->setPalette(dark);
    const auto* hint = Find<QLabel>("lblEmpty");
    const int text = hint->palette().color(hint->foregroundRole()).lightness();
    EXPECT_GT(text - List()->palette().color(QPalette::Base).lightness(), 150);
}

TEST_F(OptionsLists, EmptyListSaysNothingWhileASearchRuns)
{
    p.options.AvailablePorts = "0";
    Store(1);
    Open();
    const auto* hint = Find<QLabel>("lblEmpty");
    bool hidden = false;
    t.dialogs.whileShown = [&] { hidden = List()->count() == 0 && !hint->isVisible(); };
    t.dialogs.Expect(BoxAnswer::Ok); // the loggers may go
    t.dialogs.Expect(BoxAnswer::Ok); // none found
    Click("cmdUnload_FindTallycores");
    EXPECT_TRUE(hidden);
    EXPECT_TRUE(hint->isVisible());
}

TEST_F(OptionsLists, NewLinesAreNoChoice)
{
    Store(3);
    Open();
    Button("cmdOk")->setFocus();
    p.state.cbxUnload_TallyCores.Insert(0, "KR20 on Com 1");
    EXPECT_EQ(List()->count(), 4);
    EXPECT_EQ(List()->currentRow(), 1);
    EXPECT_TRUE(Button("cmdOk")->hasFocus());
}

TEST_F(OptionsLists, DoubleClickAndEnterView)
{
    Store(2);
    Open();
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, RowCentre(1));
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, RowCentre(1));
    EXPECT_EQ(p.state.CurrentLogger, 2);
    EXPECT_EQ(panel.shows, 1);
    form->SetFormEnabled(true);
    panel.visible = false;
    List()->setFocus();
    QTest::keyClick(List(), Qt::Key_Up);
    QTest::keyClick(List(), Qt::Key_Return);
    EXPECT_EQ(p.state.CurrentLogger, 1);
    EXPECT_EQ(panel.shows, 2);
    EXPECT_FALSE(p.end.Ended());
}

TEST_F(OptionsLists, ViewOfAnEmptyListDoesNothing)
{
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    Show();
    Click("cmdUnload_View");
    EXPECT_EQ(panel.shows, 0);
    EXPECT_EQ(p.state.CurrentLogger, 0);
}

TEST_F(OptionsLists, PortChoiceEnablesApplyOnly)
{
    p.options.AvailablePorts = "1,3,";
    p.link.PortAvailable[0] = p.link.PortAvailable[2] = true;
    p.options.LastSearch = "0";
    Open();
    auto* ports = Find<QComboBox>("cbxUnload_Ports");
    ports->setFocus();
    QTest::keyClick(ports, Qt::Key_Down);
    EXPECT_EQ(p.state.cbxUnload_Ports.Text(), " Com 1");
    EXPECT_TRUE(Enabled("cmdApply"));
    EXPECT_EQ(p.options.LastSearch, "0");
}

TEST_F(OptionsLists, PortsFilledByASearchLeaveApply)
{
    p.options.AvailablePorts = "1,3,";
    p.link.PortAvailable[0] = p.link.PortAvailable[2] = true;
    Open();
    p.state.SearchRunning = true;
    p.rs232.FillPortLists(true);
    p.state.cbxUnload_Ports.Select(2);
    EXPECT_EQ(Find<QComboBox>("cbxUnload_Ports")->currentText(), " Com 3");
    EXPECT_FALSE(Enabled("cmdApply"));
}

TEST_F(OptionsLists, FormMayGoBeforeTheProgram)
{
    Open();
    form.reset();
    p.state.cbxUnload_TallyCores.Add("KR40");
    p.state.cbxUnload_Ports.Add(" Com 1");
    EXPECT_EQ(p.state.cbxUnload_TallyCores.Count(), 2);
}

} // namespace
} // namespace harvelop::test
