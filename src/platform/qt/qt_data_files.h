// The data files on the disk.
#pragma once

#include "platform/data_files.h"

#include <map>
#include <string>

namespace harvelop
{

// By the system's own calls: Qt's would wait for the writer of a pipe, and would lose bytes of names that are not
// UTF-8. What goes on failing in the same way is told once.
class QtDataFiles : public DataFiles
{
public:
    // Regular files of at most 64 MiB; anything else that exists is Unreadable, and is never waited for.
    FileText Read(const std::string& path) override;
    bool Replace(const std::string& path, const std::string& text) override;
    bool Remove(const std::string& path) override;

private:
    bool tell(const std::string& path, const char* what, int error);

    std::map<std::string, int> m_told; // the failure of each path that was told last
};

} // namespace harvelop
