#pragma once

#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "chips/PortAddress.hpp"

namespace board {

/// The ports that are asked for, of those that a document has.
class PortSelection {
public:
    struct Port {
        chips::PortAddress address;
        /// Of its switch, as in configuration documents.
        std::string model;
        /// What the document has there.
        std::string connectedTo;
        /// What the document calls it; empty when it does not.
        std::string label;
    };

    /// What a text may stand for.
    enum class Texts { ports, portsAndSwitches };

    /// Throws ToolError: usage when the document has no such switch or port or the chip has not,
    /// badDocument when the document has no port at all.
    /// \param path of the document, for messages.
    /// \param texts each SWITCH.PORT or, where that is allowed, SWITCH for all of its ports; none for all
    /// ports.
    PortSelection(BoardReading const& document, std::string const& path,
                  std::vector<std::string> const& texts, Texts allowed = Texts::ports);

    /// In the order of the texts, each once; or by switch and port.
    std::vector<Port> const& getPorts() const { return _ports; }

    /// Why ports of the document are not among them, a line each: they have no number that their chip has.
    std::vector<std::string> const& getLeftOut() const { return _leftOut; }

    /// Null when it is not among them.
    Port const* find(chips::PortAddress const& address) const;

private:
    void addAll(BoardReading const& document, BoardReading::Switch const& entry);
    void add(BoardReading const& document, std::string const& path, std::string const& text, Texts allowed);
    void add(BoardReading const& document, BoardReading::Switch const& entry, unsigned portId);

    std::vector<Port> _ports;
    std::vector<std::string> _leftOut;
};

} // namespace board
