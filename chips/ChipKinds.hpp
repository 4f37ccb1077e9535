#pragma once

#include <string>
#include <vector>

#include "chips/ChipKind.hpp"

namespace chips {

/// The chip families that tools know.
struct ChipKinds {
    /// A new family joins by a row here.
    static std::vector<ChipKind const*> const& getAll();

    /// By the text of the switchModel attribute; null when there is none of that name.
    static ChipKind const* find(std::string const& model);

    /// As find(); throws ToolError (badDocument) when there is none.
    /// \param user who asked, for the message.
    static ChipKind const& get(std::string const& model, std::string const& user);

    /// The family that a transport leads to.
    static ChipKind const& reachedOver(ChipKind::Transport transport);
};

} // namespace chips
