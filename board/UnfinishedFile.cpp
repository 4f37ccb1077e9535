#include "board/UnfinishedFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace board {

namespace {

constexpr std::array<int, 5> endSignals = {SIGHUP, SIGINT, SIGPIPE, SIGQUIT, SIGTERM};
constexpr mode_t modeBits = 07777;

/// What a signal has to remove. It stays readable for a signal that comes while it is given up.
std::array<char, PATH_MAX> pathOfUnfinished{};
std::atomic<bool> isThereOne{false};

[[noreturn]] void throwSystemError() {
    throw std::system_error(errno, std::generic_category());
}

// Only calls that are allowed in a signal handler.
void removeAndEnd(int number) {
    if (isThereOne) {
        ::unlink(pathOfUnfinished.data());
    }
    static_cast<void>(std::signal(number, SIG_DFL));
    static_cast<void>(std::raise(number));
}

/// Holds the signals back while a file is there of which they do not know yet.
class HeldSignals {
public:
    HeldSignals() {
        sigset_t held;
        ::sigemptyset(&held);
        for (int const number : endSignals) {
            ::sigaddset(&held, number);
        }
        ::pthread_sigmask(SIG_BLOCK, &held, &_before);
    }
    ~HeldSignals() { ::pthread_sigmask(SIG_SETMASK, &_before, nullptr); }
    HeldSignals(HeldSignals const&) = delete;
    HeldSignals& operator=(HeldSignals const&) = delete;

private:
    sigset_t _before{};
};

/// A signal that somebody ignores or handles stays theirs.
void watchSignals() {
    for (int const number : endSignals) {
        struct sigaction before {};
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) {
            static_cast<void>(std::signal(number, removeAndEnd));
        }
    }
}

} // namespace

UnfinishedFile::UnfinishedFile(std::string finishedPath)
    : _finishedPath(std::move(finishedPath)),
      _path(_finishedPath + "." + std::to_string(::getpid()) + ".part") {
    if (isThereOne) {
        throw std::logic_error(pathOfUnfinished.data() + std::string(" is not finished"));
    }
    HeldSignals const held;
    create();
    pathOfUnfinished[_path.copy(pathOfUnfinished.data(), pathOfUnfinished.size() - 1)] = '\0';
    isThereOne = true;
    watchSignals();
}

UnfinishedFile::~UnfinishedFile() {
    if (!_isFinished) {
        ::unlink(_path.c_str());
    }
    isThereOne = false;
}

void UnfinishedFile::create() const {
    constexpr mode_t usualMode = 0666; // less what the user masks
    int const descriptor = ::open(_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usualMode);
    if (descriptor < 0) {
        throwSystemError();
    }
    struct stat before {};
    bool isAsBefore = true;
    if (::stat(_finishedPath.c_str(), &before) == 0) {
        // Only root may give files away. The owner comes first, as a change of it takes bits of the mode.
        static_cast<void>(::fchown(descriptor, before.st_uid, before.st_gid) == 0);
        isAsBefore = ::fchmod(descriptor, before.st_mode & modeBits) == 0;
    }
    int const error = errno;
    ::close(descriptor);
    if (!isAsBefore) {
        ::unlink(_path.c_str());
        errno = error;
        throwSystemError();
    }
}

void UnfinishedFile::finish() {
    if (std::rename(_path.c_str(), _finishedPath.c_str()) != 0) {
        throwSystemError();
    }
    _isFinished = true;
}

} // namespace board
