#include "panels/add_rules.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr const char* Modem = "Dialup";
constexpr const char* Network = "Ethernet";

// A field of the record, and the control that it takes from each kind of link. None: it is emptied.
struct TransportRow {
    std::string LoggerRecord::*field;
    std::string AddValues::*rs232;
    std::string AddValues::*modem;
    std::string AddValues::*network;
};
constexpr TransportRow TransportRows[] = {
    {&LoggerRecord::LoggerPort, &AddValues::port, &AddValues::modemPort, &AddValues::address},
    {&LoggerRecord::LoggerBaud, &AddValues::baud, &AddValues::phone, nullptr},
    {&LoggerRecord::LoggerParity, &AddValues::parity, &AddValues::init, nullptr},
    {&LoggerRecord::LoggerDataBits, &AddValues::dataBits, &AddValues::modemBaud, nullptr},
    {&LoggerRecord::LoggerStopBits, &AddValues::stopBits, nullptr, nullptr},
    {&LoggerRecord::LoggerFlow, &AddValues::flow, nullptr, nullptr},
};

std::string AddValues::*sourceOf(const TransportRow& row, std::string_view kind)
{
    if (kind == Network)
        return row.network;
    return kind == Modem ? row.modem : row.rs232;
}

std::string without(std::string text, std::string_view characters)
{
    std::erase_if(text, [characters](char c) { return characters.find(c) != std::string_view::npos; });
    return text;
}

std::string storable(const std::string& text)
{
    return without(text, ",\r\n");
}

// A logger that a search has found holds the letter, one that was entered by hand the word.
std::string parityWord(const std::string& stored)
{
    for (const std::string_view word : AddParities)
        if (stored == word.substr(0, 1))
            return std::string(word);
    return stored;
}

} // namespace

std::vector<std::string> AddPorts(std::string_view availablePorts)
{
    std::vector<std::string> ports;
    while (!availablePorts.empty()) {
        const size_t comma = std::min(availablePorts.find(','), availablePorts.size());
        if (comma > 0)
            ports.emplace_back(availablePorts.substr(0, comma));
        availablePorts.remove_prefix(std::min(comma + 1, availablePorts.size()));
    }
    return ports;
}

bool IsNumber(std::string_view text)
{
    return !text.empty() && text == KeepAllowed(text, TimeoutChars);
}

bool IsNumberUpTo(std::string_view text, double last)
{
    const double number = IsNumber(text) ? ToDouble(text).value_or(0) : 0;
    return number >= 1 && number <= last;
}

bool IsTcpPort(const std::string& text)
{
    constexpr double Highest = 65535;
    return IsNumberUpTo(text, Highest);
}

ModelParts SplitModel(const std::string& stored)
{
    constexpr size_t Short = 4;
    constexpr size_t Long = 5;
    constexpr size_t SeriesLength = 8;
    const std::string head = stored.substr(0, Long);
    const bool isShort = stored.size() == Short || head == "KR20 " || head == "KR21 " || head == "KR23 ";
    const size_t seriesAt = stored.size() > SeriesLength ? stored.size() - SeriesLength : 0;
    return {stored.substr(0, isShort ? Short : Long), stored.substr(seriesAt)};
}

std::string StoredModel(const std::string& model, const std::string& series)
{
    return IsKR4(model) ? model : model + " " + series;
}

AddValues ValuesOf(const LoggerRecord& record, AddValues before)
{
    AddValues values = std::move(before);
    const ModelParts parts = SplitModel(record.LoggerModel);
    values.model = parts.model;
    values.series = parts.series;
    values.serial = record.LoggerSerial;
    values.password = record.LoggerPassword;
    values.timeout = record.LoggerTimeout;
    values.kind = LinkTypeOf(record);
    if (values.kind == Network) {
        values.address = record.LoggerHost;
        values.tcpPort = record.LoggerTcpPort;
        return values;
    }
    for (const TransportRow& row : TransportRows)
        if (const auto control = sourceOf(row, values.kind))
            values.*control = record.*row.field;
    values.parity = parityWord(values.parity);
    return values;
}

void StoreValues(const AddValues& values, bool adding, LoggerRecord& record)
{
    record.LoggerSerial = storable(values.serial);
    record.LoggerPassword = storable(values.password);
    record.LoggerTimeout = KeepAllowed(values.timeout, TimeoutChars);
    if (record.LoggerTimeout.empty())
        record.LoggerTimeout = DefaultAddTimeout;
    for (const TransportRow& row : TransportRows) {
        const auto control = sourceOf(row, values.kind);
        const bool mayHoldCommas = control == &AddValues::phone || control == &AddValues::init;
        record.*row.field = control ? without(values.*control, mayHoldCommas ? "\r\n" : ",\r\n") : std::string();
    }
    // That a new logger behind a modem gets the data bits in place of the modem's speed is meant.
    if (adding && values.kind == Modem)
        record.LoggerDataBits = storable(values.dataBits);
    if (values.kind == Network) {
        record.LoggerHost = storable(values.address);
        record.LoggerTcpPort = storable(values.tcpPort);
        record.LoggerPort = record.LoggerHost + ":" + record.LoggerTcpPort;
    }
    record.LoggerLinkType = LinkTypeOf(record);
}

std::string AddedCaption(const LanguageTables& language, const LoggerRecord& record)
{
    const std::string kind = LinkTypeOf(record);
    const std::string model = " " + record.LoggerModel + " ";
    if (kind == Network)
        return model + language.Text(807) + " " + record.LoggerPort;
    if (kind == Modem)
        return model + language.Text(806) + " " + record.LoggerPort;
    return model + language.Text(805) + " " + record.LoggerPort + " @ " + record.LoggerBaud + "," +
           record.LoggerParity + "," + record.LoggerDataBits + "," + record.LoggerStopBits + "," + record.LoggerFlow;
}

std::string TestParityLetter(std::string_view parity)
{
    if (parity == "Odd")
        return "0"; // the digit: meant
    return parity == "None" || parity == "Even" ? std::string(parity.substr(0, 1)) : std::string();
}

std::string TestSettings(const AddValues& values)
{
    return values.baud + "," + TestParityLetter(values.parity) + "," + values.dataBits + "," + values.stopBits + "," +
           values.flow;
}

Box TestBox(const LanguageTables& language, const AddValues& values, const std::string& model,
            const std::string& series)
{
    const auto text = [&language](int number) { return language.Text(number) + " "; };
    const std::string title = language.LangActive ? " " + language.Text(503) : " tallyCore Search";
    const bool found = !model.empty();
    if (values.kind == Network) {
        const std::string who = found ? text(500) + model + " " + text(507) : text(509);
        return {who + values.address + " " + text(508) + values.tcpPort + ".     ", title, BoxIcon::Information};
    }
    const bool modem = values.kind == Modem;
    const std::string place = modem ? values.modemPort : values.port + " @ " + TestSettings(values);
    if (!found) {
        const std::string end = modem ? ".     " : ".    "; // one blank fewer: meant
        return {text(modem ? 506 : 505) + place + end, title, BoxIcon::Critical};
    }
    // Behind a modem a language file names the series by the words of the com port: meant.
    const int seriesWord = modem && language.LangActive ? 501 : 502;
    const std::string who = IsKR4(model) ? model + " " : model + " " + text(seriesWord) + series + " ";
    return {text(500) + who + text(modem ? 504 : 501) + place + ".     ", title, BoxIcon::Information};
}

} // namespace harvelop
