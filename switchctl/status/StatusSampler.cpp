#include "switchctl/status/StatusSampler.hpp"

#include "chips/ToolError.hpp"

namespace switchctl::status {

StatusSampler::StatusSampler(board::BoardAccess& board, board::PortSelection const& selection)
    : _board(board), _selection(selection) {}

StatusSample StatusSampler::sample(Watcher const& watcher) {
    StatusSample result;
    result.unread = _selection.getLeftOut();
    std::map<unsigned, bool> there;
    for (board::PortSelection::Port const& port : _selection.getPorts()) {
        if (watcher) {
            watcher(result.rows.size(), _selection.getPorts().size());
        }
        unsigned const id = port.address.switchId;
        Reach& reach = _chips.try_emplace(id, _board, port).first->second;
        auto known = there.find(id);
        if (known == there.end()) {
            known = there.emplace(id, isThere(reach, result.unread)).first;
        }
        result.rows.push_back({port, known->second ? reach.reader->read(port.address, result.unread)
                                                   : chips::PortStatus::unread()});
    }
    dropLost(there, result);
    return result;
}

// Where nothing answers any more, zeros may have been read, and look like ports that are off.
void StatusSampler::dropLost(std::map<unsigned, bool>& there, StatusSample& result) {
    for (auto& [id, isStillThere] : there) {
        isStillThere = isStillThere && isThere(_chips.at(id), result.unread);
    }
    for (StatusSample::Row& row : result.rows) {
        if (!there.at(row.port.address.switchId)) {
            row.status = chips::PortStatus::unread();
        }
    }
}

bool StatusSampler::isThere(Reach& reach, std::vector<std::string>& unread) const {
    try {
        reach.chip.requireAnswer(chips::ExitStatus::registerFailed);
        return true;
    } catch (chips::ToolError const& error) {
        unread.emplace_back(error.what());
        return false;
    }
}

StatusSampler::Reach::Reach(board::BoardAccess& board, board::PortSelection::Port const& port)
    : chip(board, port.address.switchId, port.model),
      reader(chip.getKind().makePortStatusReader(chip.getCatalogue(), chip.getTransport())) {}

} // namespace switchctl::status
