#include "switchctl/terminal/Progress.hpp"

#include <unistd.h>

#include <csignal>
#include <utility>

#include "switchctl/terminal/Terminal.hpp"

namespace switchctl {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr milliseconds interval{250};
constexpr char const* eraseLine = "\r\033[K";

/// All signals are for the program's other threads.
class NoSignals {
public:
    NoSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &_before);
    }
    ~NoSignals() { pthread_sigmask(SIG_SETMASK, &_before, nullptr); }
    NoSignals(NoSignals const&) = delete;
    NoSignals& operator=(NoSignals const&) = delete;

private:
    sigset_t _before{};
};

} // namespace

Progress::Progress(std::ostream const& errors, std::string text)
    : Progress(Terminal::descriptorOf(errors), std::move(text)) {}

Progress::Progress(int descriptor, std::string text, milliseconds wait)
    : _descriptor(descriptor), _text(std::move(text)) {
    if (Terminal::isAt(_descriptor)) {
        NoSignals const noSignals;
        _thread = std::thread([this, wait] { run(wait); });
    }
}

Progress::~Progress() {
    if (!_thread.joinable()) {
        return;
    }
    {
        std::lock_guard<std::mutex> const lock(_mutex);
        _isEnding = true;
    }
    _ended.notify_all();
    _thread.join();
}

void Progress::update(std::size_t done, std::size_t all) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _done = done;
    _all = all;
}

void Progress::run(milliseconds wait) {
    auto const start = steady_clock::now();
    auto const isEnding = [this] { return _isEnding; };
    std::unique_lock<std::mutex> lock(_mutex);
    if (_ended.wait_for(lock, wait, isEnding)) {
        return;
    }
    do {
        show(getLine(start));
    } while (!_ended.wait_for(lock, interval, isEnding));
    show(eraseLine);
}

void Progress::show(std::string const& line) const {
    // The line is a courtesy: a terminal that refuses it does not stop the operation.
    [[maybe_unused]] ssize_t const written = write(_descriptor, line.data(), line.size());
}

/// The cursor goes back to where a message of the program may begin.
std::string Progress::getLine(steady_clock::time_point start) const {
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(steady_clock::now() - start);
    std::string line = _text + " ... ";
    if (_all != 0) {
        line += std::to_string(_done) + " of " + std::to_string(_all) + ", ";
    }
    line += std::to_string(seconds.count()) + " s";
    return eraseLine + line.substr(0, Terminal::getSize(_descriptor).columns - 1) + "\r";
}

} // namespace switchctl
