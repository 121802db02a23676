#include "app/ctl_json.h"

#include "core/text_lines.h"
#include "loading/clearing.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;

ordered_json valueOf(const std::string& shown)
{
    return ordered_json::parse(shown, nullptr, false);
}

ordered_json linesOf(const std::string& shown)
{
    ordered_json all = ordered_json::array();
    LineReader lines(shown);
    std::string_view line;
    while (lines.Next(line))
        all.push_back(line);
    return all;
}

ordered_json jobsOf(const std::string& shown)
{
    ordered_json all = ordered_json::array();
    LineReader lines(shown);
    std::string_view line;
    while (lines.Next(line))
        all.push_back({{"name", PlainJobName(line)}, {"running", line.find('*') != std::string_view::npos}});
    return all;
}

// What a command that does something has found or made, and how what it prints becomes JSON.
struct ResultRow {
    Verb verb;
    const char* name;
    ordered_json (*read)(const std::string& shown);
};

constexpr ResultRow Results[] = {
    {Verb::Find, "loggers", valueOf}, {Verb::Set, "changed", valueOf},     {Verb::Lists, "lists", valueOf},
    {Verb::Add, "number", valueOf},   {Verb::Test, "found", valueOf},      {Verb::Connect, "found", valueOf},
    {Verb::Send, "answer", linesOf},  {Verb::Options, "changed", valueOf}, {Verb::Jobs, "jobs", jobsOf},
};

bool onlyShows(const CtlCommand& command)
{
    using enum CtlCommand::Verb;
    if (command.verb == Lists)
        return command.listEdits.empty() && !command.deleteAll;
    if (command.verb == Options)
        return command.edits.empty();
    constexpr std::array Showing = {List, Show, Ports, Check, LanguageCheck};
    return std::ranges::find(Showing, command.verb) != Showing.end();
}

const char* kindOf(const Box& box)
{
    if (box.buttons != BoxButtons::Ok)
        return "question";
    switch (box.icon) {
    case BoxIcon::Critical:
        return "error";
    case BoxIcon::Exclamation:
        return "warning";
    default:
        return "information";
    }
}

ordered_json messagesOf(const Console& console)
{
    ordered_json all = ordered_json::array();
    for (const ConsoleMessage& message : console.Messages()) {
        all.push_back({{"kind", message.kind}, {"text", message.text}});
        if (!message.answer.empty())
            all.back()["answer"] = message.answer;
    }
    return all;
}

} // namespace

std::string JsonText(const ordered_json& value, bool compact)
{
    return value.dump(compact ? -1 : 2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

BoxKeeper::BoxKeeper(GatedDialogs& dialogs, Console& console) : m_dialogs(dialogs)
{
    m_dialogs.OnAnswered = [&console](const Box& box, BoxAnswer answer) {
        const bool agreed = answer == BoxAnswer::Yes || answer == BoxAnswer::Ok;
        const std::string detail = box.detail.empty() ? "" : " " + box.detail;
        const char* word = agreed ? "yes" : "no";
        console.Keep({kindOf(box), PlainText(box.text) + detail, box.buttons == BoxButtons::Ok ? "" : word});
    };
}

void PrintJson(const CtlCommand& command, const Console& console, bool done, const std::string& shown,
               std::ostream& out)
{
    if (onlyShows(command) && !shown.empty()) {
        out << shown;
        return;
    }
    ordered_json result = {{"done", done}, {"messages", messagesOf(console)}};
    const auto* const row = std::ranges::find_if(Results, [&](const ResultRow& r) { return r.verb == command.verb; });
    // An answer without a line and a logger without a job are results, too.
    if (row != std::end(Results) && (!shown.empty() || (done && row->read != valueOf)))
        result[row->name] = row->read(shown);
    out << JsonText(result, command.verb == Verb::Terminal);
}

} // namespace harvelop
