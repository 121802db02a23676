// Data files in memory, with the failures that a disk has.
#pragma once

#include "platform/data_files.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace harvelop::test
{

class MemoryFiles : public DataFiles
{
public:
    FileText Read(const std::string& path) override
    {
        reads.push_back(path);
        if (unreadable.count(path))
            return {FileState::Unreadable};
        const auto found = files.find(path);
        if (found == files.end())
            return {FileState::NotFound};
        return {FileState::Read, found->second};
    }
    bool Replace(const std::string& path, const std::string& text) override
    {
        if (full || unwritable.count(path.substr(0, path.rfind('/'))))
            return false;
        files[path] = text;
        writes.push_back(path);
        return true;
    }
    bool Remove(const std::string& path) override
    {
        if (full)
            return files.count(path) == 0;
        files.erase(path);
        removed.push_back(path);
        return true;
    }

    std::map<std::string, std::string> files; // path to text
    std::set<std::string> unreadable;
    bool full = false;                // nothing can be written or removed
    std::set<std::string> unwritable; // directories in which nothing can be written
    std::vector<std::string> reads;
    std::vector<std::string> writes;
    std::vector<std::string> removed;
};

} // namespace harvelop::test
