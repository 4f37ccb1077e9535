#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "board/paths/AskedFrames.hpp"

namespace switchctl::paths {

/// How bad it is, ascending.
enum class Severity { note, warning, error };

/// \name Frames in texts and JSON
/// @{

/// "warning".
char const* nameOf(Severity severity);

/// `nameOf` in its colour, where what is written to the stream has colours.
std::string paint(std::ostream const& out, Severity severity);

/// "untagged, tagged 0 1 5-9", and the destinations where these are not all.
std::string framesText(board::AskedFrames const& asked, std::vector<board::FrameKind::Tags> const& frames,
                       std::vector<std::size_t> const& destinations);

/// VIDs, and null for frames without a tag.
nlohmann::ordered_json framesToJson(std::vector<board::FrameKind::Tags> const& frames);

nlohmann::ordered_json destinationsToJson(board::AskedFrames const& asked,
                                          std::vector<std::size_t> const& destinations);

/// "1 error".
std::string counted(std::size_t number, char const* thing);
/// @}

} // namespace switchctl::paths
