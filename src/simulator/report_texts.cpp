#include "simulator/report_texts.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

// The irregular rows are as the loggers have them: do not make them regular.
constexpr auto Models = std::to_array<ModelRow>({
    {"KR20", "1", ":51,4"},
    {"KR20", "2", ":51,5"},
    {"KR20", "3", ":51,7"},
    {"KR20 with a Display", "1", ":514,4"},
    {"KR20 with Display", "2", ":514,5"},
    {"KR20 with a Display", "3", ":514,7"},
    {"KR21", "3", ":57,7"},
    {"KR21 with a Display", "3", ":574,7"},
    {"KR23", "3", ":59,7"},
    {"KR23 with a Display", "3", ":594,7"},
    {"KR200", "1", ":52,4"},
    {"KR200", "2", ":52,5"},
    {"KR200", "3", ":52,7"},
    {"KR200 with a XBM", "1", ":526,4"},
    {"KR200 with a XBM", "2", ":5266,5"},
    {"KR200 with a XBM", "3", ":526,7"},
    {"KR200 with 2 XBMs", "1", ":5266,4"},
    {"KR200 with 2 XBMs", "2", ":526,5"},
    {"KR200 with 2 XBMs", "3", ":5266,7"},
    {"KR205", "1", ":53,4"},
    {"KR205", "2", ":53,5"},
    {"KR205", "3", ":53,7"},
    {"KR205 with a XBM", "1", ":536,4"},
    {"KR205 with a XBM", "2", ":536,5"},
    {"KR205 with a XBM", "3", ":536,7"},
    {"KR205 with a 2 XBMs", "1", ":5366,4"},
    {"KR205 with 2 XBMs", "2", ":5366,5"},
    {"KR205 with 2 XBMs", "3", ":5366,7"},
    {"KR215", "1", ":553,4"},
    {"KR215", "2", ":553,5"},
    {"KR215", "3", ":553,7"},
    {"KR215 with a XBM", "1", ":5536,4"},
    {"KR215 with a XBM", "2", ":5536,5"},
    {"KR215 with a XBM", "3", ":5536,7"},
    {"KR215 with 2 XBMs", "1", ":55366,4"},
    {"KR215 with 2 XBMs", "2", ":55366,5"},
    {"KR215 with 2 XBMs", "3", ":55366,7"},
    {"KR300", "1", ":524,4"},
    {"KR300", "2", ":524,5"},
    {"KR300", "3", ":524,7"},
    {"KR300 with a XBM", "1", ":5246,4"},
    {"KR300 with a XBM", "2", ":5246,5"},
    {"KR300 with a XBM", "3", ":5246,7"},
    {"KR300 with 2 XBMs", "1", ":52466,4"},
    {"KR300 with 2 XBMs", "2", ":52466,5"},
    {"KR300 with 2 XBMs", "3", ":52466,7"},
    {"KR305", "1", ":534,4"},
    {"KR305", "2", ":534,5"},
    {"KR305", "3", ":534,7"},
    {"KR305 with a XBM", "1", ":5346,4"},
    {"KR305 with a XBM", "2", ":5346,5"},
    {"KR305 with a XBM", "3", ":5346,7"},
    {"KR305 with 2 XBMs", "1", ":53466,4"},
    {"KR305 with 2 XBMs", "2", ":53466,5"},
    {"KR305 with 2 XBMs", "3", ":53466,7"},
    {"KR315", "1", ":5534,4"},
    {"KR315", "2", ":5534,5"},
    {"KR315", "3", ":5534,7"},
    {"KR315 with a XBM", "1", ":55346,4"},
    {"KR315 with a XBM", "2", ":55346,5"},
    {"KR315 with a XBM", "3", ":55346,7"},
    {"KR315 with 2 XBMs", "1", ":5534664"},
    {"KR315 with 2 XBMs", "2", ":553466,5"},
    {"KR315 with 2 XBMs", "3", ":553466,7"},
    {"KR40", "", "", "tallyCore 40", 27},
    {"KR41", "", "", "tallyCore 41", 27},
    {"KR45", "", "", "tallyCore 45", 27},
    {"KR400", "", "", "tallyCore 400", 22},
});

std::string exactly(std::size_t size, const std::string& text, std::string_view usual)
{
    std::string result = text.empty() ? std::string(usual) : text;
    result.resize(size, ' ');
    return result;
}

} // namespace

std::span<const ModelRow> KnownModels()
{
    return Models;
}

std::optional<ModelRow> FindModel(std::string_view model, std::string_view series)
{
    const auto found = std::ranges::find_if(
        Models, [&](const ModelRow& row) { return row.model == model && (series.empty() || row.series == series); });
    return found == Models.end() ? std::nullopt : std::optional(*found);
}

std::string TestReport(const LoggerConfig& config, const ModelRow& row)
{
    if (row.IsKR4())
        return "T," + VersionReport(config, row) + " Flash 2.01";
    return "T,Pass" + std::string(row.signature) + ",R0," + VersionText(config, row) + "E";
}

std::string VersionReport(const LoggerConfig& config, const ModelRow& row)
{
    return std::string(row.name) + " Version " + VersionText(config, row);
}

std::string SerialReport(const LoggerConfig& config, const ModelRow& row)
{
    constexpr std::string_view Colon = ": ";
    const auto dots = static_cast<std::size_t>(row.serialPosition) - 1 - 1 - Colon.size();
    return "Serial Number " + std::string(dots, '.') + std::string(Colon) + exactly(6, config.serial, "081234");
}

std::string BootReport(const LoggerConfig& config, const std::optional<ModelRow>& row, bool flashIsSound)
{
    const bool kr4 = row && row->IsKR4();
    const std::string name =
        kr4 ? VersionReport(config, *row) : "Tallycore Version " + VersionText(config, row.value_or(ModelRow()));
    return name + "\r\n" + (flashIsSound ? "Self test ... Done." : "Self test ... Flash program damaged.");
}

std::string VersionText(const LoggerConfig& config, const ModelRow& row)
{
    return row.IsKR4() ? exactly(9, config.version, "5.06.0001") : exactly(4, config.version, "7.18");
}

std::string UnknownReport()
{
    return "T,Pass:99,9,R0,0.00E";
}

} // namespace harvelop
