#pragma once

#include <string>
#include <vector>

#include "board/Labels.hpp"
#include "board/intent/FrameKind.hpp"
#include "board/paths/AskedFrames.hpp"

namespace board {

/// \name Frames and ports in texts about paths
/// @{

/// "untagged, tagged 0 1 5-9", and the destinations where these are not all.
std::string framesText(AskedFrames const& asked, std::vector<FrameKind::Tags> const& frames,
                       std::vector<std::size_t> const& destinations);

/// In ascending order.
std::vector<unsigned> numbersOf(PortSet ports);

/// "0.1", "0.10".
std::vector<std::string> addressesOf(unsigned switchId, PortSet ports);

/// The same with their labels, and a blank between two of them.
std::string namesOf(Labels const& labels, std::vector<std::string> const& addresses);
/// @}

} // namespace board
