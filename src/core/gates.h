// Forwarding wrappers that close when the program ends.
#pragma once

#include "core/program_end.h"
#include "platform/data_files.h"
#include "platform/dialogs.h"

#include <functional>
#include <string>

namespace harvelop
{

// After the end: shows nothing; a question is answered Cancel or No, a password or a choice is empty.
class GatedDialogs : public Dialogs
{
public:
    GatedDialogs(Dialogs& dialogs, const ProgramEnd& end) : m_dialogs(dialogs), m_end(end) {}
    BoxAnswer Show(const Box& box) override;
    std::string AskPassword(const std::string& text, const std::string& title) override;
    std::string BrowseFolder(const std::string& title, const std::string& startIn) override;
    std::string OpenFile(const std::string& title, const std::string& startIn, const std::string& extension) override;

    std::function<void(const Box&, BoxAnswer)> OnAnswered; // if set: hears of each box that was shown

private:
    std::string ask(const std::function<std::string()>& question);

    Dialogs& m_dialogs;
    const ProgramEnd& m_end;
};

// After the end: reading goes on, nothing is written or removed (the calls give false).
class GatedDataFiles : public DataFiles
{
public:
    GatedDataFiles(DataFiles& files, const ProgramEnd& end) : m_files(files), m_end(end) {}
    FileText Read(const std::string& path) override { return m_files.Read(path); }
    bool Replace(const std::string& path, const std::string& text) override;
    bool Remove(const std::string& path) override;

    void ChangeNothing() { m_closed = true; } // from now on, as if the program had ended

private:
    DataFiles& m_files;
    const ProgramEnd& m_end;
    bool m_closed = false;
};

} // namespace harvelop
