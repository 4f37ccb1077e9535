#include "board/StartUpMonitor.hpp"

#include <cstring>
#include <new>
#include <utility>

namespace board {

namespace {

// As manager/SwitchManagementThread.cpp has them.
constexpr char const* exceptionInEvent = "SwitchManagementThread::processEvent. Caught ";
constexpr char const* threadText = "SwitchManagementThread::run [";
constexpr char const* exceptionInLoop = "] caught ";

bool startsWith(std::string const& text, char const* start) {
    return text.compare(0, std::strlen(start), start) == 0;
}

/// What follows in the text, without the line end and the quotes around it.
std::string reasonFrom(std::string const& message, std::size_t position) {
    std::string text = message.substr(position);
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = text.substr(1, text.size() - 2);
    }
    return text;
}

} // namespace

void StartUpMonitor::reportPopulated() {
    finish(true, {});
}

void StartUpMonitor::inspect(reference_host::LogMessage const& message) {
    std::string const& text = message.text;
    if (startsWith(text, exceptionInEvent)) {
        finishEarly(text, std::strlen(exceptionInEvent));
    } else if (startsWith(text, threadText)) {
        std::size_t const caught = text.find(exceptionInLoop);
        if (caught != std::string::npos) {
            finishEarly(text, caught + std::strlen(exceptionInLoop));
        }
    }
}

StartUpMonitor::Outcome StartUpMonitor::wait() {
    std::unique_lock<std::mutex> lock(_mutex);
    _changed.wait(lock, [this] { return _finished; });
    return _outcome;
}

// Whoever waits has to go on even when there is no memory left to say why.
void StartUpMonitor::finishEarly(std::string const& text, std::size_t position) {
    std::string reason;
    try {
        reason = reasonFrom(text, position);
    } catch (std::bad_alloc const&) { // NOLINT(bugprone-empty-catch)
    }
    finish(false, std::move(reason));
}

void StartUpMonitor::finish(bool populated, std::string reason) {
    std::lock_guard<std::mutex> const lock(_mutex);
    if (_finished) {
        return;
    }
    _finished = true;
    _outcome.populated = populated;
    _outcome.reason = std::move(reason);
    _changed.notify_all();
}

} // namespace board
