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

SwitchManagementThread::SwitchManagementThread(SwitchManager& manager)
    : Thread(manager.getApplication().getThreads(), "SwitchManagementThread"),
      _switchManager(manager),
      _aborted(false) {}

SwitchManagementThread::~SwitchManagementThread() = default;

void* SwitchManagementThread::run(void* /*argument*/) {
    constexpr char const* unknownException = "an exception that is neither std::exception nor text";
    try {
        processAllEvents();
    } catch (std::exception const& exception) { // the message about another one could not be written
        _switchManager.startUpEnded(exception.what());
        throw;
    } catch (char const* text) {
        _switchManager.startUpEnded(text == nullptr ? unknownException : text);
        throw;
    } catch (...) {
        _switchManager.startUpEnded(unknownException);
        throw;
    }
    return exitThread();
}

/// Until the host ends the loop, or a std::exception leaves it.
void SwitchManagementThread::processAllEvents() {
    Application& application = _switchManager.getApplication();
    try {
        application.log(0, "SwitchManagementThread::run [%08x]\n", threadNumber());
        _switchManager.switchManagerThreadHasStarted();
        processEvents();
    } catch (std::exception const& exception) { // GCOVR_EXCL_BR_LINE: others are for the host's thread to see
        application.log(0, "SwitchManagementThread::run [%08x] caught %s\n", threadNumber(),
                        exception.what());
        _switchManager.startUpEnded(exception.what());
        return;
    }
    _switchManager.startUpEnded("the host has ended the event loop");
}

void SwitchManagementThread::abort() {
    _switchManager.getApplication().logInfo("SwitchManagementThread::abort()\n");
    _aborted = true;
}

void SwitchManagementThread::processEvent(Event const* event) {
    try {
        _switchManager.processEvent(event);
        _switchManager.eventHandled();
    } catch (std::runtime_error const& error) { // GCOVR_EXCL_BR_LINE: others go on to run()
        _switchManager.getApplication().logError("SwitchManagementThread::processEvent. Caught \"%s\"\n",
                                                 error.what());
        _switchManager.eventFailed(error.what());
    }
}
