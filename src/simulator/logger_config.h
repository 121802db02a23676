// What a simulated logger is and how it misbehaves: plain values, as tests write them and as tallysim reads them.
#pragma once

#include "simulator/logger_memory.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace harvelop
{

// The ways in which a logger or its line can fail. FailureModes() names each and says what it does.
enum class Failure {
    None,
    Silent,
    NoReply,
    EndMarkerMissing,
    SlowBytes,
    DropsLine,
    FloodsGarbage,
    FloodsAfterProbe,
    RefusesPassword,
    AnswersLate,
    WrongModel,
    ShortReply,
    NoSerial,
    IgnoresFirst,
    Echoes,
    EndlessReply,
    NulBytes,
    StopsFlow,
    GoesSilent,
    ResetsItself,
    IgnoresLines,
    RefusesLines,
    RejectsLine,
    RejectsString,
    CardUnreadable,
    EraseFails,
    GarblesRecord,
};

struct FailureMode {
    Failure failure;
    std::string_view name;
    std::string_view effect;
};

// Every failure mode, one row for each, in the order of the enumeration.
std::span<const FailureMode> FailureModes();

// The failure of that name, case exact; none if there is no such name.
std::optional<Failure> FailureByName(std::string_view name);

struct LoggerConfig {
    std::string model = "KR200"; // a model text of KnownModels(); any other answers as WrongModel does
    std::string series;          // "1", "2" or "3"; empty: the first series that the model comes in
    std::string version;         // 9 characters for the KR4 family, otherwise 4; empty: a usual one
    std::string serial;          // 6 characters, told by the KR4 family only; empty: a usual one
    std::string password;        // empty: it wants none
    double lockAfterMs = 0;      // wants its password again after so long without a line; 0: stays open

    int baud = 9600;        // the line's speed; floods and pace go by it
    bool pace = false;      // characters leave at the line's speed instead of at once
    double delayMs = 0;     // from a command to the begin of its reply
    std::size_t chunk = 0;  // replies leave in pieces of so many characters; 0: whole
    double gapMs = 20;      // between such pieces
    std::size_t noise = 0;  // characters of line noise before every reply; they never look like a reply
    std::uint32_t seed = 1; // the same seed gives the same noise

    bool echo = false;        // it sends back every line, until "/e" forbids it; "/E" allows it again
    std::string number = "1"; // what it answers to "13SV" and puts into its complaints
    LoggerMemory memory = {}; // what it holds to begin with

    Failure failure = Failure::None;
    int dropAfterLines = 3; // DropsLine, GoesSilent, ResetsItself: with which received line it happens
    double lateMs = 6000;   // AnswersLate: the delay of everything but the answer to a probe
    std::string lines;      // IgnoresLines, RefusesLines: those that begin so; none if it is empty
    int linesFrom = 1;      // and with which of them it begins
    int rejectLine = 3;     // RejectsLine, RejectsString: the line of the program; GarblesRecord: the record
};

} // namespace harvelop
