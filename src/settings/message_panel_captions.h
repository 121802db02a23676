// The numbered texts of a logger's panel, sorted by number.
#pragma once

#include "settings/message_texts.h"

namespace harvelop
{

inline constexpr MessageText PanelTexts[] = {
    {800, "Found this"},
    {801, "on Com"},
    {802, "via Modem on Com"},
    {803, "at"},
    {804, "Firmware Version"},
    {805, "tallyCore on Com"},
    {806, "tallyCore via Modem on Com"},
    {807, "tallyCore at"},
    {808, "Checking Online Status"},
    {887, "Digital Channels"},

    // Stands before the name of the program on the About page, in the font of this number; a language may leave it
    // empty.
    {1000, ""},
};

} // namespace harvelop
