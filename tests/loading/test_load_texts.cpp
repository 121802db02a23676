// The words of every question and report around the sending of a program.
#include "loading/load_texts.h"
#include "loading/loading_bench.h"

namespace harvelop::test
{
namespace
{

using testing::Optional;

constexpr BoxButtons YesNo = BoxButtons::YesNo;

struct LoadTexts : LoadingTest {
    LoadTexts() { question = {false, false, false, "KR200 Series 2 on Com 3", "/home/user/pump.cmd"}; }

    std::optional<Box> Caution() const { return CautionBox(heart.language, question); }
    Box Data(bool clearing) const { return DataBox(heart.language, question, clearing); }

    LoadQuestion question;
};

TEST_F(LoadTexts, CautionForInternalMemory)
{
    EXPECT_THAT(
        Caution(),
        Optional(Box{"Caution : You are about to send a new program to the KR200 Series 2 on Com 3. This action will "
                     "permanently delete any existing programs in the tallycore's internal memory and will replace "
                     "them with the one you have selected. \r\rYou have selected the following file : "
                     "\r\r/home/user/pump.cmd\r\rClick Yes to send the program to the tallyCore, or click No to exit. "
                     "    ",
                     " tallyCore Harvel", BoxIcon::Information, YesNo}));
    UseNumberedTexts();
    EXPECT_THAT(Caution(), Optional(Box{"<585> KR200 Series 2 on Com 3. <586>. \r\r<587> : \r\r/home/user/pump.cmd\r\r"
                                        "<588>.     ",
                                        " tallyCore Harvel", BoxIcon::Information, YesNo}));
}

TEST_F(LoadTexts, TheNoteOnACardIsALoneFullStopWithoutALanguageFile)
{
    question.hasCard = true;
    EXPECT_THAT(
        Caution(),
        Optional(Box{"Caution : You are about to send a new program to the KR200 Series 2 on Com 3. This action will "
                     "permanently delete any existing programs in the tallycore's internal memory and will replace "
                     "them with the one you have selected. .\r\rYou have selected the following file : "
                     "\r\r/home/user/pump.cmd\r\rClick Yes to send the program to the tallyCore, or click No to exit. "
                     "    ",
                     " tallyCore Harvel", BoxIcon::Information, YesNo}));
    UseNumberedTexts();
    EXPECT_THAT(Caution(), Optional(Box{"<585> KR200 Series 2 on Com 3. <586>. <583>.\r\r<587> : \r\r"
                                        "/home/user/pump.cmd\r\r<588>.     ",
                                        " tallyCore Harvel", BoxIcon::Information, YesNo}));
}

TEST_F(LoadTexts, CautionForACard)
{
    question.card = question.hasCard = true;
    EXPECT_THAT(Caution(),
                Optional(Box{"Caution : You are about to send a new program to the memory card plugged into the KR200 "
                             "Series 2 on Com 3. This action will permanently erase any existing programs currently "
                             "stored on the memory card and will replace them with the one you have selected.\r\rYou "
                             "have selected the following file : \r\r/home/user/pump.cmd\r\rClick Yes to send the "
                             "program to the card, or click No to exit.",
                             " tallyCore Harvel", BoxIcon::Information, YesNo}));
    UseNumberedTexts();
    EXPECT_THAT(Caution(),
                Optional(Box{"<589> KR200 Series 2 on Com 3. <590>.\r\r<591> : \r\r/home/user/pump.cmd\r\r<592>.",
                             " tallyCore Harvel", BoxIcon::Information, YesNo}));
}

TEST_F(LoadTexts, CautionForTheKR4Family)
{
    question.kr4 = true;
    question.logger = "KR400 at 10.0.0.5:3000";
    question.hasCard = true; // which it does not mention
    EXPECT_THAT(Caution(),
                Optional(Box{"Caution : You are about to send a new program to the KR400 at 10.0.0.5:3000.\r\rYou have "
                             "selected the following file : \r\r/home/user/pump.cmd\r\rClick Yes to send the program "
                             "to the tallyCore, or click No to exit.     ",
                             " tallyCore Harvel", BoxIcon::Information, YesNo}));
}

TEST_F(LoadTexts, TheTranslatedCautionForTheKR4FamilyTakesOneTextTwice)
{
    question.kr4 = true;
    UseNumberedTexts();
    EXPECT_THAT(Caution(), Optional(Box{"<593> KR200 Series 2 on Com 3. <594> BEGIN\"Jobname\" <595> END <595>.\r\r"
                                        "<597> : \r\r/home/user/pump.cmd\r\r<598>.     ",
                                        " tallyCore Harvel", BoxIcon::Information, YesNo}));
}

TEST_F(LoadTexts, NoCautionForACardInTheKR4Family)
{
    question.kr4 = question.card = true;
    EXPECT_EQ(Caution(), std::nullopt);
}

TEST_F(LoadTexts, EachCautionHasItsTextForARefusal)
{
    const auto refusal = [this] { return heart.language.Text(RefusalText(question)); };
    EXPECT_EQ(refusal(), "Program not Sent to the tallyCore");
    question.card = true;
    EXPECT_EQ(refusal(), "Program not Sent to the Card");
    question.card = false;
    question.kr4 = true;
    EXPECT_EQ(refusal(), "Program not Sent to the tallyCore");
    UseNumberedTexts();
    EXPECT_EQ(refusal(), "<329>");
    question.kr4 = false;
    EXPECT_EQ(refusal(), "<327>");
    question.card = true;
    EXPECT_EQ(refusal(), "<328>");
}

TEST_F(LoadTexts, DataInMemoryInTheWayOfAProgramEndsInALoneFullStop)
{
    EXPECT_EQ(Data(false),
              (Box{"WARNING : There is Data from a previous program stored in the KR200 Series 2 on Com 3. This Data "
                   "has to be erased first before the new program can be sent. If you want to keep the data, do not "
                   "click Yes. To keep the Data click No and either unload it or copy it to a cleared memory card now. "
                   "\r\r .",
                   " tallyCore Harvel", BoxIcon::Exclamation, YesNo}));
    UseNumberedTexts();
    EXPECT_EQ(Data(false), (Box{"<608> KR200 Series 2 on Com 3. <609>. \r\r<610>.", " tallyCore Harvel",
                                BoxIcon::Exclamation, YesNo}));
}

TEST_F(LoadTexts, DataInMemoryInTheWayOfADeletion)
{
    EXPECT_EQ(Data(true),
              (Box{"WARNING : Data has been found stored in the KR200 Series 2 on Com 3. This Data has to be erased "
                   "first before any current programs can be cleared. If you want to keep the data, do not click Yes. "
                   "To keep the Data click No and either unload it or copy it to a cleared memory card now. \r\rClick "
                   "Yes to permanently erase all Data and delete all programs from the tallyCore's internal memory, or "
                   "click No to Exit.",
                   " tallyCore Harvel", BoxIcon::Exclamation, YesNo}));
    UseNumberedTexts();
    EXPECT_EQ(Data(true), (Box{"<611> KR200 Series 2 on Com 3. <612>. \r\r<613>.", " tallyCore Harvel",
                               BoxIcon::Exclamation, YesNo}));
}

TEST_F(LoadTexts, DataOnACardInTheWayOfAProgram)
{
    question.hasCard = true;
    EXPECT_EQ(Data(false),
              (Box{"WARNING : There is Data from a previous program stored on the memory card plugged into the KR200 "
                   "Series 2 on Com 3. If you leave the card plugged in, this current Data has to be erased first "
                   "before the new program can be sent. If you want to keep the data, remove the memory card now. "
                   "\r\rClick Yes to erase the memory card Data (if you leave it plugged in), and to send the new "
                   "program to the tallyCore, or click No to Exit.",
                   " tallyCore Harvel", BoxIcon::Exclamation, YesNo}));
    UseNumberedTexts();
    EXPECT_EQ(Data(false), (Box{"<614> KR200 Series 2 on Com 3. <615>. \r\r<616>.", " tallyCore Harvel",
                                BoxIcon::Exclamation, YesNo}));
}

TEST_F(LoadTexts, DataOnACardInTheWayOfADeletion)
{
    question.hasCard = true;
    EXPECT_EQ(Data(true),
              (Box{"WARNING : Data has been found stored on the memory card plugged into the KR200 Series 2 on Com 3. "
                   "If you leave the card plugged in, this current Data has to be erased first before the new program "
                   "can be sent. If you want to keep the data, remove the memory card now. \r\rClick Yes to erase the "
                   "memory card Data (if you leave it plugged in), and to delete all programs from the tallyCore's "
                   "internal memory, or click No to Exit.",
                   " tallyCore Harvel", BoxIcon::Exclamation, YesNo}));
    UseNumberedTexts();
    EXPECT_EQ(Data(true), (Box{"<617> KR200 Series 2 on Com 3. <618>. \r\r<619>.", " tallyCore Harvel",
                               BoxIcon::Exclamation, YesNo}));
}

TEST_F(LoadTexts, AnErrorNamesItsLineAndTheFile)
{
    EXPECT_EQ(
        LineErrorBox(heart.language, 12, "/home/user/pump.cmd"),
        (Box{"There was a syntax error or a programmatic error in the tallyCore command file at line 12. The rest "
             "of the file was not sent to the tallyCore.\r\rThe file you selected was : \r\r/home/user/pump.cmd",
             "", BoxIcon::Critical}));
    UseNumberedTexts();
    EXPECT_EQ(LineErrorBox(heart.language, 12, "/home/user/pump.cmd"),
              (Box{"<600> 12. <601>.\r\r<602> : \r\r/home/user/pump.cmd", "", BoxIcon::Critical}));
}

TEST_F(LoadTexts, AProgramInMemoryIsToldToRunInEnglishOnly)
{
    EXPECT_EQ(SentBox(heart.language, question),
              (Box{"Program sent successfully to the KR200 Series 2 on Com 3 and started running.     ", "",
                   BoxIcon::Information}));
    UseNumberedTexts();
    EXPECT_EQ(SentBox(heart.language, question),
              (Box{"<603> KR200 Series 2 on Com 3 .     ", "", BoxIcon::Information}));
}

TEST_F(LoadTexts, AProgramOnACardIsToldWhereItIs)
{
    question.card = true;
    EXPECT_EQ(SentBox(heart.language, question),
              (Box{"Program sent successfully to the memory card plugged into the KR200 Series 2 on Com 3.     ", "",
                   BoxIcon::Information}));
    UseNumberedTexts();
    EXPECT_EQ(SentBox(heart.language, question),
              (Box{"<605> KR200 Series 2 on Com 3.     ", "", BoxIcon::Information}));
}

TEST_F(LoadTexts, TheChoosersTitlesAreTheSameInEveryLanguage)
{
    for (const bool translated : {false, true}) {
        if (translated)
            UseNumberedTexts();
        EXPECT_EQ(ChooserTitle(ChooserKind::Memory, "KR40 on Com 3"),
                  " Choose a Program to Send to the KR40 on Com 3 ...");
        EXPECT_EQ(ChooserTitle(ChooserKind::Card, "KR40 on Com 3"),
                  " Choose a Program to Send to the Card in the KR40 on Com 3 ...");
        EXPECT_EQ(ChooserTitle(ChooserKind::Flash, "KR40 on Com 3"),
                  " Choose a Program to Send to Flash in the KR40 on Com 3 ...");
    }
}

} // namespace
} // namespace harvelop::test
