#include "TerminalRun.hpp"

#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace {

/// In the child, which has nobody to tell what went wrong but its exit status.
[[noreturn]] void runOn(int terminal, std::vector<char*> const& argv, std::vector<char*> const& environment) {
    setsid();
    if (ioctl(terminal, TIOCSCTTY, 0) != 0 || dup2(terminal, STDIN_FILENO) < 0 ||
        dup2(terminal, STDOUT_FILENO) < 0 || dup2(terminal, STDERR_FILENO) < 0) {
        _exit(120);
    }
    execve(argv[0], argv.data(), environment.data());
    _exit(121);
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

TerminalRun::TerminalRun(std::vector<std::string> const& arguments,
                         std::map<std::string, std::string> const& environment) {
    std::map<std::string, std::string> variables = environment;
    variables.emplace("TERM", "xterm");
    variables.emplace("PATH", std::getenv("PATH"));
    // Only heard when the program was built with the leak check.
    variables.emplace("LSAN_OPTIONS", "suppressions=" LEAK_SUPPRESSIONS ":print_suppressions=0");
    std::vector<std::string> settings;
    settings.reserve(variables.size());
    for (auto const& [name, value] : variables) {
        settings.push_back(std::string(name).append("=").append(value));
    }
    std::vector<std::string> texts = {SWITCHCTL_PROGRAM};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> const argv = pointersTo(texts);
    std::vector<char*> const variableTexts = pointersTo(settings);
    _process = fork();
    if (_process == 0) {
        // The child has the device from the start, so the window's text does not end before it writes.
        runOn(_window.getDevice(), argv, variableTexts);
    }
}

TerminalRun::~TerminalRun() {
    if (_process > 0) {
        kill(_process, SIGKILL);
        wait();
    }
}

void TerminalRun::signal(int number) const {
    kill(_process, number);
}

int TerminalRun::wait() {
    if (_process > 0) {
        // What nobody reads fills the terminal, and its writer waits.
        _window.closeDevice();
        _window.readToEnd();
        int status = 0;
        waitpid(_process, &status, 0);
        _process = -1;
        _status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return _status;
}

std::string const& TerminalRun::getText() {
    wait();
    return _window.readAvailable();
}
