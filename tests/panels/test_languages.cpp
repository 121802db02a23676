// Every window in every language that comes with the program: nothing is cut off, no key leads to two controls.
#include "add_fixture.h"
#include "icon_bench.h"
#include "lists_fixture.h"
#include "loading/frmDelJob.h"
#include "names_bench.h"
#include "panels/cut_texts.h"
#include "panels/frmSupport.h"
#include "panels/options_fixture.h"
#include "run_bench.h"
#include "settings/frmLanguage.h"

#include <QProgressBar>
#include <QScreen>

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

namespace harvelop::test
{
namespace
{

constexpr const char* BuiltIn = "built-in";

std::string linesOf(const std::string& language)
{
    std::ifstream file(std::string(LANGUAGES_DIRECTORY) + "/" + language + ".txt", std::ios::binary);
    EXPECT_TRUE(file) << language;
    return {std::istreambuf_iterator<char>(file), {}};
}

// Nothing of what shows is cut off, no key is doubled, and the window finds room on a small screen.
void expectReadable(const QWidget& window, const std::string& where)
{
    QApplication::processEvents();
    EXPECT_THAT(CutTexts(window), testing::IsEmpty()) << where;
    EXPECT_THAT(DoubledKeys(window), testing::IsEmpty()) << where;
    constexpr QSize SmallScreen(1024, 740); // without what a desktop keeps for itself
    EXPECT_LE(window.width(), SmallScreen.width()) << where;
    EXPECT_LE(window.height(), SmallScreen.height()) << where;
}

void expectTabsReadable(const QWidget& window, const char* name, const std::string& where)
{
    auto& tabs = Find<QTabWidget>(window, name);
    for (int i = 0; i < tabs.count(); ++i) {
        tabs.setCurrentIndex(i);
        expectReadable(window, where + ", tab " + std::to_string(i));
    }
}

LoggerRecord loggerOf(const std::string& model)
{
    LoggerRecord record = SerialLogger();
    record.LoggerModel = model;
    return record;
}

class Languages : public testing::TestWithParam<const char*>
{
protected:
    template <typename Bench> void Speak(Bench& bench)
    {
        if (GetParam() != std::string(BuiltIn))
            bench.Speak(linesOf(GetParam()));
    }
};

class OptionsInLanguages : public OptionsPanel, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        if (GetParam() != std::string(BuiltIn))
            Speak(linesOf(GetParam()));
    }
};

TEST_P(OptionsInLanguages, EveryTabIsReadable)
{
    p.options.SMTPServerRequiresAuthentication = true;
    Open();
    expectTabsReadable(*form, "tsOptions", GetParam());
}

TEST_P(OptionsInLanguages, CaptionsAreTheTextsOfTheLanguage)
{
    Open();
    EXPECT_EQ(Button("cmdApply")->text().remove('&'), ToQString(p.language.Text(100)).remove('&'));
    EXPECT_EQ(Find<QGroupBox>("fraCurrent")->title().remove('&'), ToQString(p.language.Text(181)).remove('&'));
}

TEST_P(OptionsInLanguages, EmptyListIsReadable)
{
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    Show();
    expectReadable(*form, GetParam());
}

TEST_P(OptionsInLanguages, StepsOfTheProgressWindowAreReadable)
{
    Open();
    p.progress.ShowMessageForm();
    const auto* bar = messages->findChild<QProgressBar*>("pbMessages");
    for (int number = 300; number < 400; ++number) {
        p.progress.ShowProgressText(p.language.Text(number) + " KR400 via Modem on Com 16 ...");
        QApplication::processEvents();
        EXPECT_LE(bar->fontMetrics().horizontalAdvance(bar->text()), bar->width()) << bar->text().toStdString();
    }
}

TEST_P(Languages, PanelsOfEveryFamilyAreReadable)
{
    for (const char* model : {"KR400", "KR40", "KR200 Series 3", "KR20 Series 1", "KR315 Series 2", "Unknown"}) {
        PanelBench bench;
        Speak(bench);
        bench.Store({loggerOf(model)});
        frmTallyCores& panel = bench.View(1);
        const std::string where = std::string(GetParam()) + ", " + model;
        if (Find<QTabBar>(panel, "qt_tabwidget_tabbar").isEnabled())
            expectTabsReadable(panel, "tsTallycores", where);
        else
            expectReadable(panel, where);
    }
}

// Who gets along without a mouse does so in every language.
TEST_P(Languages, ControlsWithAKeyKeepOne)
{
    const auto keysOf = [](PanelBench& bench) {
        std::vector<std::string> names;
        frmTallyCores& panel = bench.View(1);
        auto& tabs = Find<QTabWidget>(panel, "tsTallycores");
        for (int i = 0; i < tabs.count(); ++i) {
            tabs.setCurrentIndex(i);
            QApplication::processEvents();
            const auto shown = ControlsWithKey(panel);
            names.insert(names.end(), shown.begin(), shown.end());
        }
        return names;
    };
    PanelBench builtIn;
    PanelBench bench;
    Speak(bench);
    builtIn.Store({loggerOf("KR400")});
    bench.Store({loggerOf("KR400")});
    const auto names = keysOf(builtIn);
    EXPECT_GT(names.size(), 30u);
    EXPECT_EQ(keysOf(bench), names);
}

TEST_P(Languages, AddDialogIsReadableForEveryKindOfLink)
{
    AddBench bench;
    Speak(bench);
    bench.Add();
    bench.form->show();
    for (const char* kind : {"optRS232", "optDialup", "optEthernet"}) {
        bench.Click(kind);
        expectReadable(*bench.form, std::string(GetParam()) + ", " + kind);
    }
}

TEST_P(Languages, ChangeOfAStoredLinkIsReadable)
{
    for (const LoggerRecord& logger : {SerialLogger(), NetworkLogger(), ModemLogger()}) {
        AddBench bench;
        Speak(bench);
        bench.Store({logger});
        bench.View(1);
        bench.Change(1);
        bench.form->show();
        expectReadable(*bench.form, std::string(GetParam()) + ", " + logger.LoggerPort);
    }
}

TEST_P(Languages, ShortcutFormIsReadable)
{
    IconBench bench;
    Speak(bench);
    bench.Store({SerialLogger()});
    bench.CreateIcon(1, [&](frmIcon& form) {
        for (const char* kind : {"optCommand", "optUnload"}) {
            Choose(form, kind);
            expectReadable(form, GetParam());
        }
    });
}

TEST_P(Languages, EditorsAreReadable)
{
    NamesBench names;
    Speak(names);
    names.Open(loggerOf("KR400"));
    expectReadable(*names.form, GetParam());
    for (const char* kind : {"Program", "Command"}) {
        RunBench run;
        Speak(run);
        run.Open(kind, runs("", ""));
        expectReadable(*run.form, GetParam());
        run.Open(kind, runs(Report, "/h/m"));
        expectReadable(*run.form, GetParam());
    }
    ListsFixture lists;
    Speak(lists);
    expectReadable(lists.open(""), GetParam());
}

TEST_P(Languages, JobChooserIsReadable)
{
    PanelBench bench;
    Speak(bench);
    frmDelJob form({bench.heart.progress, bench.heart.language, bench.heart.loading, "KR400 via Modem on Com 16"});
    form.Show({"*ALPHA", "DIRJOBS"});
    expectReadable(form, GetParam());
}

TEST_P(Languages, LanguageChooserIsReadable)
{
    Options options;
    frmLanguage form(options);
    form.show();
    expectReadable(form, GetParam());
}

constexpr const char* All[] = {BuiltIn, "English", "German", "French", "Spanish"};
const auto NameOf = [](const testing::TestParamInfo<const char*>& info) {
    return info.param == std::string(BuiltIn) ? "BuiltIn" : std::string(info.param);
};
INSTANTIATE_TEST_SUITE_P(Shipped, Languages, testing::ValuesIn(All), NameOf);
INSTANTIATE_TEST_SUITE_P(Shipped, OptionsInLanguages, testing::ValuesIn(All), NameOf);

TEST(CutTexts, FindsEveryKindOfControlThatIsTooNarrow)
{
    const QString text = "an absurdly long text that nobody would ever put on a control of so little width";
    QWidget window;
    auto* label = new QLabel(text, &window);
    auto* wrapped = new QLabel(text, &window);
    wrapped->setWordWrap(true);
    QList<QWidget*> controls = {label,
                                wrapped,
                                new QPushButton(text, &window),
                                new QCheckBox(text, &window),
                                new QRadioButton(text, &window),
                                new QGroupBox(text, &window)};
    for (QWidget* control : controls)
        control->setFixedSize(60, 20);
    auto* tabs = new QTabWidget(&window);
    tabs->addTab(new QWidget, text);
    tabs->setFixedSize(60, 40);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(CutTexts(window).size(), 7u) << testing::PrintToString(CutTexts(window));
    for (QWidget* control : controls)
        control->setFixedSize(1000, 60);
    tabs->setFixedSize(1000, 60);
    QApplication::processEvents();
    EXPECT_THAT(CutTexts(window), testing::IsEmpty());
}

TEST(CutTexts, FindsKeysThatLeadToTwoControls)
{
    QWidget window;
    QPushButton one("&Save", &window);
    QCheckBox other("Al&so", &window);
    QPushButton third("&Third", &window);
    window.show();
    one.setObjectName("one");
    other.setObjectName("other");
    EXPECT_THAT(DoubledKeys(window), testing::ElementsAre("Alt+S: one other"));
    other.hide();
    EXPECT_THAT(DoubledKeys(window), testing::IsEmpty());
}

} // namespace
} // namespace harvelop::test
