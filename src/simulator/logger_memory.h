// What a simulated logger holds: plain values, which it begins with and which tests read back.
#pragma once

#include <string>
#include <vector>

namespace harvelop
{

// A program of the KR4 family, which goes by a name.
struct Job {
    std::string name;
    bool current = false; // at most one of all is
    bool hasData = false; // has logged some, which keeps it from being deleted
    std::string text = {};

    bool operator==(const Job&) const = default;
};

// What the next reset does to the flash memory of a logger of the KR4 family.
enum class FlashOnReset { Keep, Take, Erase };

// Program texts have LF behind each line.
struct LoggerMemory {
    bool data = false;       // logged data are stored
    std::string program;     // as received last, in internal memory
    bool card = false;       // a memory card is plugged in
    std::string cardProgram; // without the ";" that ended its lines on the way
    std::vector<Job> jobs;   // KR4 family only
    // Older: the image's bytes from the begin of the program area to the last one written. KR4 family: a job's text.
    std::string flash;
    std::string runOnReset; // KR4 family: the job that begins with every reset; empty: none
    FlashOnReset flashOnReset = FlashOnReset::Keep;
    bool halted = false;    // programs and jobs do not run
    bool bootstrap = false; // it is in its bootstrap monitor
    int resets = 0;         // how often it has been reset

    bool operator==(const LoggerMemory&) const = default;
};

} // namespace harvelop
