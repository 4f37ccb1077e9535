#include "reference_host/DeviceLock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "reference_host/FileDescriptor.hpp"
#include "reference_host/LockHolder.hpp"

namespace reference_host {

namespace {

// A serial line's modem need not be there, and must not become the process's terminal.
constexpr int lockFlags = O_RDONLY | O_NOCTTY | O_NONBLOCK;

using Policy = DeviceLock::Policy;

/// What the process has, by device and file: it must not wait for itself.
struct Taken {
    std::mutex mutex;
    Policy policy;
    std::map<std::pair<dev_t, ino_t>, std::unique_ptr<FileDescriptor>> devices;
};

Taken& taken() {
    static Taken all;
    return all;
}

bool flockThrough(int descriptor, int operation) {
    int result = 0;
    do {
        result = ::flock(descriptor, operation);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

/// Lets the signals that end a process end a wait, too, where a command holds them back until it looks.
class EndedBySignals {
public:
    EndedBySignals() {
        sigset_t signals{};
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGTERM);
        pthread_sigmask(SIG_UNBLOCK, &signals, &_before);
    }
    ~EndedBySignals() { pthread_sigmask(SIG_SETMASK, &_before, nullptr); }
    EndedBySignals(EndedBySignals const&) = delete;
    EndedBySignals& operator=(EndedBySignals const&) = delete;

private:
    sigset_t _before{};
};

bool wait(int descriptor, std::string const& path, Policy const& policy, std::string& reason) {
    LockHolder const holder = LockHolder::of(descriptor);
    if (policy.steals && holder.hasEnded) {
        return true;
    }
    std::string const who = path + ": " + holder.describe() + " uses it";
    if (policy.steals || !policy.waits) {
        reason = who + (policy.steals ? ", and has not ended" : "");
        return false;
    }
    if (policy.say) {
        policy.say("waiting for " + who);
    } else {
        std::cerr << "waiting for " << who << std::endl;
    }
    EndedBySignals const endedBySignals;
    if (flockThrough(descriptor, LOCK_EX)) {
        return true;
    }
    reason = path + ": cannot be locked: " + systemErrorText(errno);
    return false;
}

bool lock(int descriptor, std::string const& path, Policy const& policy, std::string& reason) {
    if (flockThrough(descriptor, LOCK_EX | LOCK_NB)) {
        return true;
    }
    if (errno == EWOULDBLOCK) {
        return wait(descriptor, path, policy, reason);
    }
    reason = path + ": cannot be locked: " + systemErrorText(errno);
    return policy.steals;
}

} // namespace

void DeviceLock::setPolicy(Policy policy) {
    std::lock_guard<std::mutex> const guard(taken().mutex);
    taken().policy = std::move(policy);
}

bool DeviceLock::take(std::string const& path, std::string& reason) {
    std::lock_guard<std::mutex> const guard(taken().mutex);
    auto device = std::make_unique<FileDescriptor>(path, lockFlags);
    struct stat file {};
    if (!device->isOpen() || ::fstat(device->get(), &file) != 0) {
        return true;
    }
    std::pair const place(file.st_dev, file.st_ino);
    if (taken().devices.count(place) != 0) {
        return true;
    }
    if (!lock(device->get(), path, taken().policy, reason)) {
        return false;
    }
    taken().devices.emplace(place, std::move(device));
    return true;
}

} // namespace reference_host
