// What the work on a logger's programs works with, and the small steps that all of it shares.
#pragma once

#include "core/forms.h"
#include "core/program_end.h"
#include "core/program_state.h"
#include "links/command_exchange.h"
#include "links/connect.h"
#include "links/link_state.h"
#include "loading/loading_state.h"
#include "platform/data_files.h"
#include "platform/desktop.h"
#include "settings/essentials.h"
#include "settings/logger_controls.h"
#include "settings/logger_records.h"
#include "settings/options.h"

#include <string>
#include <string_view>

namespace harvelop
{

struct LoadingServices {
    Essentials use;
    CommandExchange& exchange;
    Connecting& connecting;
    LinkState& link;
    LoadingState& loading;
    ProgramState& state;
    const Options& options;
    const LoggerTables& tables;
    DataFiles& files;
    Desktop& desktop;
    LoggerControls& loggerControls;
    Forms& forms;
    ProgramEnd& end;
};

// `CurrentLogger` is of the KR4 family: its stored model holds "KR4".
bool IsKR4(const LoadingServices& services);

// Connects to `CurrentLogger`. False if it can't be worked on; a number that the table of ports has no entry for is
// told in a box.
bool ConnectToLogger(const LoadingServices& services);

// A box behind the hidden progress window. A question's answer is in `ResponseText` too, as its decimal code.
BoxAnswer ShowBox(const LoadingServices& services, const Box& box);

// Asks if the option `ShowLoadMessages` is on; without it the answer is taken as Yes, and nothing shows.
bool Confirmed(const LoadingServices& services, const Box& question);

// Names the step on the progress window: the text of a number, then `rest`; or for some milliseconds.
void ShowStep(const LoadingServices& services, int number, const std::string& rest = {});
void ShowStepFor(const LoadingServices& services, double ms, int number, const std::string& rest = {});

// Replies, as `SendAndWait` is asked for them. `endCount` carriage returns close them.
Markers ReplyTo(std::string_view startText, int endCount = 1);

// Sends and waits as `SendAndWait` does, but for what arrives from now on: what stands in the window from before is not
// taken for the answer.
void SendAndWaitAfresh(const LoadingServices& services, const std::string& command, const Markers& markers,
                       double timeoutMs = 0);
bool Passed(const LoadingServices& services);

// The character that puts an older logger into its bootstrap monitor stands before "BOOTSTRAP".
inline constexpr const char* Bootstrap = "\x1a"
                                         "BOOTSTRAP";

} // namespace harvelop
