// What the heart tells the windows. Each is set while its form is loaded; with no display they stay empty.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// `frmMessages`: a caption that names the step, and the bar `pbMessages`.
class MessageForm
{
public:
    virtual ~MessageForm() = default;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetBar(int value, int max) = 0;
};

// `frmOptions`, as far as work on loggers reaches into it.
class OptionsForm
{
public:
    virtual ~OptionsForm() = default;
    virtual void SetControlEnabled(std::string_view control, bool enabled) = 0; // by the control's name
    virtual void SetFormEnabled(bool enabled) = 0;                              // the panel as a whole
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void FocusOk() = 0; // gives `cmdOk` the focus
};

// `frmTerminal`, as far as the links reach into it.
class TerminalForm
{
public:
    virtual ~TerminalForm() = default;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void Append(const std::string& text) = 0; // to what `txtReceive` shows
    virtual void ClearReceived() = 0;                 // empties `txtReceive`
    virtual void Close() = 0;
};

// `frmAddTallyCore`, which stands before all windows, boxes included.
class AddForm
{
public:
    virtual ~AddForm() = default;
    virtual void SetTopmost(bool topmost) = 0;
    virtual std::string Caption() const = 0;
    virtual void SetCaption(const std::string& caption) = 0;
};

// `frmDelJob`: the user picks a job to delete.
class JobForm
{
public:
    virtual ~JobForm() = default;
    virtual void Show(const std::vector<std::string>& jobs) = 0; // fills `cbxJobs`, selects the first; never blocks
    virtual bool IsVisible() const = 0;                          // until it is answered or closed
};

struct Forms {
    OptionsForm* options = nullptr;
    TerminalForm* terminal = nullptr;
    AddForm* add = nullptr;
    // Makes and loads the progress window on its first use. It outlives all work.
    std::function<MessageForm*()> loadMessages;
    // Makes and loads the job chooser. It lives at least until it is asked for anew.
    std::function<JobForm*()> loadJobs;
};

} // namespace harvelop
