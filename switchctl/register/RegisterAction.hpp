#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "board/dump/RegisterReading.hpp"
#include "chips/ChipCatalogue.hpp"
#include "switchctl/Command.hpp"
#include "switchctl/register/TransportOptions.hpp"

namespace switchctl::registers {

using board::RegisterReading;

/// Something that `switchctl register` can do.
class RegisterAction : public Command {
public:
    using Command::Command;

    /// Of all actions.
    static std::vector<StatusLine> statuses();

protected:
    std::vector<StatusLine> getStatuses() const override { return statuses(); }

    static std::vector<chips::RegisterLocation> find(chips::ChipCatalogue const& catalogue,
                                                     std::vector<std::string> const& texts, bool physOnly);
    static nlohmann::ordered_json toJson(std::vector<RegisterReading> const& readings);
    static void print(std::ostream& out, std::vector<RegisterReading> const& readings);
};

} // namespace switchctl::registers
