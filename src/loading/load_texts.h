// The questions before a program is sent, as the user reads them.
#pragma once

#include "platform/dialogs.h"
#include "settings/language_tables.h"

#include <optional>
#include <string>

namespace harvelop
{

struct LoadQuestion {
    bool kr4 = false;     // the logger's family
    bool card = false;    // the program goes to the memory card
    bool hasCard = false; // a memory card was seen in the logger
    std::string logger;   // `LinkDescription`
    std::string file;     // `ProgramFileName`
};

// The caution before a program is sent; none for a card in a logger of the KR4 family: meant.
std::optional<Box> CautionBox(const LanguageTables& language, const LoadQuestion& question);

// The number of the text that tells that the caution was not answered with Yes.
int RefusalText(const LoadQuestion& question);

// The warning that data must be erased first. `clearing`: programs are being deleted, none is being sent.
Box DataBox(const LanguageTables& language, const LoadQuestion& question, bool clearing);

// Tells at which line, counted from 1, the logger reported an error.
Box LineErrorBox(const LanguageTables& language, int line, const std::string& file);

// Tells that the program was sent.
Box SentBox(const LanguageTables& language, const LoadQuestion& question);

// The file chooser's title, the same in every language.
enum class ChooserKind { Memory, Card, Flash };
std::string ChooserTitle(ChooserKind kind, const std::string& logger);

} // namespace harvelop
