#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "TerminalWindow.hpp"

/// switchctl in a terminal of its own, as a shell would start it there.
class TerminalRun {
public:
    /// \param environment variables besides TERM=xterm; they win.
    explicit TerminalRun(std::vector<std::string> const& arguments,
                         std::map<std::string, std::string> const& environment = {});
    ~TerminalRun();
    TerminalRun(TerminalRun const&) = delete;
    TerminalRun& operator=(TerminalRun const&) = delete;

    TerminalWindow& getWindow() { return _window; }

    void signal(int number) const;

    /// Waits for its end: the exit status, or -1 when a signal ended it. What it wrote can be read before
    /// and afterwards.
    int wait();

    /// What it wrote in its life; lines end with "\r\n", as terminals have it.
    std::string const& getText();

private:
    TerminalWindow _window;
    pid_t _process = -1;
    int _status = -1;
};
