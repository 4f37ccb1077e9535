#include "tests/switchctl/check/LibraryRun.hpp"

#include <algorithm>

using board::BoardSession;
using reference_host::XmlDocument;

LibraryRun::LibraryRun(std::string const& text, Chips chips)
    : _document(XmlDocument::fromText(text, "board.xml")) {
    board::BoardSession::Options options;
    options.simulate = true;
    options.noHardwareAccess = chips == Chips::none;
    options.log = this;
    _session = std::make_unique<board::BoardSession>(*_document, options);
    _outcome = _session->bringUp();
}

LibraryRun::~LibraryRun() = default;

bool LibraryRun::says(std::string const& text) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return std::any_of(_messages.begin(), _messages.end(),
                       [&](std::string const& message) { return message.find(text) != std::string::npos; });
}

std::set<std::string> LibraryRun::saysAfter(std::string const& begin) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    std::set<std::string> found;
    for (std::string const& message : _messages) {
        if (message.compare(0, begin.size(), begin) == 0) {
            found.insert(message.substr(begin.size()));
        }
    }
    return found;
}

void LibraryRun::write(reference_host::LogMessage const& message) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _messages.push_back(message.text);
}
