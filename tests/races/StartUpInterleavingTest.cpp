// The host's threads and the management thread of one manager, in the orders in which they can meet.

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <map>
#include <string>

#include "tests/races/Interleavings.hpp"
#include "tests/races/SampledOrders.hpp"
#include "tests/races/ScheduledManager.hpp"

using race_test::Interleavings;
using race_test::SampledOrders;
using race_test::ScheduledManager;

namespace {

using Host = std::map<std::string, ScheduledManager::Body>;
using Expectation = std::function<void(ScheduledManager const&)>;

ScheduledManager::Body const starts = [](ScheduledManager& manager) { manager.start(); };
ScheduledManager::Body const reports = [](ScheduledManager& manager) { manager.report(); };
ScheduledManager::Body const reportsTwice = [](ScheduledManager& manager) {
    manager.report();
    manager.report();
};
ScheduledManager::Body const ends = [](ScheduledManager& manager) { manager.endEventLoop(); };
ScheduledManager::Body const startsAndEnds = [](ScheduledManager& manager) {
    manager.start();
    manager.endEventLoop();
};

class StartUpInterleavingTest : public testing::Test {
protected:
    /// Goes through orders; `expect` looks at the manager after each of them.
    template <typename Orders> void inOrders(Orders orders, Host const& host, Expectation const& expect) {
        bool more = true;
        while (more) {
            ScheduledManager manager(orders.getPlan(), host);
            ASSERT_TRUE(manager.run()) << "order " << orders.getCount();
            ASSERT_TRUE(manager.finish()) << "order " << orders.getCount();
            expect(manager);
            ASSERT_FALSE(HasFailure()) << "order " << orders.getCount();
            more = orders.next(manager.getScheduler().getChoices());
        }
        RecordProperty("interleavings", static_cast<int>(orders.getCount()));
        std::cout << "interleavings: " << orders.getCount() << '\n';
        EXPECT_GT(orders.getCount(), 1U);
    }

    /// All orders where that does not take long, otherwise some.
    void inEveryOrder(Host const& host, Expectation const& expect) {
        if (ORDERS == 0) {
            inOrders(Interleavings(), host, expect);
        } else {
            inOrders(SampledOrders(ORDERS), host, expect);
        }
    }

    void inManyOrders(Host const& host, Expectation const& expect) {
        constexpr std::size_t many = 4000;
        inOrders(SampledOrders(ORDERS == 0 ? many : ORDERS), host, expect);
    }
};

void expectOneStartUp(ScheduledManager const& manager) {
    EXPECT_EQ(manager.getStartUps(), 1);
    EXPECT_EQ(manager.getPopulated(), 1);
    EXPECT_EQ(manager.getLastState(), 4U);
}

void expectAtMostOneStartUp(ScheduledManager const& manager) {
    EXPECT_LE(manager.getStartUps(), 1);
    EXPECT_EQ(manager.getPopulated(), manager.getStartUps());
    EXPECT_EQ(manager.getLastState() == 4U, manager.getPopulated() == 1);
}

TEST_F(StartUpInterleavingTest, AReportIsNeverLost) {
    inEveryOrder({{"start", starts}, {"report", reports}}, expectOneStartUp);
}

TEST_F(StartUpInterleavingTest, ASecondReportChangesNothing) {
    inManyOrders({{"start", starts}, {"report", reportsTwice}}, expectOneStartUp);
}

TEST_F(StartUpInterleavingTest, ReportsOfTwoThreadsCountOnce) {
    inManyOrders({{"start", starts}, {"report", reports}, {"report too", reports}}, expectOneStartUp);
}

TEST_F(StartUpInterleavingTest, WithoutAReportTheManagerWaits) {
    inOrders(Interleavings(), {{"start", starts}}, [](ScheduledManager const& manager) {
        EXPECT_EQ(manager.getStartUps(), 0);
        EXPECT_EQ(manager.getLastState(), 2U);
    });
}

TEST_F(StartUpInterleavingTest, TheManagerMayGoRightAfterItsStart) {
    inOrders(Interleavings(), {{"start", startsAndEnds}}, [](ScheduledManager const& manager) {
        EXPECT_EQ(manager.getStartUps(), 0);
        EXPECT_LE(manager.getLastState(), 2U);
    });
}

TEST_F(StartUpInterleavingTest, TheManagerMayGoRightAfterItsStartAndAReport) {
    inManyOrders({{"start", startsAndEnds}, {"report", reports}}, expectAtMostOneStartUp);
}

TEST_F(StartUpInterleavingTest, TheEndMayComeAtAnyTime) {
    inManyOrders({{"start", starts}, {"report", reports}, {"end", ends}}, expectAtMostOneStartUp);
}

} // namespace
