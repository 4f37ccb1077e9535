#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/Application.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/VirtualClock.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

namespace fault_test {

/// A driver that talks to a controller in virtual time: before it gives an answer up, the controller has
/// dealt with everything that was written, and what it has to say has come down the line.
///
/// The thread that constructs it lives by its clock meanwhile.
class SerialTalk {
public:
    SerialTalk(Application& application, simulation::SerialController& controller);
    ~SerialTalk();
    SerialTalk(SerialTalk const&) = delete;
    SerialTalk& operator=(SerialTalk const&) = delete;

    /// One of each operation. Returns what each of them gave back.
    std::string talk();

    /// Virtual time that the longest operation has taken.
    std::uint64_t getLongestNanoseconds() const;

private:
    void perform(std::string const& command, std::function<std::string()> const& operation);
    void callAt(std::uint64_t nanoseconds, unsigned operation, std::function<void()> const& action);
    void awaitSent();

    simulation::SerialController& _controller;
    simulation::VirtualClock _clock;
    VitesseSerialCommunications _driver;
    std::size_t _written = 0;
    std::size_t _sentBefore = 0;
    unsigned _operation = 0;
    std::uint64_t _longest = 0;
    std::string _results;
};

} // namespace fault_test
