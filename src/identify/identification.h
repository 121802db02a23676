// Finds out what kind of logger answers on an open link: model, series, version and serial number.
#pragma once

#include "core/program_state.h"
#include "identify/model_table.h"
#include "identify/search_state.h"
#include "links/command_exchange.h"
#include "settings/essentials.h"
#include "settings/logger_records.h"
#include "settings/options_store.h"

#include <string>

namespace harvelop
{

class Identification
{
public:
    Identification(Essentials essentials, CommandExchange& exchange, SerialControl& serial, LinkState& link,
                   SearchState& search, LoggerTables& tables, OptionsStore& store, ProgramState& state);

    // Runs the whole dialogue. With `keepNumber` false a new logger was found, and `CurrentLogger` is raised first. The
    // outcome is in the tables of SearchState at `CurrentLogger`; a silent link leaves an empty model. A password
    // may be asked for. Nothing while `StopSearch` is set.
    void IdentifyLogger(bool keepNumber);

    // The record that a logger's number stands for: during a search the n-th slot that holds no logger entered by hand,
    // otherwise slot n. nullptr if there is none.
    LoggerRecord* RecordOf(int number);

private:
    bool PromptLoggerPassword(); // true if a whole identification has run with the password
    void ReadLoggerModel();
    bool quietWithoutTerminal() const;
    void sendTwice(const std::string& text);
    void wakeLogger();
    void askForModel();
    void keepPassword(const std::string& password);
    void readNamedModel(const NamedModel& named);
    void readSignedModel();
    void storeVersion(const std::string& version, const std::string& reply); // `reply`: what it was read off
    void sayFound();

    Essentials m_use;
    CommandExchange& m_exchange;
    SerialControl& m_port;
    LinkState& m_link;
    SearchState& m_search;
    LoggerTables& m_tables;
    OptionsStore& m_store;
    ProgramState& m_state;
};

} // namespace harvelop
