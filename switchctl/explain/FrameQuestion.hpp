#pragma once

#include <optional>
#include <string>
#include <vector>

#include "board/intent/FrameKind.hpp"
#include "chips/PortAddress.hpp"

namespace switchctl::explain {

/// A frame and where it is to go, as people type it: "untagged to 0.10", "tagged 5 to 239.1.2.3".
struct FrameQuestion {
    /// Throws std::invalid_argument, which says what is wrong with the words.
    /// \param words what stands behind the port that gets the frame.
    explicit FrameQuestion(std::vector<std::string> const& words);

    board::FrameKind frame;
    /// The port that it is to leave by; none for an address.
    std::optional<chips::PortAddress> to;
    /// As it was typed.
    std::string target;

private:
    void readTarget();
};

} // namespace switchctl::explain
