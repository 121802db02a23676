// What the programs ask of their process before anything else.
#pragma once

namespace harvelop
{

// Ignores the signals for which failed calls are told of already. A standard stream that is closed becomes an empty
// one: its number would otherwise go to the first port that is opened, which would then hear all messages.
void PrepareProcess();

} // namespace harvelop
