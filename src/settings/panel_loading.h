// What a logger's panel shows when it loads, and what a record takes from it: plain functions over values.
#pragma once

#include "settings/logger_panels.h"
#include "settings/logger_record.h"
#include "settings/options.h"

namespace harvelop
{

// Whether the accounts allow delivery: by e-mail a server and a sender, and with authentication an account and a
// password; by FTP a server, a user and a password.
bool AccountsAllowEmail(const Options& options);
bool FtpDeliveryReady(const Options& options);

// As a panel tests e-mail when it loads: with a port as well, which nothing asks for while the panel is open. That
// difference is meant.
bool EmailDeliveryReady(const Options& options);

// The state of the controls after loading. With `fresh` (a new logger, or no logger was ever stored) the grid starts
// cleared. An empty records box shows "0"; HTML on a row holds its ULAST and CSV on; a delivery that the accounts don't
// allow is off.
PanelValues LoadPanelValues(const LoggerRecord& record, const Options& options, bool fresh);

// Puts a panel's values into the record's tables. Commas are left out of its texts: one would end its field there.
void StorePanelValues(const PanelValues& values, LoggerRecord& record);

} // namespace harvelop
