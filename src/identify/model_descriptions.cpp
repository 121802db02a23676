#include "identify/model_descriptions.h"

#include "core/text_lines.h"

namespace harvelop
{

namespace
{

// A model or a series that facts are told of; a fact tells its owners as a sum of these.
using Owners = unsigned;
constexpr Owners KR20 = 1U << 0U;
constexpr Owners KR21 = 1U << 1U;
constexpr Owners KR23 = 1U << 2U;
constexpr Owners KR200 = 1U << 3U;
constexpr Owners KR205 = 1U << 4U;
constexpr Owners KR215 = 1U << 5U;
constexpr Owners KR300 = 1U << 6U;
constexpr Owners KR305 = 1U << 7U;
constexpr Owners KR315 = 1U << 8U;
constexpr Owners KR40 = 1U << 9U;
constexpr Owners KR41 = 1U << 10U;
constexpr Owners KR45 = 1U << 11U;
constexpr Owners KR400 = 1U << 12U;
constexpr Owners Series1 = 1U << 13U;
constexpr Owners Series2 = 1U << 14U;
constexpr Owners Series3 = 1U << 15U;

constexpr Owners Plain = KR200 | KR205 | KR215;
constexpr Owners WithDisplay = KR300 | KR305 | KR315;
constexpr Owners Large = Plain | WithDisplay;
constexpr Owners Older = KR20 | KR21 | KR23 | Large;
constexpr Owners Small4 = KR40 | KR41 | KR45;
constexpr Owners KR4 = Small4 | KR400;
constexpr Owners EarlySeries = Series1 | Series2;
constexpr Owners AnySeries = EarlySeries | Series3;

// That a language file knows nothing of these two is meant.
constexpr Owners EnglishOnly = KR41 | KR45;

// Where in a model text its owner is told.
enum class Place { Start, Whole, End };

struct OwnerKey {
    Place place;
    std::string_view text;
    Owners owner;
};

// The trailing blanks keep a KR200 from being taken for a KR20.
constexpr OwnerKey Keys[] = {
    {Place::Start, "KR20 ", KR20},     {Place::Start, "KR21 ", KR21},     {Place::Start, "KR23 ", KR23},
    {Place::Start, "KR200", KR200},    {Place::Start, "KR205", KR205},    {Place::Start, "KR215", KR215},
    {Place::Start, "KR300", KR300},    {Place::Start, "KR305", KR305},    {Place::Start, "KR315", KR315},
    {Place::Whole, "KR40", KR40},      {Place::Whole, "KR41", KR41},      {Place::Whole, "KR45", KR45},
    {Place::Whole, "KR400", KR400},    {Place::End, "Series 1", Series1}, {Place::End, "Series 2", Series2},
    {Place::End, "Series 3", Series3},
};

struct Fact {
    Owners owners;
    std::string_view label;
    std::string_view english; // the whole caption
    int number;               // with a language file: of the word; 0 where the file has none, and so no line
    std::string_view tail;    // and what stands behind it
};

constexpr Fact Facts[] = {
    {KR20, "lblAnalogChannels", "Analog Channels : 15", 87, " : 15"},
    {KR21, "lblAnalogChannels", "Analog Channels : 3", 87, " : 3"},
    {KR23, "lblAnalogChannels", "Analog Channels : None", 87, " : None"},
    {Large, "lblAnalogChannels", "Analog Channels : 30", 87, " : 30"},
    {KR40, "lblAnalogChannels", "Analog Channels : 12", 87, " : 12"},
    {KR41, "lblAnalogChannels", "Analog Channels : 4", 87, " : 4"},
    {KR45, "lblAnalogChannels", "Analog Channels : 16", 87, " : 16"},
    {KR400, "lblAnalogChannels", "Analog Channels : 36", 87, " : 36"},

    {KR20, "lblDigitalChannels", "Digital Channels : 9", 88, " : 9"},
    {KR21, "lblDigitalChannels", "Digital Channels : 9", 887, " : 9"}, // that it has a number of its own is meant
    {KR23 | Large | KR40 | KR45, "lblDigitalChannels", "Digital Channels : 8", 88, " : 8"},
    {KR41, "lblDigitalChannels", "Digital Channels : 4", 88, " : 4"},
    {KR400, "lblDigitalChannels", "Digital Channels : 16", 88, " : 16"},

    // The blanks around "No" and "Yes" are meant as they are.
    {KR20 | KR21, "lblDisplay", "Display: No ", 89, " : No "},
    {KR23 | Plain | KR41 | KR400, "lblDisplay", "Display: No ", 89, ": No "},
    {WithDisplay | KR40 | KR45, "lblDisplay", "Display: Yes ", 89, ": Yes "},

    {Older, "lblEthernet", "Ethernet : No", 90, " : No"},
    {KR4, "lblEthernet", "Ethernet : 10BaseT 10 Mbps", 90, " : 10BaseT 10 Mbps"},

    // That it borrows the word of the analog channels is meant.
    {Series1, "lblBootstrapVersion", "n/a", 87, "n/a"},
    {Series2 | Series3 | KR4, "lblBootstrapVersion", "", 87, ""},

    {EarlySeries, "lblFirmwareMedia", "Firmware Media = EEPROM", 91, " = EEPROM"},
    {Series3 | KR4, "lblFirmwareMedia", "Firmware Media = Flash", 91, " = Flash"},

    {AnySeries, "lblFTP", "FTP Server : No", 92, " : No"},
    {KR4, "lblFTP", "FTP Server : Yes", 92, " : Yes"},

    {EarlySeries, "lblMemory", "Int. Memory : 13650 data points", 93, " : 13650 data points"},
    {Series3, "lblMemory", "Int. Memory : 166500 data points", 93, " : 166500 data points"},
    {Small4, "lblMemory", "Int. Memory : 64 MB FLASH", 93, " : 2 MB"}, // that the tail is the KR400's is meant
    {KR400, "lblMemory", "Int. Memory : 2 MB RAM", 93, " : 2 MB"},

    {EarlySeries, "lblMemoryCard", "Memory Card : SRAM 2 MB max", 94, " : SRAM 2 MB max"},
    {Series3, "lblMemoryCard", "Memory Card : SRAM 4 MB max", 94, " : SRAM 4 MB max"},
    {Small4, "lblMemoryCard", "Ext. Memory : USB FLASH", 94, " : FLASH"}, // that the tail is the KR400's is meant
    {KR400, "lblMemoryCard", "Ext. Memory: PCMCIA FLASH", 94, " : FLASH"},

    {AnySeries, "lblProcessor", "CPU : Z180 20MHz", 95, " : Z180 20MHz"},
    {KR4, "lblProcessor", "CPU : MPC850 50MHz", 95, " : MPC850 50MHz"},

    {AnySeries, "lblRS232", "RS232 : 9600 baud max", 96, " : 9600 baud max"},
    {KR4, "lblRS232", "RS232 : 115200 baud max", 86, " : 115200 baud max"}, // 86, a heading's number, is meant

    {AnySeries, "lblSamplesPerSec", "Sample Rate : 75 Hz max", 97, " : 75 Hz max"},
    {Small4, "lblSamplesPerSec", "Sample Rate : 290 Hz max", 97, " : 290 Hz max"},
    {KR400, "lblSamplesPerSec", "Sample Rate : 100 kHz max", 97, " : 100 kHz max"},

    {Small4, "lblUSB", "USB Comms : 12 MBs", 0, ""}, // that a language file has no word for it is meant
};

bool tells(std::string_view model, const OwnerKey& key)
{
    switch (key.place) {
    case Place::Start:
        return model.starts_with(key.text);
    case Place::Whole:
        return model == key.text;
    case Place::End:
        break;
    }
    return model.ends_with(key.text);
}

Owners ownersIn(std::string_view model)
{
    Owners owners = 0;
    for (const OwnerKey& key : Keys)
        if (tells(model, key))
            owners |= key.owner;
    return owners;
}

} // namespace

ModelDescription DescribeModel(std::string model, const std::string& series, bool langActive)
{
    constexpr size_t HoldsItsSeries = 7; // characters; what is longer is taken as it is
    if (model.size() < HoldsItsSeries && !Holds(model, "KR4"))
        model += " Series " + series;

    const Owners owners = ownersIn(model);
    const Owners described = langActive ? owners & ~EnglishOnly : owners;
    ModelDescription description;
    for (const Fact& fact : Facts) {
        if ((fact.owners & described) == 0)
            continue;
        if (!langActive)
            description.lines.push_back({fact.label, 0, std::string(fact.english)});
        else if (fact.number != 0)
            description.lines.push_back({fact.label, fact.number, std::string(fact.tail)});
    }
    if ((owners & AnySeries) != 0)
        description.flashEnabled = (owners & Series3) != 0;
    return description;
}

} // namespace harvelop
