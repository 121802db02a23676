// The trace: a file that tells what passes on all links of the program, for people and for programs.
//
// Each run adds to the file, so that a trouble is not lost by looking at it once more: it begins with a line
//
//   # harvelop trace 1, harvelctl 2.37, 2026-11-21
//
// and goes on with a line for each thing that happens, at once: the time of the day, the link, what happened, and more:
//
//   10:31:07.204 com3 open "9600,N,8,1" 0 "/dev/ttyUSB0"   opened with these settings and handshaking; the device
//   10:31:07.204 com3 set "1200,N,8,1" 0                    another line setting or handshaking on the open port
//   10:31:07.710 com3 out "Q /H/r\r\n\r\n"                  characters that the program has sent
//   10:31:08.911 com3 in "T,1:52,5\r\n"                     characters that the program has taken
//   10:31:09.000 com3 drop "<<\r\n"                         characters that came, and that the program threw away
//   10:31:09.000 com3 unsent                                what was queued at this moment has not left
//   10:31:09.100 com3 lost                                  the device has gone, or the other side has ended the link
//   10:31:09.200 com3 close
//   10:31:10.000 com5 error 8002 "..."                      it could not be opened, or the link has failed
//   10:31:11.000 tcp1 open "logger.example.org:7700"        the first socket of this run begins to connect
//   10:31:11.060 tcp1 connected
//
// A text stands between quotes. In it a control character, a byte above ASCII, a quote or a backslash is written as
// \r, \n, \t, \", \\ or \xHH with two hexadecimal digits, so that every byte can be told from the trace. Only \* tells
// less: from there to the end of its line there was a password. Such a line can be spread over several pieces; the
// later ones have no part of it, and one with nothing else is left out.
//
// Lines that begin with # and blank ones mean nothing to a reader, but that the last line before one, and the last one
// of the file, may be broken off.
#pragma once

#include "trace/trace_mask.h"

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace harvelop
{

std::string QuotedForTrace(std::string_view text); // with its quotes
std::string TraceTime(double seconds);             // since midnight, as "10:31:07.204"

// One entry as lines of the file.
class TraceFormat
{
public:
    // With its line end; empty for characters that are all part of a password told before.
    std::string Line(const TraceEntry& entry);

private:
    std::map<std::string, std::array<bool, 2>> m_hiding; // by link, taken and sent: whether the last one was hidden
};

// Only its owner may read and write the file. Nothing here fails the program: a file that cannot be opened or written
// any more is told once to `Complain`, and the program goes on without it.
class TraceFile
{
public:
    explicit TraceFile(std::function<void(const std::string&)> Complain) : m_complain(std::move(Complain)) {}
    ~TraceFile() { close(); }
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    // `program` is its name and version, for the first line.
    void Open(const std::string& path, const std::string& program);
    void Write(std::string_view lines);

private:
    void close();
    void fail();

    std::function<void(const std::string&)> m_complain;
    std::string m_path;
    int m_fd = -1;
};

} // namespace harvelop
