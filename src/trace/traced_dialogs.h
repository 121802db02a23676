// The message boxes of a program whose links are traced.
#pragma once

#include "platform/dialogs.h"
#include "trace/trace_secrets.h"

namespace harvelop
{

// Passes everything on to `dialogs`, and learns each password that is answered before it can be sent.
class TracedDialogs : public Dialogs
{
public:
    TracedDialogs(Dialogs& dialogs, TraceSecrets& secrets) : m_dialogs(dialogs), m_secrets(secrets) {}

    BoxAnswer Show(const Box& box) override { return m_dialogs.Show(box); }
    std::string AskPassword(const std::string& text, const std::string& title) override
    {
        std::string password = m_dialogs.AskPassword(text, title);
        m_secrets.Learn(password);
        return password;
    }
    std::string BrowseFolder(const std::string& title, const std::string& startIn) override
    {
        return m_dialogs.BrowseFolder(title, startIn);
    }
    std::string OpenFile(const std::string& title, const std::string& startIn, const std::string& extension) override
    {
        return m_dialogs.OpenFile(title, startIn, extension);
    }

private:
    Dialogs& m_dialogs;
    TraceSecrets& m_secrets;
};

} // namespace harvelop
