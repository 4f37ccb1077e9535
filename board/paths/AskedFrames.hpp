#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "board/intent/FrameKind.hpp"
#include "board/intent/IntendedBoard.hpp"

namespace board {

/// The frames that a board is asked about: each port gets each of these.
class AskedFrames {
public:
    struct Destination {
        FrameKind::Destination kind = FrameKind::Destination::unicast;
        std::uint64_t group = 0;
        /// "unicast", "broadcast" or "group 239.1.2.3".
        std::string name;
    };

    /// Without a tag; with VID 0, VID 1, one that nothing in the document names, and all that something does,
    /// whether to people or to the library.
    /// \param more VIDs that chips know beside.
    AskedFrames(IntendedBoard const& board, BoardReading const& reading, std::set<unsigned> const& more = {});

    /// Asks what others ask, too.
    void add(AskedFrames const& others);

    /// Ascending, without a tag first.
    std::vector<FrameKind::Tags> const& getTags() const { return _tags; }
    std::vector<Destination> const& getDestinations() const { return _destinations; }

    FrameKind getFrame(std::size_t tags, std::size_t destination) const;

    /// The VID that nothing names.
    unsigned getUnknownVid() const { return _unknownVid; }

private:
    std::vector<FrameKind::Tags> _tags;
    std::vector<Destination> _destinations;
    unsigned _unknownVid = 0;
};

} // namespace board
