// The program area of flash memory: at the next reset, or at once in the bootstrap monitor.
#include "loading/clear_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* Erased = "Erasing FLASH memory\r\nErase successful\r\n";

struct ClearKR4Flash : ClearTest {
    ClearKR4Flash()
    {
        far->Answer("DELONRESET", "DELONRESET\r\n");
        far->Answer("DELFLASHONRESET", "DELFLASHONRESET\r\n");
        Connect();
    }
    void Clear() { heart.clearing.ClearFlash(); }
    void ClearAsked()
    {
        dialogs.Expect(BoxAnswer::Yes);
        dialogs.Expect(BoxAnswer::Ok);
        Clear();
    }
};

struct ClearOlderFlash : ClearTest {
    ClearOlderFlash() : ClearTest("KR200 Series 3")
    {
        far->Answer(Bootstrap, "Bootstrap mode\r\n>\r\n");
        far->Answer("EF 60000,1", Erased);
        far->Answer("J", "Tallycore 200 Initialising\r\nDone.\r\n");
        Connect();
    }
    void Clear() { heart.clearing.ClearFlash(); }
    void ClearAsked()
    {
        dialogs.Expect(BoxAnswer::Yes);
        dialogs.Expect(BoxAnswer::Ok);
        Clear();
    }
    // With a logger that is as before again.
    void ClearWith(const std::string& line, const std::string& reply)
    {
        far->Answer(line, reply);
        Forget();
        heart.link.DefaultTimeout = 2000;
        ClearAsked();
    }
};

} // namespace

TEST_F(ClearKR4Flash, IsOrderedForTheNextResetWhichIsLeftToTheLogger)
{
    ClearAsked();
    EXPECT_THAT(journal,
                ElementsAre("! You are about to erase the program area of Flash in the KR400 on Com 3. This will "
                            "permanently delete any tallyCore programs stored in Flash. Programs stored on the "
                            "internal B: drive and those stored o memory cards will not be affected. \r\rClick Yes to "
                            "erase the Flash in the tallyCore, or click No to exit.",
                            "- Erasing Flash ...", "> DELONRESET", "> DELFLASHONRESET",
                            "! Flash successfully erased in the KR400 on Com 3.     "));
    EXPECT_EQ(Boxes()[0].title, " Harvel");
    EXPECT_EQ(Boxes()[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(Boxes()[0].buttons, BoxButtons::YesNo);
    EXPECT_EQ(Boxes()[1].title, " Harvel");
    EXPECT_EQ(Boxes()[1].icon, BoxIcon::Information);
    EXPECT_THAT(Times(), ElementsAre(0, 10));
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearKR4Flash, ARefusalEndsItWithoutAWord)
{
    dialogs.Expect(BoxAnswer::No);
    Clear();
    EXPECT_THAT(far->lines, IsEmpty());
    EXPECT_THAT(Steps(), IsEmpty());
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearKR4Flash, IsNotAskedForWithoutLoadMessages)
{
    heart.options.ShowLoadMessages = false;
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(Lines(), ElementsAre("DELONRESET", "DELFLASHONRESET"));
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(ClearKR4Flash, OnlyTheSecondAnswerCounts)
{
    far->Answer("DELONRESET", "");
    ClearAsked();
    EXPECT_EQ(Boxes().back().icon, BoxIcon::Information);
    far->Answer("DELONRESET", "DELFLASHONRESET\r\n"); // it is not the second one's
    far->Answer("DELFLASHONRESET", "");
    Forget();
    ClearAsked();
    EXPECT_EQ(Boxes().back(), (Box{"There was an error erasing the Flash in the KR400 on Com 3.     \r\r", " Harvel",
                                   BoxIcon::Critical}));
    EXPECT_THAT(Lines(), ElementsAre("DELONRESET", "DELFLASHONRESET", "J"));
    EXPECT_EQ(Since(far->lines.back()), 1000);
}

TEST_F(ClearKR4Flash, SpeaksTheUsersLanguage)
{
    UseNumberedTexts();
    ClearAsked();
    EXPECT_THAT(Boxes(), ElementsAre(Box{"<637> KR400 on Com 3. <638>. \r\r<639>.", " Harvel", BoxIcon::Exclamation,
                                         BoxButtons::YesNo},
                                     Box{"<640> KR400 on Com 3.     ", " Harvel", BoxIcon::Information}));
    EXPECT_THAT(Steps(), ElementsAre("<350> ..."));
    far->silent = true;
    ClearAsked();
    EXPECT_EQ(Boxes().back(), (Box{"<641> KR400 on Com 3.     \r\r", " Harvel", BoxIcon::Critical}));
}

TEST_F(ClearOlderFlash, IsErasedInTheBootstrapMonitor)
{
    ClearAsked();
    EXPECT_THAT(
        journal,
        ElementsAre("! WARNING : You are about to clear the Flash in the KR200 Series 3 on Com 3. This action requires "
                    "that the tallyCore be reset, which will also delete all programs currently running in the "
                    "tallyCore and will permanently erase any Data stored in internal memory. Programs and Data stored "
                    "on memory cards will not be affected.\r\rClick Yes to delete all programs and Data stored in "
                    "internal memory, and to erase the Flash in the tallyCore, or click No to exit.",
                    "- Erasing tallyCore Flash RAM ...", "> H",
                    "> \x1a"
                    "BOOTSTRAP",
                    "> EF 60000,1", "- tallyCore Flash RAM Erased", "- Resetting tallyCore ...", "> J",
                    "- tallyCore Reset", "! Flash successfully erased in the KR200 Series 3 on Com 3.     "));
    EXPECT_EQ(Boxes()[0].title, " tallyCore Harvel");
    EXPECT_EQ(Boxes()[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(Boxes()[0].buttons, BoxButtons::YesNo);
    EXPECT_EQ(Boxes()[1].title, " Harvel");
    EXPECT_EQ(Boxes()[1].icon, BoxIcon::Information);
    EXPECT_EQ(heart.link.DefaultTimeout, 2000);
    EXPECT_THAT(Times(), ElementsAre(0, 3000, 3510, 4520));
    EXPECT_EQ(Since(far->lines.back()), 10 + 500 + 500);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearOlderFlash, TheBarGoesUpByTwosAndIsFilledAtTheEnd)
{
    std::vector<int> bar;
    pump.whenWaiting = [&](double) {
        if (messages.max == 11 && (bar.empty() || bar.back() != messages.value))
            bar.push_back(messages.value);
    };
    ClearAsked();
    EXPECT_THAT(bar, ElementsAre(0, 2, 4, 6, 8, 10, 11));
}

TEST_F(ClearOlderFlash, ARefusalIsToldForASecond)
{
    dialogs.Expect(BoxAnswer::No);
    const double before = pump.NowMs();
    Clear();
    EXPECT_THAT(far->lines, IsEmpty());
    EXPECT_THAT(Steps(), ElementsAre("Flash Program not Cleared"));
    EXPECT_TRUE(messages.Visible());
    EXPECT_EQ(pump.NowMs() - before, 1000);
}

TEST_F(ClearOlderFlash, IsNotAskedForWithoutLoadMessages)
{
    heart.options.ShowLoadMessages = false;
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Lines().size(), 4U);
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(ClearOlderFlash, AFailureAnywhereResetsTheLoggerAllTheSame)
{
    const std::string error = "There was an error erasing the Flash in the KR200 Series 3 on Com 3.     \r\r";
    ClearWith("J", "Tallycore 200 Initialising\r\n"); // it never gets done
    EXPECT_THAT(Lines(), ElementsAre("H", Bootstrap, "EF 60000,1", "J", "J"));
    EXPECT_EQ(Boxes().back(), (Box{error, " Harvel", BoxIcon::Critical}));
    EXPECT_EQ(Steps().back(), "Resetting tallyCore ...");
    EXPECT_EQ(heart.link.DefaultTimeout, 4000);
    EXPECT_EQ(Since(far->lines.back()), 1000);
    EXPECT_FALSE(messages.Visible());

    ClearWith("EF 60000,1", "Erasing FLASH memory\r\nErase failed\r\n");
    EXPECT_THAT(Lines(), ElementsAre("H", Bootstrap, "EF 60000,1", "J"));
    EXPECT_EQ(Boxes().back(), (Box{error, " Harvel", BoxIcon::Critical}));
    EXPECT_EQ(Steps().back(), "Erasing tallyCore Flash RAM ...");
    EXPECT_EQ(heart.link.DefaultTimeout, 4000);

    ClearWith(Bootstrap, "Bootstrap mode\r\n"); // one line end is not enough
    EXPECT_THAT(Lines(), ElementsAre("H", Bootstrap, "J"));
    EXPECT_EQ(Boxes().back(), (Box{error, " Harvel", BoxIcon::Critical}));
    EXPECT_EQ(heart.link.DefaultTimeout, 4000);
}

TEST_F(ClearOlderFlash, EachStepHasFourSeconds)
{
    far->Answer(Bootstrap, "Bootstrap mode\r\n>\r\n", 3900);
    far->Answer("EF 60000,1", Erased, 3900);
    far->Answer("J", "Tallycore\r\nDone.\r\n", 3900);
    ClearAsked();
    EXPECT_EQ(Boxes().back().icon, BoxIcon::Information);
    far->Answer("EF 60000,1", Erased, 4100);
    ClearAsked();
    EXPECT_EQ(Boxes().back().icon, BoxIcon::Critical);
}

TEST_F(ClearOlderFlash, WhatStoodInTheWindowErasesNothing)
{
    far->Answer(Bootstrap, std::string("Bootstrap mode\r\n>\r\n") + Erased);
    far->Answer("EF 60000,1", "");
    ClearAsked();
    EXPECT_EQ(Boxes().back().icon, BoxIcon::Critical);
}

TEST_F(ClearOlderFlash, SpeaksTheUsersLanguage)
{
    UseNumberedTexts();
    ClearAsked();
    EXPECT_THAT(Boxes(), ElementsAre(Box{"<634> KR200 Series 3 on Com 3.<635>. \r\r<636>.", " tallyCore Harvel",
                                         BoxIcon::Exclamation, BoxButtons::YesNo},
                                     Box{"<640> KR200 Series 3 on Com 3.     ", " Harvel", BoxIcon::Information}));
    EXPECT_THAT(Steps(), ElementsAre("<346> ...", "<347>", "<348> ...", "<349>"));
    Forget();
    dialogs.Expect(BoxAnswer::No);
    Clear();
    EXPECT_THAT(Steps(), ElementsAre("<663>"));
    far->silent = true;
    ClearAsked();
    EXPECT_EQ(Boxes().back(), (Box{"<641> KR200 Series 3 on Com 3.     \r\r", " Harvel", BoxIcon::Critical}));
}

} // namespace harvelop::test
