#include "identify/free_slots.h"

namespace harvelop
{

bool IsKept(const LoggerTables& tables, int number)
{
    const LoggerRecord* record = tables.Record(number);
    return record && tables.Holds(number) && record->LoggerKept != 0;
}

std::vector<int> FreeSlots(const LoggerTables& tables)
{
    std::vector<int> free;
    for (int number = 1; number <= MaxLoggers; ++number)
        if (!IsKept(tables, number))
            free.push_back(number);
    return free;
}

} // namespace harvelop
