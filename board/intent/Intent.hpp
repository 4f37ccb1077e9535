#pragma once

#include <optional>

#include "board/intent/FrameKind.hpp"
#include "board/intent/IntendedBoard.hpp"

namespace board {

/// Who may talk to whom, by the document alone.
///
/// Three answers, since documents write VLANs by tags and VLANs by ports beside one another, some to narrow
/// what the tags allow, some to add to it: a port must get a frame, may get it where the two say different
/// things, or must not.
class Intent {
public:
    /// What is wanted of a frame that a port gets.
    struct Answer {
        /// That the frame belongs to.
        std::optional<unsigned> vlan;
        PortSet must = 0;
        PortSet may = 0;
        /// Those of `may` that are not listed for the group.
        PortSet unfiltered = 0;
        /// \name Ports of the two whose frame leaves without a tag, or with that of the VLAN
        /// All others send it as it came.
        /// @{
        PortSet untagged = 0;
        PortSet tagged = 0;
        /// @}

        PortSet allowed() const { return must | may; }
        /// The tags with which a port sends it, when it came with these.
        FrameKind::Tags tagsAt(unsigned port, FrameKind::Tags const& received) const;
    };

    /// Why a port must, may or must not get a frame.
    enum class Reason {
        inVlan,
        inPortVlan,
        /// Two kinds of VLANs say two things.
        undecided,
        /// Is not listed for the group, on a chip whose driver filters none.
        groupNotFiltered,
        senderNotListed,
        senderNotForwarding,
        receiverNotListed,
        receiverNotForwarding,
        samePort,
        sameTrunk,
        frameInNoVlan,
        receiverNotInVlan,
        receiverNotInGroup
    };

    /// The board must outlive the object.
    explicit Intent(IntendedBoard const& board) : _board(board) {}

    IntendedBoard const& getBoard() const { return _board; }

    /// Throws std::out_of_range when the document has no such switch, or there can be no such port.
    Answer ask(unsigned switchId, unsigned port, FrameKind const& frame) const;

    /// Why `answer`, which ask() gave, has the port `to` where it has it. Throws as ask().
    Reason explain(unsigned switchId, unsigned port, FrameKind const& frame, Answer const& answer,
                   unsigned to) const;

    /// The tag-based VLAN to which a frame belongs that comes in there; none: nothing.
    static std::optional<unsigned> vlanOf(IntendedBoard::Port const& port, FrameKind::Tags const& tags);

    /// For people, for example "it is no member of the frame's VLAN".
    static char const* describe(Reason reason);

private:
    using Port = IntendedBoard::Port;
    using Switch = IntendedBoard::Switch;

    static void addByTags(Answer& answer, Switch const& owner, unsigned port, PortSet open);
    static void addByPorts(Answer& answer, Port const& from, FrameKind const& frame, PortSet open);
    void restrictGroup(Answer& answer, Switch const& owner, FrameKind const& frame) const;

    IntendedBoard const& _board;
};

} // namespace board
