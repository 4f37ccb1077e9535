#pragma once

#include <fstream>
#include <optional>
#include <ostream>
#include <string>

#include "board/UnfinishedFile.hpp"
#include "chips/ExitStatus.hpp"

namespace board {

/// A file that a command writes.
///
/// A regular file is written beside its place, which it takes when it is finished: it is all there, or as it
/// was before. Its mode stays. Devices, pipes, what a symbolic link leads to and files with several names are
/// written in place; "-" is the standard output.
class OutputFile {
public:
    /// Opens it; a pipe waits for a reader. Throws ToolError.
    /// \param standardOutput what "-" stands for; has to outlive the file.
    /// \param failure the status with which a command ends that cannot write it.
    OutputFile(std::string path, std::ostream& standardOutput, chips::ExitStatus failure);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;

    /// What is to be written goes here.
    std::ostream& getStream();

    /// Throws ToolError when something of what was written so far is lost.
    void requireWritten();

    /// The file is complete. Call it once; without it, nothing replaces a regular file. Throws ToolError.
    void finish();

    /// As finish(), after something else has failed: what there is may tell why. Not when some of it is lost.
    void finishAnyway() noexcept;

    /// Whether a path stands for the standard output.
    static bool isStandardOutput(std::string const& path) { return path == "-"; }

private:
    void open();
    bool isReplaced() const;
    [[noreturn]] void fail(std::string const& reason) const;

    std::string _path;
    std::ostream& _standardOutput;
    chips::ExitStatus _failure;
    std::optional<UnfinishedFile> _unfinished;
    std::ofstream _file;
};

} // namespace board
