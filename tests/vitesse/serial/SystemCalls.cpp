#include "tests/vitesse/serial/SystemCalls.hpp"

#include <dlfcn.h>
#include <termios.h>

#include <cerrno>

namespace {

template <typename Function> Function systemsOwn(Function, char const* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int failure() {
    errno = EIO;
    return -1;
}

} // namespace

SystemCalls*& SystemCalls::current() {
    static thread_local SystemCalls* calls = nullptr;
    return calls;
}

// The dynamic linker prefers these definitions to the C library's.
extern "C" {

__attribute__((visibility("default"))) int tcflush(int descriptor, int queue) noexcept {
    SystemCalls const* const calls = SystemCalls::current();
    return calls != nullptr && calls->tcflushFails ? failure()
                                                   : systemsOwn(&tcflush, "tcflush")(descriptor, queue);
}

__attribute__((visibility("default"))) int tcsetattr(int descriptor, int actions,
                                                     termios const* settings) noexcept {
    SystemCalls const* const calls = SystemCalls::current();
    return calls != nullptr && calls->tcsetattrFails
               ? failure()
               : systemsOwn(&tcsetattr, "tcsetattr")(descriptor, actions, settings);
}

__attribute__((visibility("default"))) int cfsetospeed(termios* settings, speed_t speed) noexcept {
    SystemCalls const* const calls = SystemCalls::current();
    return calls != nullptr && calls->cfsetospeedFails
               ? failure()
               : systemsOwn(&cfsetospeed, "cfsetospeed")(settings, speed);
}

__attribute__((visibility("default"))) int poll(pollfd* entries, nfds_t count, int timeout) {
    SystemCalls* const calls = SystemCalls::current();
    if (calls == nullptr || !calls->pollResult) {
        return systemsOwn(&poll, "poll")(entries, count, timeout);
    }
    calls->polls.push_back({count, entries != nullptr ? entries[0] : pollfd{}, timeout});
    return *calls->pollResult;
}

} // extern "C"
