#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "reference_host/XmlDocument.hpp"
#include "tests/faults/BoardImage.hpp"
#include "tests/faults/FaultTable.hpp"

namespace fault_test {

/// A manager's life, from construction over start-up and a port's diagnostics to destruction, again and
/// again, each time with other allocations that fail.
class MemoryFaults {
public:
    /// \param documentPath the board's document.
    /// \param port whose diagnostics are asked for.
    MemoryFaults(std::string const& documentPath, unsigned switchId, unsigned portId);

    /// Allocations of a life.
    std::uint64_t getAllocations() const;

    /// Lets one allocation fail, or all from that one on, for each selected one, and adds what comes of
    /// it to the table.
    void sweep(Selection const& selection, FaultTable& table);

private:
    struct Life {
        /// "populated"; "told" when an exception reached the host, or the management thread said so;
        /// "nobody was told" when it is neither.
        std::string end;
        bool hasDiagnostics = false;
        std::vector<std::string> messages;
        BoardImage image;
        std::uint64_t allocations = 0;
        RunResult run;
    };

    Life live(std::uint64_t first, std::uint64_t count);
    Verdict judge(Life const& life, std::string const& fault) const;

    std::unique_ptr<reference_host::XmlDocument> _document;
    unsigned _switchId;
    unsigned _portId;
    Life _undisturbed;
};

} // namespace fault_test
