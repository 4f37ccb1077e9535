#pragma once

#include <string>

namespace board {

/// What a user is told about a start-up that failed: what to look at, and behind it the library's own words.
/// \param document path of the board's document.
/// \param reason in the words of whoever gave up; may be empty.
std::string startUpFailureText(std::string const& document, std::string const& reason);

} // namespace board
