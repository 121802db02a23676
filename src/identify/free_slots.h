// The slots of the records that a search fills.
#pragma once

#include "settings/logger_records.h"

#include <vector>

namespace harvelop
{

// The slot holds a logger that was entered by hand: a search leaves it alone.
bool IsKept(const LoggerTables& tables, int number);

// The numbers of all other slots, in their order: the n-th logger that a search finds takes the n-th of them.
std::vector<int> FreeSlots(const LoggerTables& tables);

} // namespace harvelop
