#include "simulator/logger_config.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

constexpr auto Modes = std::to_array<FailureMode>({
    {Failure::None, "None", "works as it should"},
    {Failure::Silent, "Silent", "never answers anything"},
    {Failure::NoReply, "NoReply", "answers the probe and nothing else"},
    {Failure::EndMarkerMissing, "EndMarkerMissing", "the reply to TEST0 lacks its line end"},
    {Failure::SlowBytes, "SlowBytes", "sends one character at a time, with a gap between them"},
    {Failure::DropsLine, "DropsLine", "the line vanishes after some received lines"},
    {Failure::FloodsGarbage, "FloodsGarbage", "once spoken to, sends junk at full speed for ever"},
    {Failure::FloodsAfterProbe, "FloodsAfterProbe", "answers the probe; any other line starts junk for ever"},
    {Failure::RefusesPassword, "RefusesPassword", "accepts no password, not even its own"},
    {Failure::AnswersLate, "AnswersLate", "answers the probe at once and all else too late"},
    {Failure::WrongModel, "WrongModel", "the reply to TEST0 names no known model"},
    {Failure::ShortReply, "ShortReply", "the reply to TEST0 has fewer than five characters"},
    {Failure::NoSerial, "NoSerial", "does not answer CHARAC1"},
    {Failure::IgnoresFirst, "IgnoresFirst", "answers a command only when it comes a second time"},
    {Failure::Echoes, "Echoes", "sends back every character that it receives"},
    {Failure::EndlessReply, "EndlessReply", "the reply to TEST0 is 70,000 characters long, without a line end"},
    {Failure::NulBytes, "NulBytes", "puts a zero byte before every character that it sends"},
    {Failure::StopsFlow, "StopsFlow", "sends XOFF after every answer to a probe"},
    {Failure::GoesSilent, "GoesSilent", "answers nothing any more after some received lines"},
    {Failure::ResetsItself, "ResetsItself", "is reset by one of the received lines, as by a loss of power"},
    {Failure::IgnoresLines, "IgnoresLines", "does not hear lines that begin with a text"},
    {Failure::RefusesLines, "RefusesLines", "answers an error to lines that begin with a text, and does nothing"},
    {Failure::RejectsLine, "RejectsLine", "answers an error to one line of a program, and does not take it"},
    {Failure::RejectsString, "RejectsString", "the same with the error of a sensor's control string"},
    {Failure::CardUnreadable, "CardUnreadable", "tells neither that there is a memory card nor that there is none"},
    {Failure::EraseFails, "EraseFails", "the bootstrap monitor fails to erase the flash memory"},
    {Failure::GarblesRecord, "GarblesRecord", "the line spoils one S-record, which the bootstrap monitor refuses"},
});

} // namespace

std::span<const FailureMode> FailureModes()
{
    return Modes;
}

std::optional<Failure> FailureByName(std::string_view name)
{
    const auto found = std::ranges::find(Modes, name, &FailureMode::name);
    return found == Modes.end() ? std::nullopt : std::optional(found->failure);
}

} // namespace harvelop
