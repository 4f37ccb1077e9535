#pragma once

#include <cstdarg>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "manager/SwitchManager.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/races/Scheduler.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/TestDocument.hpp"

namespace race_test {

/// A manager without switches and what a host's threads do to it, in one particular order.
class ScheduledManager {
public:
    /// One of the host's threads.
    using Body = std::function<void(ScheduledManager&)>;

    /// \param plan see Scheduler.
    ScheduledManager(std::vector<std::size_t> plan, std::map<std::string, Body> const& host);
    ~ScheduledManager();
    ScheduledManager(ScheduledManager const&) = delete;
    ScheduledManager& operator=(ScheduledManager const&) = delete;

    /// \name What a host's thread may do
    /// @{
    void start();
    void report();
    void endEventLoop();
    /// @}

    /// Lets everything happen that can.
    /// \return false when somebody is stuck.
    bool run();

    /// Ends the event loop, if nobody has, and destroys the manager.
    /// \return false when the management thread is stuck.
    bool finish();

    /// How often start-up has run, and how often its end was reported.
    int getStartUps() const;
    int getPopulated() const;
    /// The state that the manager was in at the end.
    unsigned getLastState() const;

    Scheduler& getScheduler();

    /// \name For the host operations that are points of the schedule
    /// @{

    /// The one of the calling thread, or null.
    static ScheduledManager* current();
    bool isManagementThread() const;
    void stopForLock(Mutex& mutex);
    void unlocked(Mutex& mutex);
    void aboutToPost();
    void aboutToStart();
    /// @}

private:
    /// The flag of a report is looked at right after the message of the state's action.
    class PointedApplication : public reference_host::HostApplication {
    public:
        using HostApplication::HostApplication;
        void logDebug(char const* format, ...) override HOST_PRINTF_FORMAT(2, 3);
    };

    struct Owner {
        std::thread::id thread;
        unsigned depth = 0;
    };

    void enterManagementThread();

    Scheduler _scheduler;
    test_support::RecordingLog _log;
    test_support::NullMemory _memory;
    PointedApplication _application{_log, _memory};
    test_support::TestDocument _document{"<switches/>"};
    std::vector<std::function<void()>> _populatedCallbacks;
    std::unique_ptr<SwitchManager> _manager;
    std::vector<std::thread> _hostThreads;
    std::map<Mutex*, Owner> _owners;
    unsigned _pending = 0;
    bool _hasBegun = false;
    bool _hasEnded = false;
    bool _isStarted = false;
    int _populated = 0;
    unsigned _lastState = 0;
};

} // namespace race_test
