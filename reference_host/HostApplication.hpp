#pragma once

#include <memory>

#include "host/ThreadedApplication.hpp"
#include "host/Threads.hpp"
#include "reference_host/LogSink.hpp"
#include "reference_host/PhysicalMemory.hpp"

namespace reference_host {

/// The application object of a Linux host: formats messages for a sink, keeps the thread registry,
/// and gives hardware sections their memory. Any number may live in one process, each on its own.
class HostApplication : public ThreadedApplication {
public:
    /// Both arguments must outlive the application.
    HostApplication(LogSink& log, PhysicalMemory& memory);
    ~HostApplication() override;
    HostApplication(HostApplication const&) = delete;
    HostApplication& operator=(HostApplication const&) = delete;

    void logCritical(char const* format, ...) override HOST_PRINTF_FORMAT(2, 3);
    void logError(char const* format, ...) override HOST_PRINTF_FORMAT(2, 3);
    void logWarning(char const* format, ...) override HOST_PRINTF_FORMAT(2, 3);
    void logInfo(char const* format, ...) override HOST_PRINTF_FORMAT(2, 3);
    void logDebug(char const* format, ...) override HOST_PRINTF_FORMAT(2, 3);
    void log(unsigned int level, char const* format, ...) override HOST_PRINTF_FORMAT(3, 4);

    Threads& getThreads() override;

    /// Where the sections that were given this application as their log get mapped.
    PhysicalMemory& getPhysicalMemory();

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};

} // namespace reference_host
