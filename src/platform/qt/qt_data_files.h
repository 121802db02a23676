// The data files on the disk.
#pragma once

#include "platform/data_files.h"

namespace harvelop
{

// By the system's own calls: Qt's would wait for the writer of a pipe, and would lose bytes of names that are not
// UTF-8.
class QtDataFiles : public DataFiles
{
public:
    // Regular files of at most 64 MiB; anything else that exists is Unreadable, and is never waited for.
    FileText Read(const std::string& path) override;
    bool Replace(const std::string& path, const std::string& text) override;
    bool Remove(const std::string& path) override;
};

} // namespace harvelop
