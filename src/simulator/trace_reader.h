// Reads a trace of links that was taken elsewhere, for a replay.
//
// A trace is text: "10:31:07.710 com3 out "Q /H/r\r\n"" says when, on which link, what happened and more; lines that
// begin with # and blank ones part its runs. Of a text between quotes "\*" is a part that was hidden, to the end of its
// line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// Something that happened on a line, as its device saw it.
struct RecordedStep {
    enum class Kind {
        Opened,   // somebody has opened the line
        Heard,    // a line of text has come in, or the part of one that was answered
        Answered, // characters went out
        Lost      // com: the device has gone for good; a host has hung up, or could not be reached
    };
    Kind kind = Kind::Opened;
    std::size_t number = 0; // of the line in the trace, from 1
    double ms = 0;          // on a clock that only rises, and begins anew with each run
    std::string text = {};  // heard: without line feeds, with the CR that ends it; what is hidden is left out
    bool isHidden = false;  // heard: `text` is only the beginning, the rest of the line may be anything
    bool isDropped = false; // answered: before `ms`, when it was thrown away unseen

    bool EndsLine() const { return isHidden || text.ends_with('\r'); }
};

// A port or a host, with all that happened there.
struct RecordedLine {
    int com = 0;                          // 1 to 16; 0: a host
    std::string host = {};                // "logger.example.org:7700"
    int tcpPort = 0;                      // the port of that
    unsigned baud = 9600;                 // com: the speed at which most was answered
    std::vector<RecordedStep> steps = {}; // com: only those at that speed
};

struct RecordedTrace {
    std::vector<RecordedLine> lines; // in the order in which they were first opened
    std::vector<std::string> errors; // "line 7: ..." each, no more than ten; none if the trace is good
};

constexpr std::size_t LargestTrace = 1 << 28; // characters; a longer one is refused

// What was hidden in an answer stands as "***". A line that was broken off is passed over.
RecordedTrace ReadTrace(std::string_view text);

} // namespace harvelop
