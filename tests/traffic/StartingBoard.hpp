#pragma once

#include <functional>
#include <optional>
#include <string>

#include "board/ModelBringUp.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/network/SimulatedNetwork.hpp"

/// The models of a board while the library's accesses come to them one by one, with a link at every port.
class StartingBoard {
public:
    using Watcher = std::function<void()>;

    /// \param text of the document.
    explicit StartingBoard(std::string const& text, simulation::SimulatedBoard::Options const& options = {});

    /// A start-up by the library: on chips after reset, or, if there was one before, on what that one left.
    void start(Watcher const& afterEachWrite = {});

    simulation::SimulatedBoard& getBoard() { return _board; }

    /// Ports that send a frame of a station, bit n for port n, as things are at the moment.
    /// \param vid none for an untagged frame.
    std::uint32_t
    reached(unsigned switchId, unsigned port, std::optional<unsigned> vid = {},
            simulation::EthernetFrame::Address destination = simulation::EthernetFrame::broadcastAddress);

private:
    std::unique_ptr<reference_host::XmlDocument> _document;
    // Of the start-ups so far: what the library reads in the next one, they have left.
    std::vector<simulation::AccessLog::Entry> _past;
    simulation::SimulatedBoard _board;
};
