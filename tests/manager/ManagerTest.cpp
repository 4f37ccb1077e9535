#include "tests/manager/ManagerTest.hpp"

#include <regex>

using test_support::Lines;

TestManager& ManagerTest::manage(std::string const& text, bool noHardwareAccess) {
    manager.reset();
    document = std::make_unique<test_support::TestDocument>(text);
    manager = std::make_unique<TestManager>(application, *document, false, noHardwareAccess);
    return *manager;
}

void ManagerTest::deliverThreadHasStarted() {
    IdleThread thread(application.getThreads());
    SwitchManagerThreadHasStartedEvent const event(thread, manager->getType(), 0);
    manager->processEvent(&event);
}

void ManagerTest::deliverPhyInterfacesPopulated() {
    IdleThread thread(application.getThreads());
    PhyInterfacesHaveBeenPopulatedEvent const event(thread, manager->getType(), 0);
    manager->processEvent(&event);
}

Lines ManagerTest::takeLines() {
    static std::regex const typeName("(event \"?3:)-?[0-9]+(:)");
    Lines lines = log.take();
    for (std::string& line : lines) {
        line = std::regex_replace(line, typeName, "$1#$2");
    }
    return lines;
}
