#include "panels/panel_rules.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Boxes = std::array<bool, MaxSchedules>;

Boxes& boxesOf(PanelValues& values, GridColumn column)
{
    switch (column) {
    case GridColumn::Ulast:
        return values.ulast;
    case GridColumn::CSV:
        return values.csv;
    case GridColumn::HTML:
        return values.html;
    case GridColumn::On:
        break;
    }
    return values.on;
}

} // namespace

RowAccess AccessOf(const PanelValues& values, int row)
{
    const bool html = values.html.at(static_cast<size_t>(row));
    return {!html, !html && !values.mdb, html};
}

void ApplyHtmlRule(PanelValues& values, int rows)
{
    for (size_t i = 0; i < static_cast<size_t>(rows); ++i) {
        if (!values.html[i])
            continue;
        values.ulast[i] = true;
        if (!values.mdb)
            values.csv[i] = true;
    }
}

void ApplyMdbRule(PanelValues& values, int rows)
{
    for (size_t i = 0; i < static_cast<size_t>(rows); ++i)
        if (!values.html[i])
            values.csv[i] = values.mdb;
}

bool ToggleColumn(PanelValues& values, int rows, GridColumn column)
{
    // Only the long grid is closed to it while the database holds CSV on; that the short one is not is meant.
    if (column == GridColumn::CSV && rows == MaxSchedules && values.mdb)
        return false;
    Boxes& boxes = boxesOf(values, column);
    const auto checked = std::count(boxes.begin(), boxes.begin() + rows, true);
    const bool set = checked < (rows + 1) / 2;
    const bool heldByHtml = column == GridColumn::Ulast || column == GridColumn::CSV;
    for (size_t i = 0; i < static_cast<size_t>(rows); ++i)
        if (!heldByHtml || !values.html[i])
            boxes[i] = set;
    if (column == GridColumn::HTML)
        ApplyHtmlRule(values, rows);
    return true;
}

std::string_view PictureFile(int item)
{
    constexpr std::string_view Unknown = ":/panels/pictures/unknown.svg";
    // By item. Item 0 is no model's.
    constexpr std::array<std::string_view, 15> Files = {
        Unknown,
        ":/panels/pictures/kr20.svg",
        ":/panels/pictures/kr200.svg",
        ":/panels/pictures/kr205.svg",
        ":/panels/pictures/kr215.svg",
        ":/panels/pictures/kr300.svg",
        ":/panels/pictures/kr305.svg",
        ":/panels/pictures/kr315.svg",
        ":/panels/pictures/kr400.svg",
        ":/panels/pictures/kr21.svg",
        Unknown,
        ":/panels/pictures/kr23.svg",
        ":/panels/pictures/kr40.svg",
        ":/panels/pictures/kr41.svg",
        ":/panels/pictures/kr45.svg",
    };
    return item >= 0 && item < std::ssize(Files) ? Files[static_cast<size_t>(item)] : Unknown;
}

} // namespace harvelop
