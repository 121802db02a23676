// Which captions of a window are cut off, and which keys lead to two of its controls.
#pragma once

#include <QWidget>

#include <string>
#include <vector>

namespace harvelop::test
{

// Every caption that shows is looked at: labels, buttons, check boxes, titles of group boxes, tabs. Each that has less
// room than it takes in its font gives a line with its control, its words and both widths or heights.
std::vector<std::string> CutTexts(const QWidget& window);

// The keys that more than one control has among those that show and can be used, tabs included, each with its controls.
std::vector<std::string> DoubledKeys(const QWidget& window);

// The names of the controls that have a key, of those that show; sorted.
std::vector<std::string> ControlsWithKey(const QWidget& window);

} // namespace harvelop::test
