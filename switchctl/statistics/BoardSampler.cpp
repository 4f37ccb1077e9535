#include "switchctl/statistics/BoardSampler.hpp"

#include "chips/ToolError.hpp"

namespace switchctl::statistics {

BoardSampler::BoardSampler(board::BoardAccess& board, board::PortSelection const& selection)
    : _board(board), _selection(selection) {}

chips::CounterSample BoardSampler::sample(Watcher const& watcher) {
    chips::CounterSample result;
    result.unread = _selection.getLeftOut();
    std::map<unsigned, bool> there;
    for (board::PortSelection::Port const& port : _selection.getPorts()) {
        if (watcher) {
            watcher(result.ports.size(), _selection.getPorts().size());
        }
        unsigned const id = port.address.switchId;
        auto known = there.find(id);
        if (known == there.end()) {
            known = there.emplace(id, isThere(port, result.unread)).first;
        }
        if (known->second) {
            result.ports.push_back(connect(port).reader->read(port.address, result.unread));
        } else {
            chips::PortCounters nothing{port.address, port.model, {}};
            nothing.values.resize(nothing.getCounters().size());
            result.ports.push_back(nothing);
        }
        result.ports.back().label = port.label;
    }
    return result;
}

void BoardSampler::requireChip(board::PortSelection::Port const& port) {
    connect(port).chip.requireAnswer(chips::ExitStatus::noStatistics);
}

bool BoardSampler::isThere(board::PortSelection::Port const& port, std::vector<std::string>& unread) {
    try {
        requireChip(port);
        return true;
    } catch (chips::ToolError const& error) {
        unread.emplace_back(error.what());
        return false;
    }
}

BoardSampler::Reach& BoardSampler::connect(board::PortSelection::Port const& port) {
    return _chips.try_emplace(port.address.switchId, _board, port).first->second;
}

BoardSampler::Reach::Reach(board::BoardAccess& board, board::PortSelection::Port const& port)
    : chip(board, port.address.switchId, port.model),
      reader(chip.getKind().makeCounterReader(chip.getCatalogue(), chip.getTransport())) {}

} // namespace switchctl::statistics
