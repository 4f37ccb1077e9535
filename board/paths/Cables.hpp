#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "board/intent/IntendedBoard.hpp"
#include "chips/PortAddress.hpp"

namespace board {

/// Cables between ports of a board: those that the connectsTo of its document's ports say, and others.
class Cables {
public:
    /// A cable as it is typed: "0.10=3.20"; nothing for other texts.
    static std::optional<std::pair<chips::PortAddress, chips::PortAddress>> read(std::string const& text);

    /// Throws ToolError when a cable is none, or has an end that the board has not, that is the same as the
    /// other one, or that another cable has: usage for one that was typed, badDocument for the others. One
    /// end's connectsTo is enough for a cable.
    /// \param typed cables; one that the document has, too, is one cable.
    /// \param file the document, for messages.
    /// \param unread switches whose cables in the document do not count.
    Cables(std::vector<std::string> const& typed, IntendedBoard const& board,
           std::string const& file = "the document", std::set<unsigned> const& unread = {});

    bool isEmpty() const { return _others.empty(); }

    /// Those of the document, then the others as they were typed.
    std::vector<std::string> const& getTexts() const { return _texts; }

    /// The other end of the cable at that port.
    std::optional<chips::PortAddress> follow(chips::PortAddress const& port) const;

    /// Ports of the switch that have cables.
    PortSet getPorts(unsigned switchId) const;

    /// One line for each end of a cable that is in VLANs in which the other is not, and for each VLAN in
    /// which both are, whose frames the other end takes for another's or for none's.
    std::vector<std::string> const& getMismatches() const { return _mismatches; }

    /// Those of the document that do not count, because an end is of an unread switch.
    std::vector<std::string> const& getLeftOut() const { return _leftOut; }

private:
    using Place = std::pair<unsigned, unsigned>;

    using Ends = std::pair<chips::PortAddress, chips::PortAddress>;
    /// Throws, with a reason.
    using Refusal = std::function<void(std::string const& reason)>;

    void plugDocument(IntendedBoard const& board, chips::PortAddress const& port, std::string const& file,
                      std::set<unsigned> const& unread);
    bool isPlugged(Ends const& ends) const;
    void plug(std::string const& text, Ends const& ends, IntendedBoard const& board, Refusal const& refuse);
    void findMismatches(std::string const& text, IntendedBoard const& board, chips::PortAddress const& one,
                        chips::PortAddress const& other);
    void findRetagging(std::string const& text, IntendedBoard const& board, chips::PortAddress const& sender,
                       chips::PortAddress const& receiver);

    std::vector<std::string> _texts;
    std::map<Place, chips::PortAddress> _others;
    std::map<unsigned, PortSet> _ports;
    std::vector<std::string> _mismatches;
    std::vector<std::string> _leftOut;
};

} // namespace board
