#pragma once

#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"
#include "reference_host/LogSink.hpp"
#include "reference_host/XmlDocument.hpp"

/// The library itself, started up on a document, to compare with what the checks say about it.
class LibraryRun : private reference_host::LogSink {
public:
    enum class Chips { simulated, none };

    explicit LibraryRun(std::string const& text, Chips chips = Chips::simulated);
    ~LibraryRun() override;

    /// Whether start-up came to its end.
    bool isUp() const { return _outcome.populated; }

    /// Why it did not.
    std::string const& getReason() const { return _outcome.reason; }

    /// Whether the library has logged a message with that text in it.
    bool says(std::string const& text) const;

    /// What follows `begin` in the messages that begin with it.
    std::set<std::string> saysAfter(std::string const& begin) const;

    SwitchManager& getManager() { return _session->getManager(); }
    simulation::SimulatedBoard& getBoard() { return *_session->getBoard(); }
    board::BoardReading getReading() { return board::BoardReading(*_document); }

private:
    void write(reference_host::LogMessage const& message) override;

    mutable std::mutex _mutex;
    std::vector<std::string> _messages;
    std::unique_ptr<reference_host::XmlDocument> _document;
    std::unique_ptr<board::BoardSession> _session;
    board::StartUpMonitor::Outcome _outcome;
};
