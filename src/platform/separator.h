// The platform's path separator, which ends every directory that the program keeps.
#pragma once

namespace harvelop
{

constexpr char PathSeparator = '/';

} // namespace harvelop
