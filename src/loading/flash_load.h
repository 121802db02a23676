// Putting a program into a logger's flash memory, from where it starts by itself.
#pragma once

#include "loading/loading_services.h"
#include "loading/program_load.h"

#include <string>
#include <vector>

namespace harvelop
{

// An older logger gets an image of the cleaned program, which three converters in the application directory make; they
// are started one after the other, and nobody waits for their end or looks at what came of it: meant. A file is read as
// its first line goes out, so one that a slow converter has made by then is the one that is sent. A logger of the KR4
// family gets the text as it stands.
class FlashLoading
{
public:
    FlashLoading(const LoadingServices& services, ProgramLoading& programs) : m_use(services), m_programs(programs) {}

    // From the choice of the file to the report. The caller locks the controls and closes the link. Leaves
    // `DefaultTimeout` changed.
    void LoadFlashProgram();

private:
    void CleanProgramFile();
    void CheckFlashSize();
    void RunImgbuild();
    void RunObjcopy();
    void RunRecnorm();
    void SendFlashRecords();

    bool confirmed(bool kr4);
    void setRange(const std::string& path);
    bool sendImage();
    bool sendText();
    std::string sendLinesToJob(const std::string& text);
    void offerReset();
    void runConverter(const std::string& name, const std::vector<std::string>& arguments, int fault);
    void tellFault();
    std::string pathOf(const char* file) const { return m_use.state.AppPath + file; }

    LoadingServices m_use;
    ProgramLoading& m_programs;
};

} // namespace harvelop
