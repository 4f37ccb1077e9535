#include "chips/ChipKinds.hpp"

#include <fmt/format.h>

#include <stdexcept>

#include "chips/88e6096/Marvell88E6096Kind.hpp"
#include "chips/ToolError.hpp"
#include "chips/vsc7390/Vsc7390Kind.hpp"

namespace chips {

std::vector<ChipKind const*> const& ChipKinds::getAll() {
    static Marvell88E6096Kind const marvell88E6096;
    static Vsc7390Kind const vsc7390;
    static std::vector<ChipKind const*> const kinds = {&marvell88E6096, &vsc7390};
    return kinds;
}

ChipKind const* ChipKinds::find(std::string const& model) {
    for (ChipKind const* const kind : getAll()) {
        if (kind->getFacts().model == model) {
            return kind;
        }
    }
    return nullptr;
}

ChipKind const& ChipKinds::get(std::string const& model, std::string const& user) {
    if (ChipKind const* const kind = find(model)) {
        return *kind;
    }
    throw ToolError(ExitStatus::badDocument, fmt::format("no chip \"{}\" is known to {}", model, user));
}

ChipKind const& ChipKinds::reachedOver(ChipKind::Transport transport) {
    for (ChipKind const* const kind : getAll()) {
        if (kind->isReachedOver(transport)) {
            return *kind;
        }
    }
    throw std::logic_error("a transport leads to no chip");
}

} // namespace chips
