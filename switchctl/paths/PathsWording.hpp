#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "board/paths/AskedFrames.hpp"
#include "board/paths/ForwardingRules.hpp"
#include "board/paths/PathWording.hpp"

namespace switchctl::paths {

/// How bad it is, ascending.
enum class Severity { note, warning, error };

/// \name Frames in texts and JSON
/// @{

/// "warning".
char const* nameOf(Severity severity);

/// `nameOf` in its colour, where what is written to the stream has colours.
std::string paint(std::ostream const& out, Severity severity);

/// VIDs, and null for frames without a tag.
nlohmann::ordered_json framesToJson(std::vector<board::FrameKind::Tags> const& frames);

nlohmann::ordered_json destinationsToJson(board::AskedFrames const& asked,
                                          std::vector<std::size_t> const& destinations);

/// Those rules that are not sure, each once, of lists of numbers with blanks between them.
std::vector<board::ForwardingRules::Rule const*> unsureOf(std::set<std::string> const& rules);

/// Prints `unsureOf`, with a heading where there are any.
void printUnsure(std::ostream& out, std::set<std::string> const& rules);

nlohmann::ordered_json ruleToJson(board::ForwardingRules::Rule const& rule);

/// "1 error".
std::string counted(std::size_t number, char const* thing);
/// @}

} // namespace switchctl::paths
