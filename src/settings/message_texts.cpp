#include "settings/message_texts.h"

#include <algorithm>
#include <iterator>

namespace harvelop
{

namespace
{

// Sorted by number. A text holds neither the values nor the suffix (" ...", ".     ") that its call site adds; where
// the call site adds no suffix, the trailing blanks of a box stand here.
constexpr MessageText Texts[] = {
    // The add dialog.
    {1, "Model"},
    {2, "Serial"},
    {3, "Password"},
    {4, "Connection"},
    {5, "RS232"},
    {6, "Modem"},
    {7, "TCP/IP"},
    {8, "Test"},
    {9, "Reset"},
    {10, "Com Port"},
    {11, "Number"},
    {12, "BAUD"},
    {13, "Parity"},
    {14, "Data Bits"},
    {15, "Stop Bits"},
    {16, "Flow Control"},
    {17, "Modem"},
    {18, "Com Port"},
    {19, "Phone Number"},
    {20, "BAUD"},
    {21, "Initialisation String"},
    {22, "TCP/IP"},
    {23, "IP Address"},
    {24, "TCP Port"},
    {25, "Cancel"},
    {26, "Ok"},

    // The panel of a logger.
    {50, "tallyCore Details"},
    {51, "Load Options"},
    {52, "Unload Options"},
    {53, "Send Program to tallyCore"},
    {54, "Program"},
    {55, "Clear"},
    {56, "Send a program to the tallyCore and start it running, or clear any existing programs."},
    {57, "Send Program to Memory Card"},
    {58, "Program"},
    {59, "Clear"},
    // Spelled so: that is meant.
    {60, "Send a program to a memory card plugged into the tallyCore, or delete any existing progarms stored on a "
         "memory card."},
    {61, "Send Program to Flash RAM"},
    {62, "Program"},
    {63, "Clear"},
    {64, "Send a program to internal Flash RAM in the tallyCore, or delete any existing programs stored in Flash RAM."},
    {65, "Schedules"},
    {66, "Records"},
    {67, "Description"},
    {68, "File"},
    {69, "Save to Disk"},
    {70, "Edit"},
    {71, "Database"},
    {72, "Save to .mdb"},
    {73, "Edit"},
    {74, "Email"},
    {75, "Send via Email"},
    {76, "Edit List"},
    {77, "FTP"},
    {78, "Send via FTP"},
    {79, "Unload"},
    {80, "Run"},
    {81, "CMD"},
    {82, "tallyCore"},
    {83, "Set Com"},
    {84, "Create Icon"},
    {85, "Firmware"},
    {86, "Specifications"},
    {87, "Analog Channels"},
    {88, "Digital Channels"},
    {89, "Display"},
    {90, "Ethernet"},
    {91, "Firmware Media"},
    {92, "FTP Server"},
    {93, "Int. Memory"},
    {94, "Memory Card"},
    {95, "CPU"},
    {96, "RS232"},
    {97, "Sample Rate"},
    {98, "Ok"},
    {99, "Cancel"},
    {100, "Apply"},
    {101,
     "Programs and data for this tallyCore type are automatically synchronised between the memory card and internal "
     "memory when a memory card is plugged into the tallyCore."},
    {102, "Choose a Folder for the"},

    // The editor of table names.
    {160, " Edit Table Names"},
    {161, "Ok"},
    {162, "Table names must be unique or blank"},

    // The options panel.
    {170, "&tallyCores"},
    {171, "&Email"},
    {172, "&FTP"},
    {173, "&Options"},
    {174, "&About"},
    {175, "Search for tallyCores on Com Ports"},
    {176, "Find"},
    {177, "Find Ports"},
    {178, "Add a tallyCore"},
    {179, "Add"},
    {180,
     "Click the Add button to manually add tallyCores connected to local com ports, via a modem, or via Ethernet."},
    {181, "Current tallyCores"},
    {182, "Delete"},
    {183, "View"},
    {184, "Unload"},
    {185, "Terminal"},
    {186, "Server Name"},
    {187, "Server Requires Authentication"},
    {188, "Authentication Type"},
    {189, "PLAIN"},
    {190, "LOGIN"},
    {191, "CRAM-MD5"},
    {192, "Test Login"},
    {193, "Sender"},
    {194, "Account Name"},
    {195, "Password"},
    {196, "Site ID"},
    {197, "Server Name"},
    {198, "User Name"},
    {199, "Password"},
    {200, "Site ID"},
    {201, "The Site ID is used as the name of a directory which will be created on the FTP server where data will be "
          "sent to."},
    {202, "Test Login"},
    {203, "Show Harvel form"},
    {204, "Unload data when Harvel starts"},
    {205, "Unload everything from all tallyCores"},
    {206, "Show unload directory"},
    {207, "Copy to desktop, in this directory ..."},
    {208, "Append unloaded data to last saved file"},
    {210, "Exit after unload"},
    {211, "Show messages during unload"},
    {212, "Lock Find, Add and Delete buttons"},
    {213, "released"},
    {214, "Software for the KR20, KR200, KR300 and KR40 ranges of tallyCore data loggers."},
    {215,
     "Harvel is a utility that can automatically connect to tallyCores via local com ports, via a modem or via "
     "Ethernet, and can send programs to a tallyCore and unload logged data. Data can be saved to a local or network "
     "location, and can then be sent as an attachment to an email, and sent to an FTP server. "},
    {216, "There are two parts to this software : "},
    {217, "1.  The Harvel Options control panel (harvelop.exe)"},
    {218, "2.  The Harvel utility (harvel.exe)"},
    {219,
     "Unload options for Harvel are configured using the Options control panel (this program). When Harvel is run it "
     "uses these options when unloading data from tallyCores."},
    {220, "For more about tallyCores, see"},
    {221, "For help, contact"},
    {222, "and tell the version shown above."},
    {223, "TCP Port"},

    // The terminal's upper pane.
    {230, "Receive"},

    // The editor of what is done after an unload.
    {231, "Run a Program After Unload"},
    {232, "Send a tallyCore Command After Unload"},
    {233, "Ok"},
    {234, "Edit"},

    // The terminal.
    {235, "Terminal"},
    {236, "Send"},

    // The editor of the delivery lists.
    {240, "List for the"},
    {241, "Delete All"},
    {242, "Description"},
    {243, "Email Addresses"},
    {244, "Ok"},
    {247,
     "Are you sure you want to remove all email addresses and descriptions for all schedules for this tallyCore ?"},

    // What the progress window tells.
    {300, "Searching for tallyCores"},
    {301, "No tallyCores Found"},
    {302, "Sending Command to tallyCore"},
    {303, "Command Sent"},
    {304, "No tallyCores were Found on Com"},
    {305, "Found a"},
    {306, "Series"},
    {307, "on Com"},
    {313, "Looking for a"},
    {314, "Looking for a Modem on Com"},
    {315, "Found a Modem on Com"},
    {316, "Could Not Find a Modem on Com"},
    {317, "Dialling"},
    {318, "Could Not Dial"},
    {319, "Connected to"},
    {320, "at"},
    {321, "baud"},
    {322, "Looking for a"},
    {323, "Could not Find a"},
    {324, "Connected to Com"},
    {325, "Found a"},
    {326, "Connected to the"},
    {366, "Looking for Available Com Ports"},
    {367, "Com port"},
    {368, "is available"},
    {369, "Com ports"},
    {370, "are available"},
    {371, "No tallyCores Found on Com"},
    {372, "Trying Com"},
    {373, "baud"},
    {374, "Can't Connect to Com"},
    {375, "the Port is Busy"},
    {394, "Not Connected"},

    // Boxes.
    {500, "Found a"},
    {501, "connected to Com Port"},
    {502, "Series"},
    {503, "tallyCore Harvel"},
    {504, "connected to the Modem on Com Port"},
    {505, "No tallyCores were found connected to Com Port"},
    {506, "No tallyCores were found connected to the Modem on Com Port"},
    {507, "at IP address"},
    {508, "on TCP port"},
    {509, "No tallyCores were found at IP address"},
    {510, "Disconnecting"},
    {518, "Looking for a Modem on Com"},
    {520, "Modem Reset"},
    {521, "Modem Successfully Reset.     "},
    {524,
     "There are no tallyCores configured for Harvel. Click Find to automatically search for tallyCores connected this "
     "computer, or click Add to manually add a tallyCore.     "},
    {531, "The file"},
    {532, "doesn't exist"},
    {533, "Invalid Character"},
    {540, "Harvel is Exiting"},
    {550,
     "There are no tallyCores configured for Harvel. Do you want to automatically search for tallyCores connected to "
     "this computer now ?     "},
    {551, "This will remove all previously found tallyCores and replace them with those currently connected to this "
          "computer.     "},
    {552, "No tallyCores were found connected to this Computer"},
    {553, "No tallyCores were found connected to Com"},
    {554, "You can only have 50 tallyCores in the list at once.     "},
    {555,
     "There are no tallyCores configured for Harvel. Click Find to automatically search for tallyCores connected this "
     "computer, or click Add to manually add a tallyCore.     "},
    {560, "Command successfully sent to the tallyCore"},
    {561, "Error number"},
    {563, "Create Icon"},
    {564, "Name"},
    {565, "Icon Type"},
    {566, "Send Command(s) ->"},
    {567, "Unload / Program"},
    {568, "Show Terminal"},
    {569, "Ok"},
    {700, "Can't Connect to Com"},
    {701, "the Port is Busy"},
    {737, "Are you sure you want to delete this tallyCore"},

    // Captions of a logger's panel.
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
};

// Strictly rising: sorted, and no number twice.
constexpr bool sorted()
{
    return std::adjacent_find(std::begin(Texts), std::end(Texts), [](const MessageText& a, const MessageText& b) {
               return a.number >= b.number;
           }) == std::end(Texts);
}
static_assert(sorted(), "the texts are looked up by binary search: keep them sorted by number");
static_assert(std::begin(Texts)->number >= 1 && std::prev(std::end(Texts))->number <= 1000);

} // namespace

std::string_view EnglishText(int number)
{
    const auto found = std::lower_bound(std::begin(Texts), std::end(Texts), number,
                                        [](const MessageText& text, int wanted) { return text.number < wanted; });
    return found != std::end(Texts) && found->number == number ? found->english : std::string_view();
}

} // namespace harvelop
