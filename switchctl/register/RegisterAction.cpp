#include "switchctl/register/RegisterAction.hpp"

#include <nlohmann/json.hpp>

namespace switchctl::registers {

std::vector<Command::StatusLine> RegisterAction::statuses() {
    return {{ExitStatus::success, "done; of diff: the dumps are equal"},
            {ExitStatus::registersDiffer, "of diff: the dumps differ"},
            {ExitStatus::usage, "the command line, a location or a value is wrong"},
            {ExitStatus::badDocument, "a document or dump cannot be read or is not well-formed"},
            {ExitStatus::noHardware, "the chip cannot be reached (/dev/mem, the serial line)"},
            {ExitStatus::startUpFailed, "the simulated board did not come up"},
            ExitStatus::noTrace,
            {ExitStatus::registerFailed, "a register could not be read or written"},
            {ExitStatus::notConfirmed, "nothing was written, as --yes was missing"}};
}

std::vector<chips::RegisterLocation> RegisterAction::find(chips::ChipCatalogue const& catalogue,
                                                          std::vector<std::string> const& texts,
                                                          bool physOnly) {
    std::vector<chips::RegisterLocation> locations;
    locations.reserve(texts.size());
    for (std::string const& text : texts) {
        locations.push_back(catalogue.find(text, physOnly));
    }
    return locations;
}

nlohmann::ordered_json RegisterAction::toJson(std::vector<RegisterReading> const& readings) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (RegisterReading const& reading : readings) {
        array.push_back(reading.toJson());
    }
    return array;
}

void RegisterAction::print(std::ostream& out, std::vector<RegisterReading> const& readings) {
    for (RegisterReading const& reading : readings) {
        reading.print(out);
    }
}

} // namespace switchctl::registers
