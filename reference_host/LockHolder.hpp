#pragma once

#include <string>

namespace reference_host {

/// The process that locked a file, as far as the system tells.
struct LockHolder {
    /// 0 when the system does not say, as of a process in another container.
    int process = 0;
    /// It has ended; a process that it had started has the lock now.
    bool hasEnded = false;
    /// "switchctl", and since when it runs, "2026-11-22T04:05:06Z"; empty when that cannot be told.
    std::string program;
    std::string since;

    /// Of the flock(2) lock of an open file.
    static LockHolder of(int descriptor);

    /// "process 812 (switchctl, running since 2026-11-22T04:05:06Z)".
    std::string describe() const;
};

} // namespace reference_host
