#include "switchctl/VlanIds.hpp"

#include <nlohmann/json.hpp>

#include "board/Wording.hpp"

namespace switchctl {

nlohmann::ordered_json vlanIds(unsigned id, std::optional<std::string> const& written) {
    return {{"vlan", id},
            {"hexadecimal", board::hexadecimal(id)},
            {"written", written ? nlohmann::ordered_json(*written) : nlohmann::ordered_json()}};
}

} // namespace switchctl
