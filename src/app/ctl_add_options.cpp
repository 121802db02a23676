// The options of `harvelctl add`.
#include "app/ctl_options.h"
#include "links/link_state.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Error = ArgumentError;

constexpr std::string_view Serial = "RS232";
constexpr std::string_view Modem = "Dialup";
constexpr std::string_view Network = "Ethernet";

CtlOption addOption(std::string_view word, const CtlOption::Apply& apply, std::vector<std::string_view> links = {},
                    std::vector<std::string> values = {})
{
    return {word, {Verb::Add}, true, apply, std::move(links), std::move(values)};
}

// One of the entries of the add dialog's list.
template <typename Entries>
CtlOption choice(std::string_view word, std::string AddValues::*field, const Entries& entries,
                 std::vector<std::string_view> links = {})
{
    const auto take = [word, field, &entries](CtlCommand& command, const std::string& value) -> Error {
        command.logger.*field = value;
        if (std::find(entries.begin(), entries.end(), value) != entries.end())
            return {};
        std::string accepted;
        for (const std::string_view entry : entries)
            accepted.append(accepted.empty() ? "" : ", ").append(entry);
        return std::string(word) + " wants one of " + accepted;
    };
    return addOption(word, take, std::move(links), {entries.begin(), entries.end()});
}

// What storing would drop, of most fields and of those that may hold commas.
constexpr std::string_view NeverStored = ",\r\n";
constexpr std::string_view LineEnds = "\r\n";

Error wrongText(std::string_view option, const std::string& value, std::string_view dropped)
{
    if (value.find_first_of(dropped) == std::string::npos)
        return {};
    return std::string(option) + " can't hold " + (dropped == LineEnds ? "a line end" : "a comma or a line end");
}

CtlOption storable(std::string_view word, std::string AddValues::*field, std::string_view dropped,
                   std::vector<std::string_view> links = {})
{
    const auto take = [=](CtlCommand& command, const std::string& value) {
        command.logger.*field = value;
        return wrongText(word, value, dropped);
    };
    return addOption(word, take, std::move(links));
}

CtlOption baudOption()
{
    CtlOption option = choice("--baud", &AddValues::baud, AddBauds, {Serial, Modem});
    option.apply = [take = option.apply](CtlCommand& command, const std::string& value) {
        command.logger.modemBaud = value;
        return take(command, value);
    };
    return option;
}

std::vector<std::string> seriesDigits()
{
    std::vector<std::string> digits;
    digits.reserve(AddSeries.size());
    for (const std::string_view series : AddSeries)
        digits.emplace_back(1, series.back());
    return digits;
}

Error takeSeries(CtlCommand& command, const std::string& value)
{
    command.logger.series = "Series " + value;
    const bool known = std::find(AddSeries.begin(), AddSeries.end(), command.logger.series) != AddSeries.end();
    return known ? Error() : Error("--series wants one of 1, 2, 3");
}

Error takeTimeout(CtlCommand& command, const std::string& value)
{
    command.logger.timeout = value;
    return IsNumber(value) ? Error() : Error("--timeout wants a number of seconds");
}

CtlOption portOption(std::string_view word, std::string AddValues::*field, std::string_view kind)
{
    const auto take = [=](CtlCommand& command, const std::string& value) -> Error {
        const auto port = NumberIn(value, 1, ComPorts);
        command.logger.kind = kind;
        command.logger.*field = std::to_string(port.value_or(0));
        return port ? Error() : std::string(word) + " wants a number from 1 to 16";
    };
    return addOption(word, take, {kind}, NumbersTo(ComPorts));
}

// The record of a network logger is told by its first colon, so no host can hold one.
Error takeHost(CtlCommand& command, const std::string& value)
{
    const size_t colon = std::min(value.find(':'), value.size());
    const std::string port = value.substr(std::min(colon + 1, value.size()));
    command.logger.kind = Network;
    command.logger.address = value.substr(0, colon);
    command.logger.tcpPort = port;
    const bool host = colon > 0 && command.logger.address.find_first_of(", \t\r\n") == std::string::npos;
    return host && IsTcpPort(port) ? Error() : Error("--tcp wants HOST:PORT, with a port from 1 to 65535");
}

} // namespace

std::vector<CtlOption> AddOptions()
{
    return {
        choice("--model", &AddValues::model, AddModels),
        addOption("--series", takeSeries, {}, seriesDigits()),
        storable("--serial", &AddValues::serial, NeverStored),
        addOption("--timeout", takeTimeout),
        portOption("--com", &AddValues::port, Serial),
        baudOption(),
        choice("--parity", &AddValues::parity, AddParities, {Serial}),
        choice("--data-bits", &AddValues::dataBits, AddDataBits, {Serial}),
        choice("--stop-bits", &AddValues::stopBits, AddStopBits, {Serial}),
        choice("--flow", &AddValues::flow, AddFlows, {Serial}),
        portOption("--modem", &AddValues::modemPort, Modem),
        storable("--phone", &AddValues::phone, LineEnds, {Modem}),
        storable("--init", &AddValues::init, LineEnds, {Modem}),
        addOption("--tcp", takeHost, {Network}),
    };
}

ArgumentError WrongAdd(const CtlCommand& command, const std::vector<const CtlOption*>& used)
{
    const auto has = [&used](std::string_view word) {
        return std::ranges::find(used, word, [](const CtlOption* option) { return option->word; }) != used.end();
    };
    constexpr std::array<std::string_view, 3> Ways = {"--com", "--modem", "--tcp"};
    const auto ways = std::count_if(Ways.begin(), Ways.end(), has);
    if (!has("--model"))
        return "add wants a --model";
    if (ways != 1)
        return ways == 0 ? "add wants one of --com, --modem, --tcp" : "--com, --modem and --tcp exclude each other";
    const std::string& kind = command.logger.kind;
    for (const CtlOption* option : used)
        if (!option->links.empty() && std::ranges::find(option->links, kind) == option->links.end())
            return std::string(option->word) + " does not go with " + std::string(*std::ranges::find_if(Ways, has));
    if (kind == Modem && !has("--phone"))
        return "--modem wants a --phone";
    if (has("--series") && IsKR4(command.logger.model))
        return "a " + command.logger.model + " has no --series";
    return wrongText("--password", command.password.value_or(""), NeverStored);
}

} // namespace harvelop
