// The models that a simulated logger can be, and the words with which it tells what it is.
#pragma once

#include "simulator/logger_config.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace harvelop
{

// One model in one series. A model of the KR4 family has a name instead of a signature, and no series.
struct ModelRow {
    std::string_view model;
    std::string_view series;
    std::string_view signature; // older models: what their reports are known by
    std::string_view name{};    // KR4 family: how it calls itself
    int serialPosition = 0;     // KR4 family: where its serial stands behind "Serial Number", counted from 1

    bool IsKR4() const { return !name.empty(); }
};

// Every model in every series that it comes in.
std::span<const ModelRow> KnownModels();

// The row of that model; an empty series takes the first there is. None if there is no such model or series.
std::optional<ModelRow> FindModel(std::string_view model, std::string_view series);

// What the logger says of itself, each a whole line without its line end. Texts that are empty in `config` get a
// usual value; too short ones are filled up with blanks and too long ones cut, as the reader counts characters.
std::string TestReport(const LoggerConfig& config, const ModelRow& row);
std::string VersionReport(const LoggerConfig& config, const ModelRow& row); // KR4 family only
std::string SerialReport(const LoggerConfig& config, const ModelRow& row);  // KR4 family only
std::string BootReport(const LoggerConfig& config, const std::optional<ModelRow>& row, bool flashIsSound); // two lines
std::string VersionText(const LoggerConfig& config, const ModelRow& row);
std::string UnknownReport(); // what no model answers

} // namespace harvelop
