#pragma once

#include "host/Thread.hpp"

class SwitchManager;

/// The thread on which the switch manager does all of its work: start-up, every state change, every
/// chip access but a host's request for diagnostics.
class SwitchManagementThread : public Thread {
public:
    /// Not started. The manager need not be fully constructed yet; its application must be known.
    explicit SwitchManagementThread(SwitchManager& manager);
    ~SwitchManagementThread() override;

    /// Announces the thread to the manager, then delivers events until the host ends the loop. A
    /// std::exception that leaves the loop is logged and ends the thread. The manager's host is told when
    /// start-up has ended with any of it.
    void* run(void* argument) override;

    /// Notes the request. Ending the event loop is the host's business.
    void abort() override;

    /// Hands an event to the manager. A std::runtime_error is logged and the loop goes on.
    void processEvent(Event const* event) override;

private:
    void processAllEvents();

    SwitchManager& _switchManager;
    bool _aborted;
};
