#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialControllerLine.hpp"
#include "tests/faults/FaultTable.hpp"

namespace fault_test {

/// A conversation with the controller beside a VSC7390, over and over, each time with something that
/// happens to one character on the line.
class SerialFaults {
public:
    SerialFaults();

    /// Characters of a conversation, both ways.
    std::uint64_t getCharacters() const;

    /// Each selected character is lost, doubled and garbled, each in a conversation of its own. The
    /// characters to the controller are counted first.
    void sweep(Selection const& selection, FaultTable& table);

private:
    struct Hit {
        simulation::SerialControllerLine::Direction direction;
        std::size_t character;
        simulation::SerialControllerLine::CharacterFault fault;

        std::string describe() const;
    };

    RunResult talk(Hit const* hit);
    Verdict judge(Hit const& hit, RunResult const& disturbed) const;

    std::unique_ptr<reference_host::XmlDocument> _document;
    std::size_t _toController = 0;
    std::size_t _toDriver = 0;
    RunResult _undisturbed;
};

} // namespace fault_test
