#include "reference_host/LockHolder.hpp"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace reference_host {

namespace {

namespace fs = std::filesystem;

fs::path folderOf(int process) {
    return fs::path("/proc") / std::to_string(process);
}

bool hasOpen(int process, struct stat const& file) {
    std::error_code error;
    for (fs::directory_iterator entry(folderOf(process) / "fd", error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat other {};
        if (::stat(entry->path().c_str(), &other) == 0 && other.st_dev == file.st_dev &&
            other.st_ino == file.st_ino) {
            return true;
        }
    }
    return false;
}

/// A line of /proc/locks: "1: FLOCK ADVISORY WRITE 812 00:05:4 0 EOF", the device in hexadecimal digits.
struct LockLine {
    std::string kind;
    int process = 0;
    unsigned major = 0;
    unsigned minor = 0;
    std::uint64_t inode = 0;
};

bool read(std::string const& text, LockLine& line) {
    std::istringstream words(text);
    std::string number;
    std::string skipped;
    char colon = ' ';
    return static_cast<bool>(words >> number >> line.kind >> skipped >> skipped >> line.process >> std::hex >>
                             line.major >> colon >> line.minor >> colon >> std::dec >> line.inode);
}

std::string firstLineOf(fs::path const& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

std::time_t bootTime() {
    std::ifstream file("/proc/stat");
    std::time_t time = 0;
    for (std::string word; file >> word;) {
        if (word == "btime" && file >> time) {
            return time;
        }
    }
    return 0;
}

/// When the process began, in UTC; empty when the system does not say.
std::string beginOf(int process) {
    std::string const text = firstLineOf(folderOf(process) / "stat");
    std::size_t const name = text.rfind(')'); // which may have blanks
    if (name == std::string::npos) {
        return "";
    }
    constexpr int fieldsBefore = 19;
    std::istringstream words(text.substr(name + 1));
    std::string skipped;
    for (int field = 0; field < fieldsBefore; ++field) {
        words >> skipped;
    }
    long ticks = 0;
    std::time_t const boot = bootTime();
    if (!(words >> ticks) || boot == 0) {
        return "";
    }
    std::time_t const begin = boot + ticks / ::sysconf(_SC_CLK_TCK);
    std::tm parts{};
    std::array<char, sizeof "2026-11-22T04:05:06Z"> digits{};
    ::gmtime_r(&begin, &parts);
    return {digits.data(), std::strftime(digits.data(), digits.size(), "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

} // namespace

// The file system's number in /proc/locks is not always the one that stat(2) gives, so a process is asked for
// its open files, too; of one that has ended the number has to do.
LockHolder LockHolder::of(int descriptor) {
    LockHolder holder;
    struct stat file {};
    if (::fstat(descriptor, &file) != 0) {
        return holder;
    }
    std::ifstream locks("/proc/locks");
    for (std::string text; holder.process == 0 && std::getline(locks, text);) {
        LockLine line;
        if (!read(text, line) || line.kind != "FLOCK" || line.inode != file.st_ino || line.process <= 0) {
            continue;
        }
        bool const isGone = !fs::exists(folderOf(line.process));
        bool const isSameDevice = line.major == ::major(file.st_dev) && line.minor == ::minor(file.st_dev);
        if (isGone ? isSameDevice : hasOpen(line.process, file)) {
            holder.process = line.process;
            holder.hasEnded = isGone;
        }
    }
    if (holder.process != 0 && !holder.hasEnded) {
        holder.program = firstLineOf(folderOf(holder.process) / "comm");
        holder.since = beginOf(holder.process);
    }
    return holder;
}

std::string LockHolder::describe() const {
    if (process == 0) {
        return "a process that the system does not name";
    }
    std::string const number = "process " + std::to_string(process);
    if (hasEnded) {
        return "a process that " + number + " started before it ended";
    }
    return number + " (" + (program.empty() ? "of an unknown program" : program) +
           (since.empty() ? "" : ", running since " + since) + ")";
}

} // namespace reference_host
