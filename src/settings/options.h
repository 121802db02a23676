// The options: what `options.ini` keeps. The variables are the truth; the file is a copy that each save replaces.
#pragma once

#include <cstdint>
#include <string>

namespace harvelop
{

// Values that are used as texts stay texts, even where they hold a number. Positions are in twips (1440 an inch).
struct Options {
    bool UseLangFile = false;   // messages come from the language file
    std::string Language;       // the language file's name stem
    std::string AvailablePorts; // com ports found, each number followed by a comma; "0": unknown, all are offered
    std::string ModemTimeout;   // seconds
    double OptionsTop = 0;
    double OptionsLeft = 0;
    double MessagesTop = 0; // 0 in both: no position was ever stored
    double MessagesLeft = 0;
    double tallyCoresTop = 0; // read, neither used nor written: both pairs are written from OptionsTop and OptionsLeft
    double tallyCoresLeft = 0;
    std::string LastSearch; // index of the last search choice
    std::string SiteID;
    bool RunHarvelOnStartup = false;
    bool UnloadAll = false;
    bool ShowDir = false;
    bool SaveToDesktop = false;
    std::string DesktopDir;
    bool SaveToOneFile = false;
    bool ShowHarvelOnStartup = false;
    bool HideHarvelAfterUnload = false;
    bool ExitAfterUnload = false;
    std::int16_t LastUtallyCore = 0; // index of the logger last chosen in the list
    bool ShowMessages = false;
    bool ShowLoadMessages = false;
    bool SaveLogFile = false;
    double LogFileSize = 0; // kB
    bool FindPorts = false; // probe the com ports at start-up
    std::string SMTPServerName;
    std::string SMTPPort;
    bool SMTPServerRequiresAuthentication = false;
    std::string SMTPAuthenticationType; // "PLAIN", "LOGIN", "CRAM-MD5", or as the panel writes it "CRM-MD5"
    std::string SMTPSender;
    std::string SMTPUserName;
    std::string SMTPPassword; // clear text
    bool SMTPRememberPassword = false;
    bool SMTPChecked = false; // set by a good login test; not saved
    std::string SMTPTimeout;  // seconds
    std::string FTPServername;
    std::string FTPUserName;
    std::string FTPPassword; // clear text
    bool FTPChecked = false; // set by a good login test; not saved
    std::string FTPTimeout;  // seconds
    std::string Icons;       // counter behind the shortcut keys of the loggers
    bool LockControls = false;
    float TerminalTop = 0;
    float TerminalLeft = 0;
    float TerminalWidth = 0;
    float TerminalHeight = 0;
    float TransmitHeight1 = 0;
};

} // namespace harvelop
