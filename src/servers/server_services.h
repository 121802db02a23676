// What the login tests work with.
#pragma once

#include "core/options_controls.h"
#include "core/program_state.h"
#include "links/command_exchange.h"
#include "links/link_state.h"
#include "links/modEthernet.h"
#include "settings/essentials.h"
#include "settings/options.h"

namespace harvelop
{

struct ServerServices {
    Essentials use;
    CommandExchange& exchange;
    modEthernet& ethernet;
    LinkState& link;
    ProgramState& state;
    Options& options;
    OptionsControls& controls;
};

} // namespace harvelop
