// label and connectsTo are for people and tools: the library does with a document what it does with the same
// one without them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "board/BoardSession.hpp"
#include "reference_host/InputFile.hpp"
#include "tests/support/TestDocument.hpp"

namespace {

struct Course : reference_host::LogSink {
    void write(reference_host::LogMessage const& message) override {
        // What is before depends on when the host reports its PHY interfaces.
        isInitialising = isInitialising || message.text == "SwitchManager::initialisingAction\n";
        if (isInitialising && std::this_thread::get_id() != caller) {
            messages.push_back(std::to_string(static_cast<int>(message.operation)) + " " + message.text);
        }
    }

    std::string accesses;
    std::thread::id const caller = std::this_thread::get_id();
    bool isInitialising = false;
    std::vector<std::string> messages;
    std::vector<std::string> queries;
};

void bringUp(std::string const& text, Course& course) {
    test_support::TestDocument document(text);
    board::BoardSession::Options options;
    options.simulate = true;
    options.log = &course;
    board::BoardSession session(document, options);
    ASSERT_TRUE(session.bringUp().populated);
    std::ostringstream accesses;
    session.getBoard()->getLog().print(accesses);
    course.accesses = accesses.str();
    course.queries = document.queries();
}

class NamesForPeopleTest : public testing::TestWithParam<char const*> {};

TEST_P(NamesForPeopleTest, ChangeNothingOfABringUp) {
    std::string const named =
        reference_host::InputFile::read(std::string(EXAMPLES_FOLDER "/") + GetParam() + ".xml");
    std::string const nameless =
        std::regex_replace(named, std::regex(R"re( (label|connectsTo)="[^"]*")re"), "");
    ASSERT_LT(nameless.size() + 50, named.size());
    Course with;
    Course without;
    bringUp(named, with);
    bringUp(nameless, without);
    EXPECT_FALSE(with.accesses.empty());
    EXPECT_FALSE(with.queries.empty());
    EXPECT_GT(with.messages.size(), 20U);
    EXPECT_EQ(with.accesses, without.accesses);
    EXPECT_EQ(with.queries, without.queries);
    EXPECT_EQ(with.messages, without.messages);
}

INSTANTIATE_TEST_SUITE_P(Examples, NamesForPeopleTest,
                         testing::Values("home-gateway", "trap-three-switches"));

} // namespace
