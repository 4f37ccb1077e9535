#include "tests/support/ChildProcess.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "tests/support/TemporaryFile.hpp"

using test_support::TemporaryFile;

namespace {

/// The actions that give a child its streams.
class Redirection {
public:
    Redirection(std::string const& in, std::string const& out, std::string const& errors) {
        posix_spawn_file_actions_init(&_actions);
        add(STDIN_FILENO, in, O_RDONLY);
        add(STDOUT_FILENO, out, O_WRONLY | O_TRUNC);
        add(STDERR_FILENO, errors, O_WRONLY | O_TRUNC);
    }
    ~Redirection() { posix_spawn_file_actions_destroy(&_actions); }
    Redirection(Redirection const&) = delete;
    Redirection& operator=(Redirection const&) = delete;

    posix_spawn_file_actions_t const* get() const { return &_actions; }

private:
    void add(int descriptor, std::string const& path, int flags) {
        if (path == "closed") {
            posix_spawn_file_actions_addclose(&_actions, descriptor);
        } else {
            posix_spawn_file_actions_addopen(&_actions, descriptor, path.c_str(), flags, 0);
        }
    }

    posix_spawn_file_actions_t _actions{};
};

} // namespace

ChildProcess ChildProcess::runSwitchctl(std::vector<std::string> const& arguments, Streams const& streams) {
    // Only heard when the program was built with the leak check.
    setenv("LSAN_OPTIONS", "suppressions=" LEAK_SUPPRESSIONS ":print_suppressions=0", 1);
    std::vector<std::string> texts = {SWITCHCTL_PROGRAM};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    TemporaryFile const out;
    TemporaryFile const errors;
    Redirection const redirection(streams.in, streams.out.empty() ? out.path() : streams.out, errors.path());
    pid_t child = 0;
    if (posix_spawn(&child, SWITCHCTL_PROGRAM, redirection.get(), nullptr, argv.data(), environ) != 0) {
        throw std::runtime_error("cannot run " SWITCHCTL_PROGRAM);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ChildProcess result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = out.content();
    result.errors = errors.content();
    return result;
}
