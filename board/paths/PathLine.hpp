#pragma once

#include <optional>
#include <string>
#include <vector>

#include "board/intent/FrameKind.hpp"
#include "board/intent/Intent.hpp"

namespace board {

/// Ports of a switch that reach others, or fail to, in the same way.
struct PathLine {
    enum class Kind {
        /// Frames go there.
        path,
        /// They do, and must not.
        leak,
        /// They do not, and must.
        missing,
        /// They do, with other tags than they must have.
        form,
        /// Several members of a trunk send the same frame.
        doubled,
        /// They do, and the document says two things of it.
        ambiguous,
        /// Over cables, for ever.
        loop
    };

    /// The tags of a copy beside those that the frame came with.
    struct Form {
        bool isAsReceived = false;
        FrameKind::Tags tags;

        static Form of(FrameKind::Tags const& sent, FrameKind::Tags const& received);
        bool operator<(Form const& other) const;
        bool operator==(Form const& other) const {
            return isAsReceived == other.isAsReceived && tags == other.tags;
        }
        /// "untagged", "tagged 5", "as it came".
        std::string describe() const;
    };

    /// What lines that are put together have in common.
    struct Key {
        Kind kind = Kind::path;
        unsigned switchId = 0;
        /// That the document puts the frames in.
        std::optional<unsigned> vlan;
        /// The form that it should have, where it has another.
        std::optional<Form> wanted;
        Intent::Reason reason = Intent::Reason::inVlan;
        /// The forwarding rules that had a say, with blanks between them.
        std::string rules;

        bool operator<(Key const& other) const;
    };

    /// Ports that send a frame in the same form; of what is missing, that should.
    struct Reach {
        Form form;
        PortSet to = 0;

        bool operator<(Reach const& other) const;
    };

    /// All ports of the list.
    static PortSet portsOf(std::vector<Reach> const& reach);

    Key key;
    /// Each of these reaches each of those other than itself; a single one that is in both reaches itself.
    PortSet from = 0;
    /// By form.
    std::vector<Reach> reach;
    std::vector<FrameKind::Tags> frames;
    /// Indices of AskedFrames.
    std::vector<std::size_t> destinations;

    /// The ports that one of the senders reaches, of those that the line has in `reach` or a part of it.
    PortSet receiversOf(unsigned sender, PortSet reached) const;

    /// "leak".
    static char const* name(Kind kind);
};

} // namespace board
