#include "board/OutputFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "chips/ToolError.hpp"

namespace board {

OutputFile::OutputFile(std::string path, std::ostream& standardOutput, chips::ExitStatus failure)
    : _path(std::move(path)), _standardOutput(standardOutput), _failure(failure) {
    if (!isStandardOutput(_path)) {
        open();
    }
}

void OutputFile::open() {
    try {
        if (isReplaced()) {
            _unfinished.emplace(_path);
        }
    } catch (std::system_error const& error) {
        fail(error.code().message());
    }
    errno = 0;
    _file.open(_unfinished ? _unfinished->getPath() : _path, std::ios::binary);
    if (!_file) {
        fail(std::generic_category().message(errno));
    }
}

/// Throws std::system_error when the file is there and must not be written.
bool OutputFile::isReplaced() const {
    struct stat status {};
    if (::lstat(_path.c_str(), &status) != 0) {
        return errno == ENOENT;
    }
    if (!S_ISREG(status.st_mode) || status.st_nlink > 1) {
        return false;
    }
    if (::faccessat(AT_FDCWD, _path.c_str(), W_OK, AT_EACCESS) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    return true;
}

std::ostream& OutputFile::getStream() {
    return isStandardOutput(_path) ? _standardOutput : _file;
}

void OutputFile::requireWritten() {
    errno = 0;
    if (!getStream().flush()) {
        fail(errno != 0 ? std::generic_category().message(errno) : "could not be written completely");
    }
}

void OutputFile::finish() {
    requireWritten();
    if (isStandardOutput(_path)) {
        return;
    }
    _file.close();
    if (!_file) {
        fail("could not be written completely");
    }
    try {
        if (_unfinished) {
            _unfinished->finish();
        }
    } catch (std::system_error const& error) {
        fail(error.code().message());
    }
}

void OutputFile::finishAnyway() noexcept {
    try {
        finish();
    } catch (std::exception const&) { // NOLINT(bugprone-empty-catch): the command says what failed before
    }
}

void OutputFile::fail(std::string const& reason) const {
    throw chips::ToolError(_failure, (isStandardOutput(_path) ? "standard output" : _path) + ": " + reason);
}

} // namespace board
