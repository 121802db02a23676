// The terminal: what a logger says above, what is sent to it below.
#pragma once

#include "core/forms.h"
#include "core/program_end.h"
#include "core/program_state.h"
#include "core/waiting.h"
#include "links/command_exchange.h"
#include "settings/language_tables.h"
#include "settings/options_store.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <string>

namespace Ui
{
class frmTerminal;
}

namespace harvelop
{

class frmReceive;
class frmTransmit;

struct TerminalServices {
    Waiting& waiting;
    LanguageTables& language;
    Options& options;
    OptionsStore& store;
    ProgramState& state;
    LinkState& link;
    Forms& forms;
    modRS232& rs232;
    EthernetLink& ethernet;
    CommandExchange& exchange;
    ProgramEnd& end;
    bool endsProgram = false; // the command line asks for the end of the program with that of the terminal
};

// Works on the current link and has no protocol of its own. The caption tells how the link stands. It can be loaded
// again after it was closed, and is then empty. Closing it ends the link.
class frmTerminal : public QWidget, public TerminalForm
{
    Q_OBJECT

public:
    explicit frmTerminal(const TerminalServices& services, QWidget* parent = nullptr);
    ~frmTerminal() override;

    // Shows itself at the stored place. It is up (`TerminalOpen`) when this returns, unless it has been closed
    // meanwhile. While it is up, this only brings it to the front.
    void Load();

    void SetCaption(const std::string& caption) override;
    void Append(const std::string& text) override;
    void ClearReceived() override;
    void Close() override;

    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Stage { Closed, Loading, Up, Closing };

    void showCaptions();
    void takePlace();
    void keepTitleInReach();
    void keepPlace();
    void setSendHeight(int pixels);
    void moveBorderByKeys();
    void halve();
    void unload();
    bool isLinked() const;
    void watchLink();

    std::unique_ptr<Ui::frmTerminal> m_ui;
    TerminalServices m_use;
    frmReceive* m_receive;
    frmTransmit* m_transmit;
    Stage m_stage = Stage::Closed;
    bool m_linked = false;      // there was a link when it was last looked at
    bool m_borderMoved = false; // by the user
    QTimer m_linkTimer;
    QTimer m_stateTimer; // runs while the window takes its size after being maximised or restored
};

} // namespace harvelop
