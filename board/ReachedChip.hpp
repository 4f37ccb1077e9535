#pragma once

#include <memory>

#include "board/BoardAccess.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/ChipKind.hpp"
#include "chips/ExitStatus.hpp"

namespace board {

/// A chip of a board with the way to it.
class ReachedChip {
public:
    /// Throws as BoardAccess::connect(). The chip must not outlive `board`.
    /// \param model as in configuration documents.
    ReachedChip(BoardAccess& board, unsigned switchId, std::string const& model);

    chips::ChipKind const& getKind() const { return _kind; }
    chips::ChipCatalogue const& getCatalogue() const { return _catalogue; }
    chips::RegisterTransport& getTransport() { return *_transport; }

    /// Throws ToolError with that status when no chip of the kind answers.
    void requireAnswer(chips::ExitStatus status);

private:
    unsigned _switchId;
    chips::ChipKind const& _kind;
    chips::ChipCatalogue const _catalogue;
    std::unique_ptr<chips::RegisterTransport> _transport;
};

} // namespace board
