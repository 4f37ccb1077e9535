#include "switchctl/statistics/BoardSampler.hpp"

#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::statistics {

BoardSampler::BoardSampler(board::BoardAccess& board, PortSelection const& selection)
    : _board(board), _selection(selection) {}

chips::CounterSample BoardSampler::sample(Watcher const& watcher) {
    chips::CounterSample result;
    result.unread = _selection.getLeftOut();
    std::map<unsigned, bool> there;
    for (PortSelection::Port const& port : _selection.getPorts()) {
        if (watcher) {
            watcher(result.ports.size(), _selection.getPorts().size());
        }
        unsigned const id = port.address.switchId;
        auto known = there.find(id);
        if (known == there.end()) {
            known = there.emplace(id, isThere(port, result.unread)).first;
        }
        if (known->second) {
            result.ports.push_back(connect(port).read(port.address, result.unread));
        } else {
            chips::PortCounters nothing{port.address, port.model, {}};
            nothing.values.resize(nothing.getCounters().size());
            result.ports.push_back(nothing);
        }
        result.ports.back().label = port.label;
    }
    return result;
}

void BoardSampler::requireChip(PortSelection::Port const& port) {
    std::string const silence =
        "switch " + std::to_string(port.address.switchId) + ": no " + port.model + " answers";
    bool isThere = false;
    try {
        isThere = connect(port).isChipThere();
    } catch (chips::ToolError const& error) {
        throw chips::ToolError(chips::ExitStatus::noStatistics, silence + " (" + error.what() + ")");
    }
    if (!isThere) {
        throw chips::ToolError(chips::ExitStatus::noStatistics, silence);
    }
}

bool BoardSampler::isThere(PortSelection::Port const& port, std::vector<std::string>& unread) {
    try {
        requireChip(port);
        return true;
    } catch (chips::ToolError const& error) {
        unread.emplace_back(error.what());
        return false;
    }
}

chips::CounterReader& BoardSampler::connect(PortSelection::Port const& port) {
    unsigned const id = port.address.switchId;
    Chip& chip = _chips.try_emplace(id, port.model).first->second;
    if (!chip.transport) {
        chip.transport = _board.connect(id, port.model);
        chip.reader = chips::ChipKinds::get(port.model, "statistics")
                          .makeCounterReader(chip.catalogue, *chip.transport);
    }
    return *chip.reader;
}

} // namespace switchctl::statistics
