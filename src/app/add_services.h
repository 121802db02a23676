// What the adding and changing of loggers works with, taken from a program.
#pragma once

#include "app/program.h"
#include "panels/add_work.h"

namespace harvelop
{

inline AddServices AddServicesOf(Program& heart)
{
    return {heart.essentials(), heart.options, heart.state,          heart.store,     heart.tables,
            heart.records,      heart.panels,  heart.viewing,        heart.controls,  heart.loggerControls,
            heart.forms,        heart.link,    heart.search,         heart.rs232,     heart.ethernet,
            heart.exchange,     heart.modem,   heart.identification, heart.connecting};
}

} // namespace harvelop
