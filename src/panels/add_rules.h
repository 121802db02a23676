// The rules of entering a logger by hand and of changing how it is reached, as plain functions over the state of the
// dialog's controls.
#pragma once

#include "platform/dialogs.h"
#include "settings/language_tables.h"
#include "settings/logger_record.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// The entries of the dialog's lists, in order.
constexpr std::array<std::string_view, 13> AddModels = {"KR20",  "KR21",  "KR23",  "KR200", "KR205", "KR215", "KR300",
                                                        "KR305", "KR315", "KR400", "KR45",  "KR41",  "KR40"};
constexpr std::array<std::string_view, 3> AddSeries = {"Series 1", "Series 2", "Series 3"};
constexpr std::array<std::string_view, 12> AddBauds = {"300",   "600",   "1200",  "4800",  "9600",  "14400",
                                                       "19200", "28800", "38400", "56000", "57600", "115200"};
constexpr std::array<std::string_view, 3> AddParities = {"None", "Odd", "Even"};
constexpr std::array<std::string_view, 3> AddDataBits = {"6", "7", "8"};
constexpr std::array<std::string_view, 2> AddStopBits = {"1", "2"};
constexpr std::array<std::string_view, 3> AddFlows = {"NOFC", "SWFC", "HWFC"};

// The entries of the port lists: the fields of `AvailablePorts`, "0" among them.
std::vector<std::string> AddPorts(std::string_view availablePorts);

// What the controls hold, and at first what they hold for a new logger, but for the ports. Each kind of link has
// fields of its own; only those of `kind` count.
struct AddValues {
    std::string model = "KR20";
    std::string series = "Series 1"; // means nothing for the KR4 family
    std::string serial;
    std::string password;
    std::string kind = "RS232"; // or "Dialup" or "Ethernet"
    std::string port;           // of RS232
    std::string baud = "4800";
    std::string parity = "None"; // the word
    std::string dataBits = "8";
    std::string stopBits = "1";
    std::string flow = "NOFC";
    std::string modemPort; // of a modem
    std::string phone;
    std::string modemBaud = "9600";
    std::string init;
    std::string address; // of a network link
    std::string tcpPort;
    std::string timeout; // seconds; empty stands for DefaultAddTimeout
};
constexpr std::string_view DefaultAddTimeout = "10";

// The characters that a time-out may hold.
constexpr std::string_view TimeoutChars = "0123456789";

// Digits and nothing else.
bool IsNumber(std::string_view text);
bool IsNumberUpTo(std::string_view text, double last); // from 1
bool IsTcpPort(const std::string& text);               // from 1 to 65535

// A stored model as the two lists show it. What a model without a series gives for one is never shown nor stored.
struct ModelParts {
    std::string model;
    std::string series;
};
ModelParts SplitModel(const std::string& stored);

// A model as it is stored: with its series, but for the KR4 family.
std::string StoredModel(const std::string& model, const std::string& series);

// What the controls hold for a stored logger; the fields of other kinds of link keep what `before` has.
AddValues ValuesOf(const LoggerRecord& record, AddValues before);

// Puts serial number, password, time-out and all that tells how the logger is reached into its record, and what follows
// from them. Commas and line ends, which would end a field or the record, are left out; phone number and initialisation
// string may hold commas. `adding`: the logger is new.
void StoreValues(const AddValues& values, bool adding, LoggerRecord& record);

// The caption that a logger's panel gets once it has been added or changed.
std::string AddedCaption(const LanguageTables& language, const LoggerRecord& record);

// What the test sets the com port to: "4800,N,8,1,NOFC". "Odd" gives the digit 0, which no port takes: the test then
// runs on the former settings. Meant.
std::string TestParityLetter(std::string_view parity);
std::string TestSettings(const AddValues& values);

// What the test tells: `model` is empty if nothing was found.
Box TestBox(const LanguageTables& language, const AddValues& values, const std::string& model,
            const std::string& series);

} // namespace harvelop
