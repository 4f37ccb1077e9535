#include "switchctl/LiveBoard.hpp"

#include <nlohmann/json.hpp>

#include "board/ModelBringUp.hpp"
#include "chips/PortAddress.hpp"
#include "chips/ToolError.hpp"

namespace switchctl {

namespace {

[[noreturn]] void refuseUnread(unsigned id, std::string const& what) {
    throw chips::ToolError(chips::ExitStatus::badDocument,
                           what + ": switch " + std::to_string(id) + " is unread: no dump is of it");
}

} // namespace

void LiveBoard::addTo(Arguments& arguments) {
    auto const live = arguments.flag("--live", _isLive, "Ask what the chips of the board hold instead");
    _simulation.addTo(arguments).needs(live);
    arguments
        .option("--from", _dumps,
                "Ask what the chips held when \"register dump --tables\" wrote this file. May be repeated, "
                "for other switches and for PHYs")
        .type("DUMP")
        .oneEach()
        .excludes(live);
}

std::unique_ptr<board::LoadedBoard> LiveBoard::load(Xml& document, std::string const& path) const {
    auto loaded = std::make_unique<board::LoadedBoard>(document, path);
    if (!_dumps.empty()) {
        std::vector<board::RegisterDump> dumps;
        for (std::string const& dump : _dumps) {
            dumps.push_back(board::RegisterDump::fromFile(dump));
        }
        loaded->load(dumps);
    } else if (_simulation.isChosen()) {
        board::ModelBringUp chips(_simulation.getPath(path));
        board::BoardAccess board(chips.getBoard());
        _simulation.strike(chips.getBoard());
        loaded->load(board);
    } else {
        board::BoardAccess board(_memoryDevice);
        loaded->load(board);
    }
    return loaded;
}

void LiveBoard::requireRead(board::LoadedBoard const& loaded, std::vector<std::string> const& ports,
                            std::vector<std::string> const& cables) {
    for (unsigned const id : loaded.getUnread()) {
        for (std::string const& text : ports) {
            auto const port = chips::PortAddress::fromText(text);
            if (port && port->switchId == id) {
                refuseUnread(id, text);
            }
        }
        for (std::string const& text : cables) {
            auto const ends = board::Cables::read(text);
            if (ends && (ends->first.switchId == id || ends->second.switchId == id)) {
                refuseUnread(id, "--cable " + text);
            }
        }
    }
}

void LiveBoard::printUnread(std::ostream& out, board::LoadedBoard const& loaded,
                            board::Cables const& cables) {
    for (unsigned const id : loaded.getUnread()) {
        out << "switch " << id << ": unread, no dump is of it\n";
    }
    for (unsigned const id : loaded.getUnreadPhys()) {
        out << "switch " << id << ": PHYs unread, all taken for powered up\n";
    }
    for (std::string const& cable : cables.getLeftOut()) {
        out << "cable " << cable << ": not followed, an end is unread\n";
    }
}

void LiveBoard::addUnread(nlohmann::ordered_json& json, board::LoadedBoard const& loaded,
                          board::Cables const& cables) {
    json["unread"] = loaded.getUnread();
    json["unreadPhys"] = loaded.getUnreadPhys();
    json["unreadCables"] = cables.getLeftOut();
}

std::set<unsigned> LiveBoard::getUnread(board::LoadedBoard const* loaded) {
    if (loaded == nullptr) {
        return {};
    }
    auto const& unread = loaded->getUnread();
    return {unread.begin(), unread.end()};
}

} // namespace switchctl
