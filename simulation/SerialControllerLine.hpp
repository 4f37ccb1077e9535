#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>

#include "simulation/PseudoTerminal.hpp"

namespace simulation {

/// The controller's end of the line, with a record of every character. Any thread may call it.
class SerialControllerLine {
public:
    std::string const& getDevicePath() const;
    int getDescriptor() const;
    PseudoTerminal const& getTerminal() const;

    void send(std::string const& text);
    std::string receive();

    /// Everything that went over the line so far.
    std::string getReceived() const;
    std::string getSent() const;

private:
    PseudoTerminal _terminal;
    mutable std::mutex _mutex;
    std::string _received;
    std::string _sent;
};

} // namespace simulation
