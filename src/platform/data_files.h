// The data files: small texts, read whole and replaced whole.
#pragma once

#include <string>

namespace harvelop
{

enum class FileState { Read, NotFound, Unreadable };

struct FileText {
    FileState state = FileState::NotFound;
    std::string text = {}; // the bytes as they stand; empty unless Read
};

class DataFiles
{
public:
    virtual ~DataFiles() = default;

    virtual FileText Read(const std::string& path) = 0;

    // Puts the text in the file's place in one step: a reader at any moment, and after a crash, sees the old text or
    // the new one. Links are followed, an existing file keeps its mode, a new one is the user's alone (0600). On
    // failure the old file stands, one line goes to stderr and the result is false.
    virtual bool Replace(const std::string& path, const std::string& text) = 0;

    // True if the file is gone afterwards; a missing file is no failure.
    virtual bool Remove(const std::string& path) = 0;
};

} // namespace harvelop
