#include "tests/faults/RunResult.hpp"

#include <algorithm>
#include <iterator>

namespace fault_test {

namespace {

bool startsWith(std::string const& text, std::string const& start) {
    return text.compare(0, start.size(), start) == 0;
}

// The state machine's steps depend on whether the PHY report or the thread comes first, and the last of
// them may still be to come; a thread's handle is in its first words.
bool isDifferentOnEveryRun(std::string const& message) {
    return startsWith(message, "3|SwitchManager::processEvent ") ||
           startsWith(message, "3|SwitchManager::State::doAction(") ||
           startsWith(message, "0|SwitchManager::getNewState ") ||
           startsWith(message, "info|SwitchManager::phyInterfacesHaveNowBeenSetup()") ||
           (startsWith(message, "0|SwitchManagementThread::run [") &&
            message.find("caught") == std::string::npos);
}

} // namespace

std::vector<std::string> RunResult::newMessages(RunResult const& other) const {
    std::vector<std::string> added;
    std::set_difference(messages.begin(), messages.end(), other.messages.begin(), other.messages.end(),
                        std::back_inserter(added));
    return added;
}

std::vector<std::string> comparable(std::vector<std::string> messages) {
    messages.erase(std::remove_if(messages.begin(), messages.end(), isDifferentOnEveryRun), messages.end());
    std::sort(messages.begin(), messages.end());
    return messages;
}

} // namespace fault_test
