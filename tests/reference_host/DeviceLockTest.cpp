#include "reference_host/DeviceLock.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>
#include <string>

#include "reference_host/FileDescriptor.hpp"
#include "tests/support/TemporaryFile.hpp"

using reference_host::DeviceLock;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

/// Numbers from one process to another.
class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe(_ends.data()), 0); }
    ~Pipe() {
        ::close(_ends[0]);
        ::close(_ends[1]);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;

    void tell(int number) const {
        EXPECT_EQ(::write(_ends[1], &number, sizeof number), static_cast<ssize_t>(sizeof number));
    }
    int hear() const {
        int number = 0;
        EXPECT_EQ(::read(_ends[0], &number, sizeof number), static_cast<ssize_t>(sizeof number));
        return number;
    }

private:
    std::array<int, 2> _ends{};
};

/// A process that does something and then stays until it is told to end.
class Process {
public:
    explicit Process(std::function<void()> const& work) : _id(::fork()) {
        if (_id == 0) {
            work();
            _isDone.tell(0);
            ::pause();
            ::_exit(0);
        }
        _isDone.hear();
    }
    ~Process() { end(); }
    Process(Process const&) = delete;
    Process& operator=(Process const&) = delete;

    void end() {
        if (_id > 0) {
            ::kill(_id, SIGKILL);
            ::waitpid(_id, nullptr, 0);
        }
        _id = 0;
    }

    pid_t getId() const { return _id; }

private:
    Pipe _isDone;
    pid_t _id;
};

/// As the system knows this process and those that it forks: under an emulator, by that one's name.
std::string ownName() {
    std::array<char, 16> name{};
    ::prctl(PR_GET_NAME, name.data());
    return name.data();
}

class DeviceLockTest : public testing::Test {
protected:
    ~DeviceLockTest() override { DeviceLock::setPolicy({}); }

    /// Takes the device as another host would.
    std::function<void()> taking() const {
        return [path = device.path()] {
            std::string inTheWay;
            if (!DeviceLock::take(path, inTheWay)) {
                ::_exit(1);
            }
        };
    }

    TemporaryFile device{"registers"};
    std::string reason;
};

TEST_F(DeviceLockTest, IsTakenOnceByAProcess) {
    EXPECT_TRUE(DeviceLock::take(device.path(), reason));
    EXPECT_TRUE(DeviceLock::take(device.path(), reason));
    reference_host::FileDescriptor const other(device.path(), O_RDONLY);
    EXPECT_NE(::flock(other.get(), LOCK_EX | LOCK_NB), 0);
}

TEST_F(DeviceLockTest, SaysAtOnceWhoHasIt) {
    Process const host(taking());
    DeviceLock::setPolicy({false, false, {}});
    EXPECT_FALSE(DeviceLock::take(device.path(), reason));
    EXPECT_THAT(reason, StartsWith(device.path() + ": process " + std::to_string(host.getId()) + " (" +
                                   ownName() + ", running since 20"));
    EXPECT_THAT(reason, MatchesRegex(".*running since [0-9-]+T[0-9:]+Z\\) uses it"));
}

TEST_F(DeviceLockTest, IsFreeWhenItsHolderIsKilled) {
    Process host(taking());
    host.end();
    DeviceLock::setPolicy({false, false, {}});
    EXPECT_TRUE(DeviceLock::take(device.path(), reason)) << reason;
}

// The holder ends when the other one has said that it waits.
TEST_F(DeviceLockTest, IsWaitedFor) {
    Process host(taking());
    std::string said;
    DeviceLock::setPolicy({true, false, [&](std::string const& line) {
                               said = line;
                               host.end();
                           }});
    std::string const id = std::to_string(host.getId());
    EXPECT_TRUE(DeviceLock::take(device.path(), reason)) << reason;
    EXPECT_THAT(said, StartsWith("waiting for " + device.path() + ": process " + id + " ("));
}

// A command that holds signals back until it looks for them would never come to look.
TEST_F(DeviceLockTest, IsNotWaitedForAfterAnInterrupt) {
    constexpr unsigned secondsOfAWaitThatDoesNotEnd = 20;
    Process const host(taking());
    pid_t const waiting = ::fork();
    if (waiting == 0) {
        ::alarm(secondsOfAWaitThatDoesNotEnd);
        sigset_t held{};
        ::sigemptyset(&held);
        ::sigaddset(&held, SIGINT);
        ::pthread_sigmask(SIG_BLOCK, &held, nullptr);
        DeviceLock::setPolicy({true, false, [](std::string const&) { ::kill(::getpid(), SIGINT); }});
        taking()();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(waiting, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGINT);
}

TEST_F(DeviceLockTest, IsNotStolenFromTheLiving) {
    Process const host(taking());
    DeviceLock::setPolicy({true, true, {}});
    EXPECT_FALSE(DeviceLock::take(device.path(), reason));
    EXPECT_THAT(reason, HasSubstr(" uses it, and has not ended"));
}

// What a process has open, those that it starts without another program have, too.
TEST_F(DeviceLockTest, IsStolenWhereTheHolderHasEndedAndLeftItToAChild) {
    Pipe children;
    pid_t const host = ::fork();
    if (host == 0) {
        taking()();
        if (::fork() == 0) {
            children.tell(::getpid());
            ::pause();
            ::_exit(0);
        }
        ::_exit(0);
    }
    int const child = children.hear();
    ::waitpid(host, nullptr, 0);
    DeviceLock::setPolicy({false, false, {}});
    EXPECT_FALSE(DeviceLock::take(device.path(), reason));
    EXPECT_EQ(reason, device.path() + ": a process that process " + std::to_string(host) +
                          " started before it ended uses it");
    DeviceLock::setPolicy({false, true, {}});
    EXPECT_TRUE(DeviceLock::take(device.path(), reason));
    ::kill(child, SIGKILL);
}

TEST_F(DeviceLockTest, WhatCannotBeOpenedNeedsNone) {
    EXPECT_TRUE(DeviceLock::take("/nonexistent/mem", reason));
    EXPECT_EQ(reason, "");
}

} // namespace
