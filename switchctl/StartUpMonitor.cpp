#include "switchctl/StartUpMonitor.hpp"

namespace switchctl {

namespace {

constexpr char const* exceptionInEvent = "SwitchManagementThread::processEvent. Caught ";
constexpr char const* threadText = "SwitchManagementThread::run [";
constexpr char const* exceptionInLoop = "] caught ";

bool startsWith(std::string const& text, std::string const& start) {
    return text.compare(0, start.size(), start) == 0;
}

/// What follows in the text, without the line end and the quotes around it.
std::string reasonFrom(std::string text, std::size_t position) {
    text.erase(0, position);
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
    finish(true, "");
}

void StartUpMonitor::inspect(reference_host::LogMessage const& message) {
    std::string const& text = message.text;
    if (startsWith(text, exceptionInEvent)) {
        finish(false, reasonFrom(text, std::string(exceptionInEvent).size()));
    } else if (startsWith(text, threadText)) {
        std::size_t const caught = text.find(exceptionInLoop);
        if (caught != std::string::npos) {
            finish(false, reasonFrom(text, caught + std::string(exceptionInLoop).size()));
        }
    }
}

StartUpMonitor::Outcome StartUpMonitor::wait() {
    std::unique_lock<std::mutex> lock(_mutex);
    _changed.wait(lock, [this] { return _finished; });
    return _outcome;
}

void StartUpMonitor::finish(bool populated, std::string const& reason) {
    std::lock_guard<std::mutex> const lock(_mutex);
    if (_finished) {
        return;
    }
    _finished = true;
    _outcome.populated = populated;
    _outcome.reason = reason;
    _changed.notify_all();
}

} // namespace switchctl
