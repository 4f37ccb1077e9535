#include "reference_host/StreamLog.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>

using reference_host::LogMessage;
using reference_host::StreamLog;
using Operation = reference_host::LogMessage::Operation;

namespace {

LogMessage message(Operation operation, std::string const& text, unsigned int level = 0) {
    LogMessage result;
    result.operation = operation;
    result.level = level;
    result.text = text;
    return result;
}

StreamLog::Options untimed() {
    StreamLog::Options options;
    options.timeStamps = false;
    return options;
}

std::string written(std::string const& text) {
    std::ostringstream out;
    StreamLog log(out, untimed());
    log.write(message(Operation::info, text));
    return out.str();
}

TEST(StreamLogTest, NamesEachOperation) {
    std::ostringstream out;
    StreamLog log(out, untimed());
    log.write(message(Operation::critical, "a\n"));
    log.write(message(Operation::error, "b\n"));
    log.write(message(Operation::warning, "c\n"));
    log.write(message(Operation::info, "d\n"));
    log.write(message(Operation::debug, "e\n"));
    log.write(message(Operation::level, "f\n", 2));
    EXPECT_EQ(out.str(), "critical a\n"
                         "error    b\n"
                         "warning  c\n"
                         "info     d\n"
                         "debug    e\n"
                         "level 2  f\n");
}

TEST(StreamLogTest, EveryMessageIsOneLine) {
    EXPECT_EQ(written("with\n"), "info     with\n");
    EXPECT_EQ(written("without"), "info     without\n");
    EXPECT_EQ(written(""), "info     \n");
    EXPECT_EQ(written("\n"), "info     \n");
    EXPECT_EQ(written("two\nlines\n"), "info     two\\nlines\n");
    EXPECT_EQ(written("two ends\n\n"), "info     two ends\\n\n");
}

TEST(StreamLogTest, ShowsControlCharactersInsteadOfObeyingThem) {
    EXPECT_EQ(written("tab\tand\rreturn"), "info     tab\\tand\\rreturn\n");
    EXPECT_EQ(written("\x1B[31mred"), "info     \\x1B[31mred\n");
    EXPECT_EQ(written(std::string("zero\0end", 8)), "info     zero\\x00end\n");
    EXPECT_EQ(written("rub\x7F"), "info     rub\\x7F\n");
    EXPECT_EQ(written("csi \xC2\x9B"
                      "2J"),
              "info     csi \\x9B2J\n");
}

TEST(StreamLogTest, LeavesOrdinaryTextAlone) {
    EXPECT_EQ(written("Gr\xC3\xB6\xC3\x9F"
                      "e \xC2\xA7 100% c:\\n"),
              "info     Gr\xC3\xB6\xC3\x9F"
              "e \xC2\xA7 100% c:\\n\n");
    EXPECT_EQ(written("cut \xC2"), "info     cut \xC2\n");
}

TEST(StreamLogTest, LevelsAboveTheHighestAreNotShown) {
    std::ostringstream out;
    StreamLog::Options options = untimed();
    options.highestLevel = 2;
    StreamLog log(out, options);
    for (unsigned int level = 0; level <= 4; ++level) {
        log.write(message(Operation::level, "text", level));
    }
    log.write(message(Operation::debug, "without level"));
    EXPECT_EQ(out.str(), "level 0  text\nlevel 1  text\nlevel 2  text\ndebug    without level\n");
}

TEST(StreamLogTest, OnlyTheChosenOperationsAreShown) {
    std::ostringstream out;
    StreamLog::Options options = untimed();
    options.operations = {Operation::error, Operation::warning};
    StreamLog log(out, options);
    log.write(message(Operation::critical, "critical"));
    log.write(message(Operation::error, "error"));
    log.write(message(Operation::warning, "warning"));
    log.write(message(Operation::info, "info"));
    log.write(message(Operation::debug, "debug"));
    log.write(message(Operation::level, "level"));
    EXPECT_EQ(out.str(), "error    error\nwarning  warning\n");
}

TEST(StreamLogTest, TimeStampsAreUtcWithMilliseconds) {
    std::ostringstream out;
    StreamLog::Options options;
    options.now = [] { return StreamLog::Clock::time_point(std::chrono::milliseconds(1700000000007)); };
    StreamLog log(out, options);
    log.write(message(Operation::info, "text\n"));
    EXPECT_EQ(out.str(), "2023-11-14T22:13:20.007Z info     text\n");
}

TEST(StreamLogTest, ShowsEverythingWithTimesUnlessToldOtherwise) {
    std::ostringstream out;
    StreamLog log(out);
    log.write(message(Operation::level, "text", 4));
    std::string const line = out.str();
    ASSERT_EQ(line.size(), std::string("2023-11-14T22:13:20.007Z level 4  text\n").size());
    EXPECT_EQ(line.substr(23), "Z level 4  text\n");
}

TEST(StreamLogTest, LinesOfSeveralThreadsDoNotMix) {
    std::ostringstream out;
    StreamLog log(out, untimed());
    auto write = [&log](std::string const& text) {
        for (int i = 0; i < 500; ++i) {
            log.write(message(Operation::info, text));
        }
    };
    std::thread first(write, "first");
    std::thread second(write, "second");
    first.join();
    second.join();
    std::istringstream lines(out.str());
    std::string line;
    int count = 0;
    for (; std::getline(lines, line); ++count) {
        ASSERT_TRUE(line == "info     first" || line == "info     second") << line;
    }
    EXPECT_EQ(count, 1000);
}

} // namespace
