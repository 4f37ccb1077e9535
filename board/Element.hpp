#pragma once

#include <libxml/tree.h>

#include <optional>
#include <string>
#include <vector>

namespace board {

/// \name Elements of a document, and numbers in them as the library reads them
/// @{

/// An attribute's text; nothing when the element does not have it.
std::optional<std::string> attribute(xmlNodePtr element, char const* name);

/// The attribute in quotes, or "absent".
std::string quotedAttribute(xmlNodePtr element, char const* name);

/// The whole text within the element.
std::string content(xmlNodePtr element);

bool isNamed(xmlNode const* node, char const* name);

/// The child elements of that name.
std::vector<xmlNodePtr> children(xmlNodePtr element, char const* name);

/// The element's start tag, as it could stand in the document.
std::string startTag(xmlNodePtr element);

/// The decimal number at the start of the text, the nearest one that an int holds; nothing when there is
/// none.
std::optional<int> decimalPrefix(std::string const& text);

/// As decimalPrefix(), hexadecimal; one that does not fit is the largest.
std::optional<unsigned int> hexadecimalPrefix(std::string const& text);

/// As decimalPrefix(), of an attribute; `otherwise` when there is none.
int numberOr(xmlNodePtr element, char const* name, int otherwise);

/// Whether the text is decimal digits and nothing else.
bool isDigits(std::string const& text);
/// @}

} // namespace board
