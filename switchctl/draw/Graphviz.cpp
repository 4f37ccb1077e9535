#include "switchctl/draw/Graphviz.hpp"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

extern char** environ; // NOLINT: the system's name

namespace switchctl::draw {

namespace {

/// A file without a name, deleted when it is closed.
class ScratchFile {
public:
    explicit ScratchFile(std::string const& text = "") : _file(std::tmpfile()) {
        if (_file == nullptr || std::fwrite(text.data(), 1, text.size(), _file) != text.size() ||
            std::fflush(_file) != 0) {
            close();
            throw Graphviz::Error(std::string("temporary file: ") + std::strerror(errno));
        }
        std::rewind(_file);
    }
    ~ScratchFile() { close(); }
    ScratchFile(ScratchFile const&) = delete;
    ScratchFile& operator=(ScratchFile const&) = delete;

    std::FILE* get() const { return _file; }

private:
    void close() {
        if (_file != nullptr) {
            std::fclose(_file);
        }
    }

    std::FILE* _file;
};

// Where posix_spawnp() cannot report that the program was not found, the child exits with this status.
constexpr int notStarted = 127;

[[noreturn]] void throwNotStarted(std::string const& program, int error) {
    throw Graphviz::Error(program + ": " + std::strerror(error) + " (install Graphviz, or use --format dot)");
}

std::string contentOf(std::FILE* file) {
    std::string content;
    std::array<char, 65536> buffer{};
    std::size_t count = 0;
    std::rewind(file);
    while ((count = std::fread(buffer.data(), 1, buffer.size(), file)) != 0) {
        content.append(buffer.data(), count);
    }
    return content;
}

/// \return whether the program succeeded.
bool run(std::string const& program, std::string const& format, ScratchFile const& input,
         ScratchFile const& output) {
    std::string type = "-T" + format;
    std::string name = program;
    char* arguments[] = {name.data(), type.data(), nullptr};
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(input.get()), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(output.get()), STDOUT_FILENO);
    pid_t child = 0;
    int const error = posix_spawnp(&child, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throwNotStarted(program, error);
    }
    int status = 0;
    while (waitpid(child, &status, 0) == -1 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == notStarted) {
        throwNotStarted(program, ENOENT);
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

} // namespace

Graphviz::Graphviz(std::string program) : _program(std::move(program)) {}

std::string Graphviz::render(std::string const& graph, std::string const& format) const {
    ScratchFile const input(graph);
    ScratchFile const output;
    if (!run(_program, format, input, output)) {
        throw Error(_program + " could not draw the graph");
    }
    return contentOf(output.get());
}

} // namespace switchctl::draw
