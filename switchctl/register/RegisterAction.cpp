#include "switchctl/register/RegisterAction.hpp"

namespace switchctl::registers {

RegisterAction::RegisterAction(CLI::App& command, char const* name, char const* text)
    : _app(command.add_subcommand(name, text)) {}

RegisterAction::~RegisterAction() = default;

bool RegisterAction::isChosen() const {
    return _app->parsed();
}

CLI::App& RegisterAction::getApp() {
    return *_app;
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
