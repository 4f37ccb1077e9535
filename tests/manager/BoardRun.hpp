#pragma once

#include <memory>
#include <string>

#include "board/BoardSession.hpp"
#include "reference_host/XmlDocument.hpp"
#include "tests/support/RecordingLog.hpp"

/// A whole start-up on a simulated board, on a management thread of its own.
class BoardRun {
public:
    explicit BoardRun(std::string const& text, simulation::SimulatedBoard::Options const& board = {})
        : BoardRun(reference_host::XmlDocument::fromText(text, "test"), board) {}

    BoardRun(std::unique_ptr<reference_host::XmlDocument> document,
             simulation::SimulatedBoard::Options const& board = {})
        : _document(std::move(document)), _session(*_document, options(board)) {}

    board::StartUpMonitor::Outcome bringUp() { return _session.bringUp(); }
    SwitchManager& manager() { return _session.getManager(); }
    simulation::SimulatedBoard& board() { return *_session.getBoard(); }
    board::BoardSession& session() { return _session; }

    test_support::RecordingLog log;

private:
    board::BoardSession::Options options(simulation::SimulatedBoard::Options const& board) {
        board::BoardSession::Options chosen;
        chosen.simulate = true;
        chosen.board = board;
        chosen.log = &log;
        return chosen;
    }

    std::unique_ptr<reference_host::XmlDocument> _document;
    board::BoardSession _session;
};
