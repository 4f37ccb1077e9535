// What is open while registers are written is what stations get that send after every write.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "board/AccessReplay.hpp"
#include "board/paths/PathWording.hpp"
#include "board/paths/WatchedStartUp.hpp"
#include "simulation/network/SimulatedNetwork.hpp"
#include "tests/board/paths/StartingDocuments.hpp"
#include "tests/support/TemporaryFile.hpp"

using board::AskedFrames;
using board::OpenPaths;
using board::PathLine;
using board::PortSet;
using board::RegisterPaths;
using End = simulation::SimulatedNetwork::End;
using simulation::AccessLog;

namespace {

/// Port, frame by tags and destination, port.
using Leak = std::tuple<unsigned, std::size_t, std::size_t, unsigned>;
/// With the writes that opened and closed it.
using Opening = std::tuple<Leak, OpenPaths::Write, OpenPaths::Write>;

std::size_t indexOf(AskedFrames const& frames, board::FrameKind::Tags const& tags) {
    auto const& all = frames.getTags();
    return static_cast<std::size_t>(std::find(all.begin(), all.end(), tags) - all.begin());
}

std::set<Opening> openingsIn(OpenPaths::Interval const& interval, AskedFrames const& frames) {
    std::set<Opening> openings;
    for (PathLine const& line : interval.lines) {
        for (unsigned const from : board::numbersOf(line.from)) {
            for (unsigned const to :
                 board::numbersOf(line.receiversOf(from, PathLine::portsOf(line.reach)))) {
                for (auto const& tags : line.frames) {
                    for (std::size_t const destination : line.destinations) {
                        openings.insert({{from, indexOf(frames, tags), destination, to},
                                         interval.opened,
                                         interval.closed});
                    }
                }
            }
        }
    }
    return openings;
}

/// Stations at all ports of a board of one switch, which send everything to everybody after each write.
class SendingStations {
public:
    /// \param isWarm the chips come from a bring-up of the same document.
    SendingStations(std::string const& path, bool isWarm)
        : _document(reference_host::XmlDocument::fromFile(path)),
          _board(*_document),
          _network(_board),
          _id(_board.getSwitchIds().front()) {
        if (isWarm) {
            _past = board::ModelBringUp(*_document, path).getBoard().getLog().getEntries();
        }
        auto const before = [&](simulation::SimulatedBoard& other) { board::AccessReplay(other).run(_past); };
        _accesses = board::ModelBringUp(*_document, path, before).getBoard().getLog().getEntries();
        for (unsigned port = 0; port < getPorts(); ++port) {
            _network.attach({_id, port}, [this, port](simulation::EthernetFrame const&) {
                _arrived |= PortSet{1} << port;
            });
        }
    }

    std::set<Opening> start(AskedFrames const& frames) {
        board::AccessReplay replay(_board);
        replay.run(_past);
        for (unsigned port = 0; port < getPorts(); ++port) {
            _board.getChip(_id).plugLink(port);
        }
        std::set<Leak> const before = send(frames);
        if (_past.empty()) {
            note(before, {}, 0);
        }
        OpenPaths::Write write = 0;
        replay.run(_accesses, [&](AccessLog::Entry const& entry) {
            write += writesUpTo(entry.sequence);
            note(send(frames), _past.empty() ? std::set<Leak>() : before, write);
        });
        return _ended;
    }

private:
    unsigned getPorts() { return _board.getChip(_id).getForwarding()->getNumberOfPorts(); }

    /// Writes that the log has up to there and that were not counted before: some follow from others.
    std::size_t writesUpTo(std::size_t sequence) {
        std::size_t writes = 0;
        for (; _counted < sequence; ++_counted) {
            writes += _accesses[_counted].kind == AccessLog::Kind::write ? 1 : 0;
        }
        return writes;
    }

    /// Who reaches whom and must not.
    std::set<Leak> send(AskedFrames const& frames) {
        std::set<Leak> leaks;
        for (std::size_t tags = 0; tags < frames.getTags().size(); ++tags) {
            for (std::size_t destination = 0; destination < frames.getDestinations().size(); ++destination) {
                board::FrameKind const kind = frames.getFrame(tags, destination);
                for (unsigned from = 0; from < getPorts(); ++from) {
                    _arrived = 0;
                    _network.inject({_id, from}, RegisterPaths::frameOf(kind));
                    _network.run();
                    PortSet const leak = _arrived & ~_intent.ask(_id, from, kind).allowed();
                    for (unsigned to = 0; to < getPorts(); ++to) {
                        if ((leak >> to & 1U) != 0) {
                            leaks.insert({from, tags, destination, to});
                        }
                    }
                }
            }
        }
        return leaks;
    }

    void note(std::set<Leak> const& leaks, std::set<Leak> const& allowed, OpenPaths::Write write) {
        for (auto open = _open.begin(); open != _open.end();) {
            if (leaks.count(open->first) == 0) {
                _ended.insert({open->first, open->second, write});
                open = _open.erase(open);
            } else {
                ++open;
            }
        }
        for (Leak const& leak : leaks) {
            if (allowed.count(leak) == 0) {
                _open.emplace(leak, write);
            }
        }
    }

    std::unique_ptr<reference_host::XmlDocument> _document;
    board::IntendedBoard const _intended{*_document};
    board::Intent const _intent{_intended};
    simulation::SimulatedBoard _board;
    simulation::SimulatedNetwork _network;
    unsigned const _id;
    std::vector<AccessLog::Entry> _past;
    std::vector<AccessLog::Entry> _accesses;
    std::size_t _counted = 0;
    PortSet _arrived = 0;
    std::map<Leak, OpenPaths::Write> _open;
    std::set<Opening> _ended;
};

struct Start {
    char const* name;
    std::string document;
    bool isWarm;
};

class OpenPathsByFramesTest : public testing::TestWithParam<Start> {};

} // namespace

TEST_P(OpenPathsByFramesTest, StationsGetWhatIsOpen) {
    test_support::TemporaryFile const file(GetParam().document);
    board::WatchedStartUp const startUp(file.path(), GetParam().isWarm ? file.path() : "");
    std::set<Opening> watched;
    for (OpenPaths::Interval const& interval : startUp.getPaths().getIntervals()) {
        watched.merge(openingsIn(interval, startUp.getFrames()));
    }
    EXPECT_FALSE(watched.empty());
    EXPECT_EQ(watched, SendingStations(file.path(), GetParam().isWarm).start(startUp.getFrames()));
}

INSTANTIATE_TEST_SUITE_P(Boards, OpenPathsByFramesTest,
                         testing::Values(Start{"an_88E6096_after_a_reset", board_test::marvellBoard(), false},
                                         Start{"a_warm_VSC7390", board_test::vitesseBoard(), true}),
                         [](auto const& start) { return start.param.name; });
