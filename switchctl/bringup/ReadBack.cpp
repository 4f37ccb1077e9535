#include "switchctl/bringup/ReadBack.hpp"

#include <nlohmann/json.hpp>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "board/PortStart.hpp"
#include "switchctl/terminal/Colours.hpp"

namespace switchctl::bringup {

using chips::ExitStatus;
using Extent = board::ChipScope::Extent;

ReadBack::ReadBack(Xml& document, std::string const& path, board::BoardSession& session,
                   std::string const& memoryDevice,
                   std::optional<chips::PortSettings::Speed> const& startSpeed) {
    simulation::SimulatedBoard* const simulated = session.getBoard();
    {
        board::ModelBringUp expected(document, path);
        if (startSpeed) {
            board::BoardAccess models(expected.getBoard());
            board::PortStart const started(expected.getDocument(), models, *startSpeed);
        }
        _run = std::make_unique<board::AuditRun>(expected,
                                                 simulated != nullptr ? Extent::everything : Extent::written);
    }
    if (simulated != nullptr) {
        board::BoardAccess chips(*simulated);
        _run->compare(chips);
    } else {
        board::BoardAccess chips(memoryDevice);
        _run->compare(chips);
    }
}

void ReadBack::print(std::ostream& out) const {
    Colours const colours(out);
    out << "read back: " << _run->getSummary() << '\n';
    for (board::Deviation const& deviation : _run->getDeviations()) {
        out << "  " << colours.paint(Colours::Colour::red, deviation.getText()) << '\n';
    }
    for (std::string const& line : _run->getUnread()) {
        out << "  " << colours.paint(Colours::Colour::red, "not read: " + line) << '\n';
    }
}

nlohmann::ordered_json ReadBack::toJson() const {
    nlohmann::ordered_json deviations = nlohmann::ordered_json::array();
    for (board::Deviation const& deviation : _run->getDeviations()) {
        deviations.push_back(deviation.getText());
    }
    return {{"switches", _run->getSwitchesRead()},
            {"registers", _run->getRegisters()},
            {"entries", _run->getEntries()},
            {"deviations", deviations},
            {"unread", _run->getUnread()}};
}

ExitStatus ReadBack::getStatus() const {
    if (!_run->getDeviations().empty()) {
        return ExitStatus::notAsDetermined;
    }
    return _run->getUnread().empty() ? ExitStatus::success : ExitStatus::registerFailed;
}

} // namespace switchctl::bringup
