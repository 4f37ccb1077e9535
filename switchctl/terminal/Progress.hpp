#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

namespace switchctl {

/// A line on a terminal that says what the program is at, while that takes longer than a second. It is
/// erased at the end. Where there is no terminal, nothing happens.
class Progress {
public:
    /// Until an operation gets a line of its own.
    static constexpr std::chrono::milliseconds patience{1000};

    /// \param errors where the program's complaints go; a line is shown when that is its standard error.
    /// \param text what it is at, for example "reading switch 0".
    Progress(std::ostream const& errors, std::string text);

    /// As above, for any terminal.
    /// \param wait until the line is shown.
    Progress(int descriptor, std::string text, std::chrono::milliseconds wait = patience);
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// How much is done of what is to be done. Any thread may call it.
    void update(std::size_t done, std::size_t all);

private:
    void run(std::chrono::milliseconds wait);
    void show(std::string const& line) const;
    std::string getLine(std::chrono::steady_clock::time_point start) const;

    int const _descriptor;
    std::string const _text;
    std::mutex _mutex;
    std::condition_variable _ended;
    bool _isEnding = false;
    std::size_t _done = 0;
    std::size_t _all = 0;
    std::thread _thread;
};

} // namespace switchctl
