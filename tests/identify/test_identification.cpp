#include "identify_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

using Lines = std::vector<std::string>;

TEST(Identification, AnOlderLoggersDialogueToTheByte)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR200 with a XBM", "2", "7.18"));
    t.Record(1).LoggerPassword = "rain";
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.Wire(),
              (Lines{"500 Q /H/r\r\n\r\n", "700 Q /H/r\r\n\r\n", "1400 rain\r\n", "3400 Q /H/r/M/U/N\r\n\r\n",
                     "3600 Q /H/r/M/U/N\r\n\r\n", "3800 END\r\n", "4800 TEST0\r\n", "4800 /h/R/U/N\r\n\r\n"}));
    EXPECT_EQ(t.heart.state.CurrentLogger, 1);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR200 with a XBM");
    EXPECT_EQ(t.Search().IdentifiedSeries.Get(1), "2");
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "7.18");
    EXPECT_EQ(t.Search().IdentifiedSerial.Get(0), "");
    EXPECT_EQ(t.Record(1).LoggerVersion, "7.18");
}

TEST(Identification, ANamedLoggersDialogueToTheByte)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR40", "", "5.06.0001", "012345"));
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.Wire(), (Lines{"500 Q /H/r\r\n\r\n", "700 Q /H/r\r\n\r\n", "1400 \r\n", "3400 Q /H/r/M/U/N\r\n\r\n",
                               "3600 Q /H/r/M/U/N\r\n\r\n", "3800 END\r\n", "4800 TEST0\r\n", "4800 /h/U/N\r\n",
                               "5300 CHARAC1\r\n", "5300 /h/R/U/N\r\n\r\n"}));
}

TEST(Identification, EachNamedModelTellsVersionAndSerial)
{
    for (const char* model : {"KR40", "KR41", "KR45", "KR400"}) {
        IdentifyProgram t;
        t.OpenLine(Logger(model, "", "5.06.0001", "012345"));
        t.heart.identification.IdentifyLogger(false);
        EXPECT_EQ(t.Search().IdentifiedModel.Get(1), model);
        EXPECT_EQ(t.Search().IdentifiedSeries.Get(1), "") << model;
        EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "5.06.0001") << model;
        EXPECT_EQ(t.Search().IdentifiedSerial.Get(0), "012345") << model;
        EXPECT_EQ(t.Record(1).LoggerVersion, "5.06.0001") << model;
    }
}

TEST(Identification, EveryOlderModelIsToldInItsSeries)
{
    for (const ModelRow& row : KnownModels()) {
        if (row.IsKR4())
            continue;
        IdentifyProgram t;
        t.OpenLine(Logger(std::string(row.model), std::string(row.series), "9.05"));
        t.heart.identification.IdentifyLogger(false);
        EXPECT_EQ(t.Search().IdentifiedModel.Get(1), row.model);
        EXPECT_EQ(t.Search().IdentifiedSeries.Get(1), row.series) << row.model;
        EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "9.05") << row.model;
    }
}

TEST(Identification, OnlyANewLoggerRaisesTheNumber)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR20", "1", "1.00"));
    t.heart.state.CurrentLogger = 4;
    t.heart.identification.IdentifyLogger(true);
    EXPECT_EQ(t.heart.state.CurrentLogger, 4);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(4), "KR20");
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(3), "1.00");
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.heart.state.CurrentLogger, 5);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(5), "KR20");
}

TEST(Identification, AModelAboveNumber16StaysUnknownButItsVersionIsKept)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR40", "", "5.06.0001", "012345"));
    t.heart.state.CurrentLogger = 17;
    t.heart.identification.IdentifyLogger(true);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(17), "");
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(16), "5.06.0001");
    EXPECT_EQ(t.Search().IdentifiedSerial.Get(16), "012345");
}

TEST(Identification, ALoggerWithoutARecordIsIdentifiedWithoutAPasswordLine)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR20", "1", "1.00"));
    t.heart.state.CurrentLogger = 0;
    t.heart.identification.IdentifyLogger(true);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(0), "KR20");
    const auto wire = t.Wire();
    EXPECT_EQ(wire.at(2), "3400 Q /H/r/M/U/N\r\n\r\n");
}

TEST(Identification, ShortRepliesGiveAShortOrEmptyVersionAndNoModel)
{
    const std::pair<const char*, const char*> replies[] = {{"T,1.0\r", "1.0"}, {"T,abcd\r", "abcd"}, {"T,\r", ""}};
    for (const auto& [reply, version] : replies) {
        IdentifyProgram t;
        t.OpenLine(std::make_shared<ScriptedLogger>(std::map<std::string, std::string>{{"TEST0", reply}}));
        t.heart.identification.IdentifyLogger(false);
        EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), version);
        EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");
    }
}

TEST(Identification, OnlyTheFirst30CharactersOfAReplyCount)
{
    IdentifyProgram t;
    const std::string report = "123456789012345678901234 1.23E:52,4\r";
    t.OpenLine(std::make_shared<ScriptedLogger>(std::map<std::string, std::string>{{"TEST0", "T," + report}}));
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "1.23");
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");
}

TEST(Identification, AShortSerialReplyGivesWhatThereIs)
{
    const std::pair<std::string, const char*> replies[] = {
        {"Serial Number" + std::string(26, '.') + "0123\r", "0123"}, {"Serial Number 1\r", ""}, {"nothing", ""}};
    for (const auto& [reply, serial] : replies) {
        IdentifyProgram t;
        t.OpenLine(std::make_shared<ScriptedLogger>(
            std::map<std::string, std::string>{{"TEST0", "T,tallyCore 40 Version 5.06.0001\r"}, {"CHARAC1", reply}}));
        t.heart.identification.IdentifyLogger(false);
        EXPECT_EQ(t.Search().IdentifiedSerial.Get(0), serial);
        EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "5.06.0001");
    }
}

TEST(Identification, ASilentLinkLeavesAnEmptyModelAndTheStoredVersion)
{
    IdentifyProgram t;
    t.OpenLine(nullptr);
    t.heart.state.CurrentLogger = 2;
    t.Record(2).LoggerVersion = "7.18";
    t.Search().IdentifiedModel.Set(2, "KR200");
    t.heart.link.LastReply = "stale";
    t.heart.identification.IdentifyLogger(true);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(2), "");
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(1), "");
    EXPECT_EQ(t.Record(2).LoggerVersion, "7.18");
    EXPECT_EQ(t.heart.link.LastReply, "");
    EXPECT_EQ(t.messages.Caption(), "<- No tallyCores were Found on Com 3");
    EXPECT_EQ(t.Wire().back(), "10050 /h/R/U/N\r\n\r\n"); // after 5000 ms for "TEST0" and 250 ms for the probe
}

TEST(Identification, TheRecordsTimeoutHoldsForTheModelAloneAndGoesBackAfterwards)
{
    const std::pair<const char*, int> timeouts[] = {{"2", 2000}, {"", 5000}, {"soon", 5000}, {"0.5", 500}};
    for (const auto& [text, ms] : timeouts) {
        IdentifyProgram t;
        t.OpenLine(nullptr);
        t.Record(1).LoggerTimeout = text;
        t.heart.identification.IdentifyLogger(false);
        EXPECT_EQ(t.Wire().back(), std::to_string(4800 + ms + 250) + " /h/R/U/N\r\n\r\n") << text;
        EXPECT_EQ(t.heart.link.DefaultTimeout, 5000);
    }
}

TEST(Identification, WakeUpChatterIsNotCollected)
{
    IdentifyProgram t;
    t.OpenLine(std::make_shared<ScriptedLogger>(
        std::map<std::string, std::string>{{"Q /H/r", "T,:52,4 0.00E\r"}, {"TEST0", "T,:53,7,R0,7.18E\r"}}));
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR205");
    EXPECT_EQ(t.serial.threshold, 1);
}

TEST(Identification, NothingHappensWhileTheSearchIsStopped)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR20", "1", "1.00"));
    t.heart.state.StopSearch = true;
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.heart.state.CurrentLogger, 0);
    EXPECT_TRUE(t.Wire().empty());
    EXPECT_EQ(t.pump.NowMs(), 0);
}

TEST(Identification, TheProgressWindowShowsUnlessTheWaitIsAborted)
{
    for (const bool abort : {false, true}) {
        IdentifyProgram t;
        t.OpenLine(Logger("KR20", "1", "1.00"));
        t.heart.state.AbortWait = abort;
        t.heart.state.QuietConnect = false;
        t.heart.identification.IdentifyLogger(false);
        EXPECT_EQ(t.messages.Visible(), !abort);
    }
}

TEST(Identification, AQuietConnectWithoutATerminalOnlyWakesTheLogger)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR20", "1", "1.00"));
    t.heart.state.QuietConnect = true;
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.Wire(), (Lines{"500 Q /H/r\r\n\r\n", "700 Q /H/r\r\n\r\n"}));
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");

    t.heart.state.TerminalOpen = true;
    t.heart.identification.IdentifyLogger(true);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR20");
}

TEST(Identification, ASearchTellsWhatItFoundForASecond)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR40", "", "5.06.0001", "012345"));
    t.heart.state.SearchRunning = true;
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.messages.Caption(), "<- Found a KR40 on Com 3");
    EXPECT_NEAR(t.pump.NowMs(), 6300, 0.5);

    IdentifyProgram older;
    older.OpenLine(Logger("KR205 with 2 XBMs", "3", "7.18"));
    older.heart.state.SearchRunning = true;
    older.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(older.messages.Caption(), "<- Found a KR205 with 2 XBMs Series 3 on Com 3");
}

TEST(Identification, ALanguageFileTellsItInItsWords)
{
    IdentifyProgram t;
    t.UseLanguage({304, 305, 306, 307});
    t.OpenLine(Logger("KR40", "", "5.06.0001", "012345"));
    t.heart.state.SearchRunning = true;
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.messages.Caption(), "<- [305]KR40[307]3");
    t.serial.ports[3].device = Logger("KR215", "2", "7.18");
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.messages.Caption(), "<- [305]KR215[306]2[307]3");
    t.serial.ports[3].device = nullptr;
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.messages.Caption(), "<- [304] 3");
}

TEST(Identification, DuringASearchANumberStandsForTheFreeSlots)
{
    IdentifyProgram t;
    LoggerRecord kept;
    kept.LoggerKept = 1;
    t.Store(1, kept);
    t.Store(3, kept);
    t.Record(4).LoggerKept = 1; // a stale table: the slot holds no logger
    EXPECT_EQ(t.heart.identification.RecordOf(1), &t.Record(1));
    t.heart.state.SearchRunning = true;
    EXPECT_EQ(t.heart.identification.RecordOf(1), &t.Record(2));
    EXPECT_EQ(t.heart.identification.RecordOf(2), &t.Record(4));
    EXPECT_EQ(t.heart.identification.RecordOf(48), &t.Record(50));
    EXPECT_EQ(t.heart.identification.RecordOf(49), nullptr);
    EXPECT_EQ(t.heart.identification.RecordOf(0), nullptr);
}

TEST(Identification, ALoggerThatFailsInAnyWayEndsTheDialogue)
{
    for (const FailureMode& mode : FailureModes()) {
        for (const char* model : {"KR40", "KR200"}) {
            IdentifyProgram t;
            LoggerConfig config;
            config.model = model;
            config.baud = 1200;
            config.failure = mode.failure;
            t.dialogs.ExpectPassword(""); // of a logger that does not answer but is there
            t.OpenLine(std::make_shared<SimulatedLogger>(config));
            t.heart.identification.IdentifyLogger(false);
            EXPECT_LT(t.pump.NowMs(), 30000) << mode.name;
            EXPECT_EQ(t.heart.link.DefaultTimeout, 5000) << mode.name;
            if (t.dialogs.asked.empty())
                t.dialogs.AskPassword("", "");
        }
    }
}

} // namespace harvelop::test
