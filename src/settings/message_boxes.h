// The numbered texts of the boxes, sorted by number.
#pragma once

#include "settings/message_texts.h"

namespace harvelop
{

inline constexpr MessageText BoxTexts[] = {
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
    // Told only in a language file's words, with 503 behind them.
    {552, "No tallyCores connected to this Computer were found by"},
    {553, "No tallyCores were found connected to Com"},
    {554, "You can only have 50 tallyCores in the list at once.     "},
    {555,
     "There are no tallyCores configured for Harvel. Click Find to automatically search for tallyCores connected this "
     "computer, or click Add to manually add a tallyCore.     "},
    {560, "Command successfully sent to the tallyCore"},
    {561, "Error number"},
    {563, "Create Icon"},
    {564, "&Name"},
    {565, "Icon Type"},
    {566, "&Send Command(s) ->"},
    {567, "&Unload / Program"},
    {568, "Show &Terminal"},
    {569, "&Ok"},
    {570, "Successfully Connected to FTP Server at"},
    {571, "FTP Server Login Test"},
    {572, "User Name or Password is Incorrect"},
    {573, "User Name or Password is Incorrect"},
    {580, "The File is Already Open"},
    // Told only in a language file's words.
    {583, "There is a memory card plugged into the tallyCore"},
    {585, "Caution : You are about to send a new program to the"},
    {586, "This action will permanently delete any existing programs in the tallycore's internal memory and will "
          "replace them with the one you have selected"},
    {587, "You have selected the following file"},
    {588, "Click Yes to send the program to the tallyCore, or click No to exit"},
    {589, "Caution : You are about to send a new program to the memory card plugged into the"},
    {590, "This action will permanently erase any existing programs currently stored on the memory card and will "
          "replace them with the one you have selected"},
    {591, "You have selected the following file"},
    {592, "Click Yes to send the program to the card, or click No to exit"},
    {593, "Caution : You are about to send a new program to the"},
    // Told only in a language file's words; 595 stands behind both BEGIN and END.
    {594, "The program must be framed by"},
    {595, "(in capitals)"},
    {597, "You have selected the following file"},
    {598, "Click Yes to send the program to the tallyCore, or click No to exit"},
    {599, "There was an error opening the File"},
    {600, "There was a syntax error or a programmatic error in the tallyCore command file at line"},
    {601, "The rest of the file was not sent to the tallyCore"},
    {602, "The file you selected was"},
    {603, "Program sent successfully to the"},
    {605, "Program sent successfully to the memory card plugged into the"},
    {606, "Do you want to start running the new memory card program now ?"},
    {607, "Memory card program started"},
    {608, "WARNING : There is Data from a previous program stored in the"},
    {609, "This Data has to be erased first before the new program can be sent. If you want to keep the data, do not "
          "click Yes. To keep the Data click No and either unload it or copy it to a cleared memory card now"},
    // Told only in a language file's words.
    {610, "Click Yes to permanently erase all Data and to send the new program to the tallyCore, or click No to Exit"},
    {611, "WARNING : Data has been found stored in the"},
    {612, "This Data has to be erased first before any current programs can be cleared. If you want to keep the data, "
          "do not click Yes. To keep the Data click No and either unload it or copy it to a cleared memory card now"},
    {613, "Click Yes to permanently erase all Data and delete all programs from the tallyCore's internal memory, or "
          "click No to Exit"},
    {614, "WARNING : There is Data from a previous program stored on the memory card plugged into the"},
    {615, "If you leave the card plugged in, this current Data has to be erased first before the new program can be "
          "sent. If you want to keep the data, remove the memory card now"},
    {616, "Click Yes to erase the memory card Data (if you leave it plugged in), and to send the new program to the "
          "tallyCore, or click No to Exit"},
    {617, "WARNING : Data has been found stored on the memory card plugged into the"},
    {618, "If you leave the card plugged in, this current Data has to be erased first before the new program can be "
          "sent. If you want to keep the data, remove the memory card now"},
    {619, "Click Yes to erase the memory card Data (if you leave it plugged in), and to delete all programs from the "
          "tallyCore's internal memory, or click No to Exit"},
    {620, "WARNING : You are about to delete all programs in internal memory in the"},
    {621, "Click Yes to delete the programs or No to Exit"},
    {622, "There was an error deleting the Programs from the"},
    {623, "Programs successfully deleted from the"},
    {624, "WARNING : You are about to delete a job from internal memory in the"},
    {625, "You will be asked to choose which job you want to delete"},
    {626, "Click Yes to search for current jobs or click No to Exit"},
    {627, "There are no jobs in the KR400 to delete"},
    {628, "No Jobs deleted"},
    {629, "No memory card found in the"},
    {630, "WARNING : You are about delete all programs stored on the memory card plugged into the"},
    {631, "Click Yes to delete all programs on the card, or click No to exit"},
    {632, "No memory card found in the"},
    {633, "Memory card programs successfully deleted"},
    {634, "WARNING : You are about to clear the Flash in the"},
    {635, "This action requires that the tallyCore be reset, which will also delete all programs currently running in "
          "the tallyCore and will permanently erase any Data stored in internal memory. Programs and Data stored on "
          "memory cards will not be affected"},
    {636, "Click Yes to delete all programs and Data stored in internal memory, and to erase the Flash in the "
          "tallyCore, or click No to exit"},
    {637, "You are about to erase the program area of Flash in the"},
    {638, "This will permanently delete any tallyCore programs stored in Flash. Programs stored on the internal B: "
          "drive and those stored o memory cards will not be affected"},
    {639, "Click Yes to erase the Flash in the tallyCore, or click No to exit"},
    {640, "Flash successfully erased in the"},
    {641, "There was an error erasing the Flash in the"},
    {642, "There was an error cleaning the file"},
    {643, "Series 3 tallyCores can only have a program in flash that is less then 4090 bytes in size"},
    {644, "is larger than 4090 characters"},
    {645, "There was an error converting the file to a binary image"},
    {646, "There was an error converting the binary image file to an S Record file"},
    {647, "There was an error converting the S Record file into fixed format"},
    {648, "WARNING : You are about to send a new program to Flash RAM in the"},
    {649,
     "This action requires that the tallyCore be reset, which will also delete all programs currently running in the "
     "tallyCore and will permanently erase any Data stored in internal memory. Programs and Data stored on memory "
     "cards will not be affected. The new program will automatically start running once the tallyCore has been reset"},
    {650, "You have selected the following file"},
    {651, "Click Yes to delete all programs and Data stored in internal memory, and to send the program to Flash RAM "
          "in the tallyCore, or click No to exit"},
    {652, "Program successfully sent to Flash in the"},
    {653, "and started running"},
    {654, "WARNING : You are about to send a new program to Flash RAM in the"},
    {655, "This action will delete any programs currently stored in Flash"},
    {656, "You have selected the following file"},
    {657,
     "Click Yes to send the program to the tallyCore and delete all programs stored in Flash, or click No to exit"},
    {660, "Do you want to reset the tallyCore and start running the new program now"},
    {661, "tallyCore reset and Flash program started"},
    {662, "There was an error sending the file to the tallyCore.     "},
    {663, "Flash Program not Cleared"},
    {664, "Card Programs not Deleted"},
    {700, "Can't Connect to Com"},
    {701, "the Port is Busy"},
    {711, "Successfully Connected to SMTP Server at"},
    {712, "Can't connect to SMTP Server at"},
    {714, "LOGIN Authentication Type not Supported by this SMTP Server"},
    {715, "Account Name or Password is Incorrect"},
    {716, "CRAM-MD5 Authentication not supported by Harvel"},
    {724, "WARNING : There is Data associated with some or all of the Jobs in the"},
    {725, "If you click Yes, all data and all jobs will be permanently deleted. This action cannot be reversed. If you "
          "want to keep the Data, click No and either unload it or copy it to a memory card"},
    {726, "Click Yes to delete all Jobs and all Data for all Jobs, or click No to Exit"},
    {727, "WARNING : The Job"},
    {728, "has Data associated with it. If you delete this Job all Data for the Job will also be deleted. If you want "
          "to keep the Data, click No and either unload it or copy it to a memory card"},
    {729, "Click Yes to delete the Job and all Data for the Job, or click No to Exit"},
    {730, "No Jobs or Data Deleted"},
    {731, "There was an error deleting the Data for Job"},
    {732, "There was an error deleting the Job"},
    {733, "The Job"},
    {734, "and all it's Data have been successfully deleted"},
    {735, "There was an error deleting the Job"},
    {736, "has been successfully deleted"},
    {737, "Are you sure you want to delete this tallyCore"},
};

} // namespace harvelop
