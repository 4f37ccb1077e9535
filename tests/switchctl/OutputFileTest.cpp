// What commands write to files: all of it or nothing, and in place where there is something to keep.

#include "board/OutputFile.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <future>
#include <sstream>

#include "chips/ToolError.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"

using board::OutputFile;
using chips::ExitStatus;
using test_support::minimal;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

namespace files = std::filesystem;

std::string contentOf(std::string const& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

class OutputFileTest : public testing::Test {
protected:
    OutputFileTest() {
        if (mkdtemp(_folder.data()) == nullptr) {
            throw std::runtime_error("cannot create " + _folder);
        }
    }
    ~OutputFileTest() override { files::remove_all(_folder); }

    std::string pathOf(char const* name) const { return _folder + "/" + name; }

    std::string make(char const* name, std::string const& content) const {
        std::ofstream(pathOf(name)) << content;
        return pathOf(name);
    }

    std::vector<std::string> getNames() const {
        std::vector<std::string> names;
        for (auto const& entry : files::directory_iterator(_folder)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    void write(std::string const& path, std::string const& content) {
        OutputFile file(path, out, ExitStatus::noTrace);
        file.getStream() << content;
        file.finish();
    }

    std::string refusalOf(std::string const& path) {
        try {
            write(path, "new");
        } catch (chips::ToolError const& error) {
            EXPECT_EQ(error.getStatus(), ExitStatus::noTrace);
            return error.what();
        }
        return "";
    }

    std::ostringstream out;

private:
    std::string _folder = "/tmp/switchmanager_test_XXXXXX";
};

mode_t modeOf(std::string const& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

ino_t inodeOf(std::string const& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_ino;
}

} // namespace

TEST_F(OutputFileTest, ANewFileHasTheModeThatTheUserWants) {
    mode_t const before = umask(027);
    write(pathOf("new"), "text");
    umask(before);
    EXPECT_EQ(contentOf(pathOf("new")), "text");
    EXPECT_EQ(modeOf(pathOf("new")), 0640U);
    EXPECT_THAT(getNames(), UnorderedElementsAre("new"));
}

TEST_F(OutputFileTest, AFileIsReplacedOnlyWhenTheNewOneIsComplete) {
    std::string const path = make("file", "old");
    ino_t const inode = inodeOf(path);
    {
        OutputFile file(path, out, ExitStatus::noTrace);
        file.getStream() << "new" << std::flush;
        EXPECT_EQ(contentOf(path), "old");
        file.finish();
    }
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_NE(inodeOf(path), inode);
    EXPECT_THAT(getNames(), UnorderedElementsAre("file"));
}

TEST_F(OutputFileTest, TheModeOfAFileStays) {
    std::string const path = make("file", "old");
    for (mode_t const mode : {0600U, 0664U, 0755U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        write(path, "new");
        EXPECT_EQ(modeOf(path), mode);
    }
}

TEST_F(OutputFileTest, AFailureLeavesTheOldFile) {
    std::string const path = make("file", "old");
    {
        OutputFile file(path, out, ExitStatus::noTrace);
        file.getStream() << "half" << std::flush;
    }
    EXPECT_EQ(contentOf(path), "old");
    {
        OutputFile file(path, out, ExitStatus::noTrace);
        file.getStream() << "half" << std::flush;
        file.getStream().setstate(std::ios::badbit);
        EXPECT_THROW(file.requireWritten(), chips::ToolError);
        EXPECT_THROW(file.finish(), chips::ToolError);
        file.finishAnyway();
    }
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_THAT(getNames(), UnorderedElementsAre("file"));
}

TEST_F(OutputFileTest, WhatThereIsCanBeKept) {
    OutputFile file(pathOf("new"), out, ExitStatus::noTrace);
    file.getStream() << "half";
    file.finishAnyway();
    EXPECT_EQ(contentOf(pathOf("new")), "half");
}

TEST_F(OutputFileTest, ASignalLeavesTheOldFileAndNoOther) {
    std::string const path = make("file", "old");
    for (int const number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        EXPECT_EXIT(
            {
                OutputFile file(path, out, ExitStatus::noTrace);
                file.getStream() << "half" << std::flush;
                if (getNames().size() == 2) {
                    std::raise(number);
                }
            },
            testing::KilledBySignal(number), "");
        EXPECT_EQ(contentOf(path), "old");
        EXPECT_THAT(getNames(), UnorderedElementsAre("file"));
    }
}

TEST_F(OutputFileTest, ALinkStaysAndWhatItLeadsToIsWritten) {
    std::string const target = make("target", "old and longer");
    ino_t const inode = inodeOf(target);
    files::create_symlink("target", pathOf("link"));
    files::create_symlink("missing", pathOf("dangling"));
    write(pathOf("link"), "new");
    write(pathOf("dangling"), "new, too");
    EXPECT_TRUE(files::is_symlink(pathOf("link")));
    EXPECT_EQ(contentOf(target), "new");
    EXPECT_EQ(inodeOf(target), inode);
    EXPECT_TRUE(files::is_symlink(pathOf("dangling")));
    EXPECT_EQ(contentOf(pathOf("missing")), "new, too");
}

TEST_F(OutputFileTest, AFileWithTwoNamesKeepsBoth) {
    std::string const path = make("file", "old");
    files::create_hard_link(path, pathOf("other"));
    write(path, "new");
    EXPECT_EQ(contentOf(pathOf("other")), "new");
}

TEST_F(OutputFileTest, APipeIsWritten) {
    std::string const path = pathOf("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    auto reader = std::async(std::launch::async, [&] { return contentOf(path); });
    write(path, "text");
    EXPECT_EQ(reader.get(), "text");
    EXPECT_TRUE(files::is_fifo(path));
}

TEST_F(OutputFileTest, ADeviceIsWritten) {
    write("/dev/null", "text");
    EXPECT_TRUE(files::is_character_file("/dev/null"));
    EXPECT_EQ(refusalOf("/dev/full"), "/dev/full: No space left on device");
    std::string const path = pathOf("device");
    if (mknod(path.c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
        GTEST_SKIP() << "no device node may be made here: " << std::strerror(errno);
    }
    std::ofstream probe(path);
    if (!probe) {
        GTEST_SKIP() << "device nodes cannot be opened here: " << std::strerror(errno);
    }
    write(path, "text");
    EXPECT_TRUE(files::is_character_file(path));
    EXPECT_THAT(getNames(), UnorderedElementsAre("device"));
}

TEST_F(OutputFileTest, ADashIsTheStandardOutput) {
    write("-", "text");
    EXPECT_EQ(out.str(), "text");
    out.setstate(std::ios::badbit);
    EXPECT_THAT(refusalOf("-"), StartsWith("standard output: "));
}

TEST_F(OutputFileTest, RefusalsHaveReasons) {
    EXPECT_EQ(refusalOf("/nonexistent/file"), "/nonexistent/file: No such file or directory");
    EXPECT_EQ(refusalOf("/tmp"), "/tmp: Is a directory");
    EXPECT_EQ(refusalOf(pathOf("") + std::string(300, 'x')),
              pathOf("") + std::string(300, 'x') + ": File name too long");
    EXPECT_THAT(getNames(), testing::IsEmpty());
}

TEST_F(OutputFileTest, AFileThatMayNotBeWrittenIsRefused) {
    std::string const path = make("file", "old");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may write all files";
    }
    EXPECT_EQ(refusalOf(path), path + ": Permission denied");
}

TEST_F(OutputFileTest, DrawLeavesADeviceWhatItIs) {
    std::string const path = pathOf("device");
    if (mknod(path.c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
        GTEST_SKIP() << "no device node may be made here: " << std::strerror(errno);
    }
    ChildProcess::runSwitchctl({"draw", minimal, "--format", "dot", "-o", path});
    EXPECT_TRUE(files::is_character_file(path));
    EXPECT_THAT(getNames(), UnorderedElementsAre("device"));
}

TEST_F(OutputFileTest, DrawAndTracesWriteLinksPipesAndTheStandardOutput) {
    std::string const target = make("target", "old");
    files::create_symlink("target", pathOf("link"));
    EXPECT_EQ(ChildProcess::runSwitchctl({"draw", minimal, "--format", "dot", "-o", pathOf("link")}).status,
              0);
    EXPECT_TRUE(files::is_symlink(pathOf("link")));
    EXPECT_THAT(contentOf(target), StartsWith("graph board"));
    EXPECT_EQ(ChildProcess::runSwitchctl(
                  {"bring-up", minimal, "--simulate", "--accept-errors", "--trace", pathOf("link")})
                  .status,
              0);
    EXPECT_TRUE(files::is_symlink(pathOf("link")));
    EXPECT_THAT(contentOf(target), StartsWith("switchctl trace 1\n"));
    ASSERT_EQ(mkfifo(pathOf("pipe").c_str(), 0600), 0);
    auto reader = std::async(std::launch::async, [&] { return contentOf(pathOf("pipe")); });
    EXPECT_EQ(ChildProcess::runSwitchctl({"draw", minimal, "--format", "dot", "-o", pathOf("pipe")}).status,
              0);
    EXPECT_THAT(reader.get(), StartsWith("graph board"));
    ChildProcess const traced =
        ChildProcess::runSwitchctl({"bring-up", minimal, "--simulate", "--accept-errors", "--trace", "-"});
    EXPECT_EQ(traced.out, contentOf(target));
    EXPECT_THAT(traced.errors, HasSubstr("\nswitches: 1 of 1 found\n"));
    ChildProcess const read = ChildProcess::runSwitchctl(
        {"register", "read", "parallel", "--simulate", "system/CHIPID", "--trace", "-"});
    EXPECT_THAT(read.out, StartsWith("switchctl trace 1\nchip 0 vsc7390\n"));
    EXPECT_THAT(read.errors, StartsWith("system/CHIPID"));
}

// A start-up that fails is when a trace is needed.
TEST_F(OutputFileTest, ATraceOfAFailureIsKept) {
    std::string const board = make("board", "<switches><switch id='0' switchModel='88e6096'/>"
                                            "<switch id='0' switchModel='88e6096'/></switches>");
    EXPECT_EQ(
        ChildProcess::runSwitchctl({"bring-up", board, "--simulate", "--trace", pathOf("trace")}).status, 5);
    EXPECT_THAT(contentOf(pathOf("trace")), HasSubstr("SwitchIdentifier"));
    EXPECT_THAT(getNames(), UnorderedElementsAre("board", "trace"));
}
