#pragma once

#include <optional>
#include <string_view>

#include "board/intent/IntendedBoard.hpp"

namespace switchctl::explain {

/// Where a document says what a rule of forwarding finds in registers.
class StepOrigin {
public:
    /// \param to and `vlan`: none when the frame never got so far. The board must outlive the object.
    StepOrigin(board::IntendedBoard const& board, unsigned switchId, unsigned from,
               std::optional<unsigned> to, std::optional<unsigned> vlan)
        : _board(board), _switch(board.getSwitches().at(switchId)), _from(from), _to(to), _vlan(vlan) {}

    /// The line of the element; 0 when the document has none.
    /// \param rule as in simulation::Decision.
    int getLine(std::string_view rule) const;

private:
    enum class Element { sender, senderInVlan, vlan, receiverInVlan, receiver };

    static std::optional<Element> elementOf(std::string_view rule);
    int lineOfMember(std::optional<unsigned> port) const;

    board::IntendedBoard const& _board;
    board::IntendedBoard::Switch const& _switch;
    unsigned const _from;
    std::optional<unsigned> const _to;
    std::optional<unsigned> const _vlan;
};

} // namespace switchctl::explain
