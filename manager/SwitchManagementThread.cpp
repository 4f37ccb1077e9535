#include "manager/SwitchManagementThread.hpp"

#include <pthread.h>

#include <cstdint>
#include <stdexcept>

#include "host/ThreadedApplication.hpp"
#include "manager/SwitchManager.hpp"

namespace {

/// The calling thread as messages show it: as much of its handle as eight hexadecimal digits hold.
unsigned int threadNumber() {
    // The handle is a number in some C libraries and a pointer in others.
    return static_cast<unsigned int>((std::uintptr_t)pthread_self()); // NOLINT
}

} // namespace

// The host's tools read these texts: by the two about a caught exception they know that start-up has failed,
// and show what follows in them as the reason.

SwitchManagementThread::SwitchManagementThread(SwitchManager& manager)
    : Thread(manager.getApplication().getThreads(), "SwitchManagementThread"),
      _switchManager(manager),
      _aborted(false) {}

SwitchManagementThread::~SwitchManagementThread() = default;

void* SwitchManagementThread::run(void* /*argument*/) {
    Application& application = _switchManager.getApplication();
    try {
        application.log(0, "SwitchManagementThread::run [%08x]\n", threadNumber());
        _switchManager.switchManagerThreadHasStarted();
        processEvents();
    } catch (std::exception const& exception) { // GCOVR_EXCL_BR_LINE: others are for the host's thread to see
        application.log(0, "SwitchManagementThread::run [%08x] caught %s\n", threadNumber(),
                        exception.what());
    }
    return exitThread();
}

void SwitchManagementThread::abort() {
    _switchManager.getApplication().logInfo("SwitchManagementThread::abort()\n");
    _aborted = true;
}

void SwitchManagementThread::processEvent(Event const* event) {
    try {
        _switchManager.processEvent(event);
    } catch (std::runtime_error const& error) { // GCOVR_EXCL_BR_LINE: others go on to run()
        _switchManager.getApplication().logError("SwitchManagementThread::processEvent. Caught \"%s\"\n",
                                                 error.what());
    }
}
