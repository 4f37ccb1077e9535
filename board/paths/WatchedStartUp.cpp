#include "board/paths/WatchedStartUp.hpp"

#include <algorithm>
#include <map>

#include "board/AccessReplay.hpp"

namespace board {

using simulation::AccessLog;

namespace {

std::map<unsigned, std::string> modelsOf(BoardReading const& reading) {
    std::map<unsigned, std::string> models;
    for (BoardReading::Wanted const& entry : reading.getWanted()) {
        models.emplace(entry.id, entry.model);
    }
    return models;
}

} // namespace

WatchedStartUp::Known::Known(std::string const& path)
    : document(reference_host::XmlDocument::fromFile(path)), board(*document), reading(*document) {}

WatchedStartUp::WatchedStartUp(std::string const& path, std::string const& oldPath) : _known(path) {
    _frames.emplace(_known.board, _known.reading);
    Entries past;
    if (!oldPath.empty()) {
        _old.emplace(oldPath);
        _frames->add(AskedFrames(_old->board, _old->reading));
        past = getPast(oldPath);
    }
    Entries accesses;
    {
        ModelBringUp bringUp(*_known.document, path,
                             [&](simulation::SimulatedBoard& board) { AccessReplay(board).run(past); });
        accesses = accessesOf(bringUp);
    }
    watch(past, accesses);
}

WatchedStartUp::Entries WatchedStartUp::accessesOf(ModelBringUp& bringUp) {
    Entries accesses = bringUp.getBoard().getLog().getEntries();
    accesses.resize(std::min<std::size_t>(accesses.size(), bringUp.getEffort().registerAccesses));
    return accesses;
}

WatchedStartUp::Entries WatchedStartUp::getPast(std::string const& oldPath) const {
    ModelBringUp bringUp(*_old->document, oldPath);
    Entries past = accessesOf(bringUp);
    std::map<unsigned, std::string> const was = modelsOf(_old->reading);
    std::map<unsigned, std::string> const is = modelsOf(_known.reading);
    auto const isOfOther = [&](AccessLog::Entry const& access) {
        unsigned const id = AccessReplay::switchOf(access);
        return is.count(id) == 0 || is.at(id) != was.at(id);
    };
    past.erase(std::remove_if(past.begin(), past.end(), isOfOther), past.end());
    return past;
}

void WatchedStartUp::watch(Entries const& past, Entries const& accesses) {
    _board.emplace(*_known.document);
    AccessReplay replay(*_board);
    replay.run(past);
    _registers.emplace(RegisterPaths::chipsOf(*_board));
    _paths.emplace(_known.intent, _old ? &_old->intent : nullptr, *_registers, *_frames);
    std::map<std::size_t, OpenPaths::Write> numbers;
    for (AccessLog::Entry const& access : accesses) {
        if (access.kind == AccessLog::Kind::write) {
            _writes.push_back(access);
            numbers.emplace(access.sequence, _writes.size());
        }
    }
    replay.run(accesses, [&](AccessLog::Entry const& write) {
        _paths->follow(AccessReplay::switchOf(write), numbers.at(write.sequence));
    });
}

} // namespace board
