#pragma once

#include <string>

namespace board {

/// A file beside another one, which it replaces when it is finished. One that is not finished is removed: by
/// the destructor, and by a signal that ends the program. One at a time in a process.
class UnfinishedFile {
public:
    /// Creates it, with the mode and, where the system allows, the owner of the file that it is to replace.
    /// That may be missing. Throws std::system_error, or std::logic_error when there is one already.
    explicit UnfinishedFile(std::string finishedPath);
    ~UnfinishedFile();
    UnfinishedFile(UnfinishedFile const&) = delete;
    UnfinishedFile& operator=(UnfinishedFile const&) = delete;

    std::string const& getPath() const { return _path; }

    /// Has it take the other one's place. Call it once. Throws std::system_error.
    void finish();

private:
    void create() const;

    std::string _finishedPath;
    std::string _path;
    bool _isFinished = false;
};

} // namespace board
