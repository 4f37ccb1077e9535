// The program itself, interrupted while it writes a file.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

namespace {

namespace files = std::filesystem;

/// A pipe that takes nothing more: who writes to it waits.
class FullPipe {
public:
    FullPipe() {
        if (pipe2(_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
            throw std::runtime_error("no pipe");
        }
        std::array<char, 4096> const block{};
        while (write(_ends[1], block.data(), block.size()) > 0) {
        }
        fcntl(_ends[1], F_SETFL, 0);
    }
    ~FullPipe() {
        close(_ends[0]);
        close(_ends[1]);
    }
    FullPipe(FullPipe const&) = delete;
    FullPipe& operator=(FullPipe const&) = delete;

    int getInput() const { return _ends[1]; }

private:
    std::array<int, 2> _ends{};
};

class Folder {
public:
    Folder() {
        if (mkdtemp(_path.data()) == nullptr) {
            throw std::runtime_error("cannot create " + _path);
        }
    }
    ~Folder() { files::remove_all(_path); }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;

    std::string const& getPath() const { return _path; }

    /// Whether there is a file with something in it.
    bool hasContent() const {
        for (auto const& entry : files::directory_iterator(_path)) {
            if (entry.file_size() > 0) {
                return true;
            }
        }
        return false;
    }

private:
    std::string _path = "/tmp/switchmanager_test_XXXXXX";
};

/// Waits until the folder has content, or the process has ended.
/// \return whether the process goes on.
bool waitForContent(Folder const& folder, pid_t child) {
    while (!folder.hasContent()) {
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

class InterruptedOutputTest : public testing::TestWithParam<int> {};

} // namespace

// The summary is more than the program's buffer holds, and the trace is finished after it.
TEST_P(InterruptedOutputTest, LeavesNoUnfinishedFile) {
    Folder const folder;
    FullPipe const full;
    std::string const trace = folder.getPath() + "/trace";
    pid_t const child = fork();
    if (child == 0) {
        dup2(full.getInput(), STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        execl(SWITCHCTL_PROGRAM, "switchctl", "bring-up", EXAMPLES_FOLDER "/trap-mixed.xml", "--simulate",
              "--json", "--trace", trace.c_str(), nullptr);
        _exit(127);
    }
    ASSERT_TRUE(waitForContent(folder, child)) << "it ended before it was interrupted";
    EXPECT_FALSE(files::exists(trace)) << "it is not finished yet";
    kill(child, GetParam());
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == GetParam()) << status;
    EXPECT_TRUE(files::is_empty(folder.getPath()));
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptedOutputTest, testing::Values(SIGINT, SIGTERM, SIGHUP));
