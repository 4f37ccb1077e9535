#pragma once

#include <string>

namespace benchmarks {

/// A serial line, of pseudo-terminals, with the answers to the next commands on it already.
class AnsweringLine {
public:
    /// Throws std::runtime_error when the system has no pseudo-terminal to give.
    AnsweringLine();
    ~AnsweringLine();
    AnsweringLine(AnsweringLine const&) = delete;
    AnsweringLine& operator=(AnsweringLine const&) = delete;

    /// What drivers open.
    std::string const& getDevicePath() const { return _devicePath; }

    /// How many answers prepare() puts on the line.
    static constexpr int answers = 200;

    /// Takes all commands from the line, and waits until answers to as many register reads are on it. Those
    /// of the last time have to be read by then.
    void prepare();

private:
    int _controller;
    int _device = -1;
    std::string _devicePath;
};

} // namespace benchmarks
