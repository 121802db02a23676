// The rules of a logger's panel as plain functions over the state of its controls: what forces what, and what the user
// may change.
#pragma once

#include "settings/logger_panels.h"

#include <string_view>

namespace harvelop
{

// The columns of the schedules' grid that a click on their heading checks or clears as a whole.
enum class GridColumn { On, Ulast, CSV, HTML };

// Which controls of a row the user may change.
struct RowAccess {
    bool ulast = false;
    bool csv = false;
    bool records = false;
};
RowAccess AccessOf(const PanelValues& values, int row);

// After a change of any HTML box: HTML on a row holds its ULAST and CSV on.
void ApplyHtmlRule(PanelValues& values, int rows);

// After a change of `chkMdb`: it holds CSV on in all rows without HTML; without it their CSV is off.
void ApplyMdbRule(PanelValues& values, int rows);

// Checks the column if fewer than half of its boxes are checked, otherwise clears it. ULAST and CSV leave the rows
// alone that HTML holds on. False, and nothing done, where the column can't be toggled.
bool ToggleColumn(PanelValues& values, int rows, GridColumn column);

// The characters that a description may hold.
constexpr std::string_view DescriptionChars = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_\r\n";

// The picture of an item of `imgTallyCores`: the name of a resource.
std::string_view PictureFile(int item);

} // namespace harvelop
