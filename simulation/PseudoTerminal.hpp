#pragma once

#include <termios.h>

#include <cstddef>
#include <string>

namespace simulation {

/// A serial line without wires: whoever opens the device at one end talks to the holder of this object
/// at the other. Raw from the start, so that nothing is echoed or changed on the way.
class PseudoTerminal {
public:
    /// Throws std::system_error when the system has none to give.
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(PseudoTerminal const&) = delete;
    PseudoTerminal& operator=(PseudoTerminal const&) = delete;

    /// Path of the device. It can be opened any number of times.
    std::string const& getDevicePath() const { return _devicePath; }

    /// For poll(2): readable while receive() would give something.
    int getDescriptor() const { return _descriptor; }

    /// Sends what the device's queue has room for; the rest is lost, as on a line without handshake.
    /// \return how many characters went out.
    std::size_t send(std::string const& text) const;

    /// What was written to the device since the last call; does not wait.
    std::string receive() const;

    /// Waits, at most some seconds, until the device has at least that many characters to read.
    /// \return false when they did not come, or somebody has read some of them.
    bool waitUntilReadable(std::size_t characters) const;

    /// How the device is set at present.
    termios getSettings() const;

private:
    void openDevice();

    int _descriptor;
    /// Held open, as the line must not hang up between two users of the device.
    int _device = -1;
    std::string _devicePath;
};

} // namespace simulation
