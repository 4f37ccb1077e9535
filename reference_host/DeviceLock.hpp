#pragma once

#include <functional>
#include <string>

namespace reference_host {

/// Whose turn it is at a device that leads to the board's chips: of the processes that ask, one at a time.
///
/// The lock is flock(2)'s on the device's own file: no other file is made, whoever may not open the device
/// cannot lock it, and the system lets go of it when the process ends, however that comes.
class DeviceLock {
public:
    /// What this process does when another one has a lock.
    struct Policy {
        /// Waits for it, else gives up at once.
        bool waits = true;
        /// Goes on without the lock where nobody alive has it: its holder has ended and left it to a process
        /// that it had started, or the device's file system knows no locks.
        bool steals = false;
        /// Gets a line before a wait; without, the standard error does.
        std::function<void(std::string const& line)> say;
    };

    /// Holds for what is taken from now on, by all threads.
    static void setPolicy(Policy policy);

    /// Takes the device for this process, until the process ends; taken already, there is nothing to do. A
    /// device that cannot be opened needs no lock: whoever opens it finds out why.
    /// \return false with `reason` saying in one line why not.
    static bool take(std::string const& path, std::string& reason);
};

} // namespace reference_host
