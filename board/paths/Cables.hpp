#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "board/intent/IntendedBoard.hpp"
#include "chips/PortAddress.hpp"

namespace board {

/// Cables between ports of a board, which its document does not have.
class Cables {
public:
    /// A cable as it is typed: "0.10=3.20"; nothing for other texts.
    static std::optional<std::pair<chips::PortAddress, chips::PortAddress>> read(std::string const& text);

    /// \param texts cables. Throws ToolError (usage) when one is none, or has an end that the board has not,
    /// that is the same as the other one, or that another cable has.
    Cables(std::vector<std::string> const& texts, IntendedBoard const& board);

    bool isEmpty() const { return _others.empty(); }

    /// As they were typed.
    std::vector<std::string> const& getTexts() const { return _texts; }

    /// The other end of the cable at that port.
    std::optional<chips::PortAddress> follow(chips::PortAddress const& port) const;

    /// Ports of the switch that have cables.
    PortSet getPorts(unsigned switchId) const;

    /// One line for each end of a cable that is in VLANs in which the other is not, and for each VLAN in
    /// which both are, whose frames the other end takes for another's or for none's.
    std::vector<std::string> const& getMismatches() const { return _mismatches; }

private:
    using Place = std::pair<unsigned, unsigned>;

    void plug(std::string const& text, IntendedBoard const& board);
    void findMismatches(std::string const& text, IntendedBoard const& board, chips::PortAddress const& one,
                        chips::PortAddress const& other);
    void findRetagging(std::string const& text, IntendedBoard const& board, chips::PortAddress const& sender,
                       chips::PortAddress const& receiver);

    std::vector<std::string> _texts;
    std::map<Place, chips::PortAddress> _others;
    std::map<unsigned, PortSet> _ports;
    std::vector<std::string> _mismatches;
};

} // namespace board
