#include "switchctl/draw/Graphviz.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

extern char** environ; // NOLINT: the system's name

namespace switchctl::draw {

namespace {

/// A file without a name, deleted when it is closed.
class ScratchFile {
public:
    explicit ScratchFile(std::string const& text) : _file(std::tmpfile()) {
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

    int getDescriptor() const { return fileno(_file); }

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

/// \return whether the program succeeded.
bool run(std::string const& program, std::string const& format, std::string const& path, int input) {
    std::string type = "-T" + format;
    std::string output = "-o" + path;
    std::string name = program;
    char* arguments[] = {name.data(), type.data(), output.data(), nullptr};
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
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

void Graphviz::render(std::string const& graph, std::string const& format, std::string const& path) const {
    ScratchFile const input(graph);
    std::string const unfinished = path + ".part";
    bool const isDrawn = run(_program, format, unfinished, input.getDescriptor());
    std::error_code error;
    if (!isDrawn) {
        std::filesystem::remove(unfinished, error);
        throw Error(_program + " could not draw " + path);
    }
    std::filesystem::rename(unfinished, path, error);
    if (error) {
        throw Error(path + ": " + error.message());
    }
}

} // namespace switchctl::draw
