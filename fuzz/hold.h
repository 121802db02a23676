// How a fuzz target tells that a promise is broken.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace harvelop::fuzz
{

// Ends the run, so that the input that broke the promise is kept.
inline void Hold(bool promise, const char* what)
{
    if (promise)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

} // namespace harvelop::fuzz
