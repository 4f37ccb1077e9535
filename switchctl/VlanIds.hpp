#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace switchctl {

/// The id of a VLAN in the ways that people write it, so that none is taken for another: "vlan" as a number,
/// "hexadecimal", and "written", what the document has, null where it has nothing.
nlohmann::ordered_json vlanIds(unsigned id, std::optional<std::string> const& written);

} // namespace switchctl
