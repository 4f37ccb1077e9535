#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "simulation/PseudoTerminal.hpp"

namespace simulation {

/// The controller's end of the line, with a record of every character. Any thread may call it.
class SerialControllerLine {
public:
    enum class Direction { toController, toDriver };

    /// What becomes of a character on the way.
    enum class CharacterFault {
        lost,
        doubled,
        /// It arrives with its lowest bit turned over.
        garbled,
    };

    std::string const& getDevicePath() const;
    int getDescriptor() const;
    PseudoTerminal const& getTerminal() const { return _terminal; }

    void send(std::string const& text);
    std::string receive();

    /// Has something happen to one character, counted from the first that went that way, which is 1.
    void disturb(Direction direction, std::size_t character, CharacterFault fault);

    /// Characters that the driver has written and receive() has taken, lost ones included.
    std::size_t getTaken() const;

    /// Everything that went over the line so far, as it arrived.
    std::string getReceived() const;
    std::string getSent() const;

private:
    struct Way {
        std::size_t characters = 0;
        std::map<std::size_t, CharacterFault> faults;
    };

    static std::string carried(Way& way, std::string const& text);

    PseudoTerminal _terminal;
    mutable std::mutex _mutex;
    Way _toController;
    Way _toDriver;
    std::string _received;
    std::string _sent;
};

} // namespace simulation
