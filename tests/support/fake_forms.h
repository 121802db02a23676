// Forms that only remember what they were told.
#pragma once

#include "core/forms.h"

#include <string>
#include <utility>
#include <vector>

namespace harvelop::test
{

class FakeMessages : public MessageForm
{
public:
    void SetVisible(bool on) override { shows.push_back(on); }
    void SetCaption(const std::string& caption) override { captions.push_back(caption); }
    void SetBar(int barValue, int barMax) override
    {
        value = barValue;
        max = barMax;
        values.push_back(barValue);
    }

    bool Visible() const { return !shows.empty() && shows.back(); }
    std::string Caption() const { return captions.empty() ? std::string() : captions.back(); }

    std::vector<bool> shows;
    std::vector<std::string> captions;
    std::vector<int> values;
    int value = -1;
    int max = -1;
};

class FakeOptions : public OptionsForm
{
public:
    void SetControlEnabled(std::string_view control, bool enabled) override
    {
        changes.emplace_back(std::string(control), enabled);
    }
    void SetFormEnabled(bool enabled) override { formEnabled = enabled; }
    void SetCaption(const std::string& text) override
    {
        caption = text;
        captions.push_back(text);
    }
    void FocusOk() override { ++okFocused; }

    std::vector<std::pair<std::string, bool>> changes; // controls enabled and disabled, in order
    bool formEnabled = true;
    std::string caption;
    std::vector<std::string> captions;
    int okFocused = 0;
};

class FakeAddDialog : public AddForm
{
public:
    void SetTopmost(bool topmost) override { steps.emplace_back(topmost ? "set" : "clear"); }

    std::string Caption() const override { return caption; }
    void SetCaption(const std::string& text) override
    {
        caption = text;
        captions.push_back(text);
    }

    std::vector<std::string> steps;
    std::string caption;
    std::vector<std::string> captions;
};

class FakeTerminal : public TerminalForm
{
public:
    void SetCaption(const std::string& text) override { caption = text; }
    void Append(const std::string& text) override
    {
        received += text;
        ++updates;
    }
    void ClearReceived() override { received.clear(); }
    void Close() override { ++closed; }

    std::string caption;
    std::string received;
    int updates = 0;
    int closed = 0;
};

} // namespace harvelop::test
