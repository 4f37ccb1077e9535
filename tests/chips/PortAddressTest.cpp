#include "chips/PortAddress.hpp"

#include <gtest/gtest.h>

#include <sstream>

using chips::PortAddress;

namespace {

TEST(PortAddressTest, ReadsSwitchAndPort) {
    auto const address = chips::PortAddress::fromText("3.10");
    ASSERT_TRUE(address);
    EXPECT_EQ(address->switchId, 3U);
    EXPECT_EQ(address->portId, 10U);
}

TEST(PortAddressTest, RefusesEverythingElse) {
    for (char const* const text : {"", ".", "0", "0.", ".1", "0.1.", "0.1.2", "0-1", "a.1", "0.b", "-1.0",
                                   "0.-1", " 0.1", "0. 1", "0.1 ", "99999999999.1", "0.99999999999"}) {
        EXPECT_FALSE(chips::PortAddress::fromText(text)) << text;
    }
}

TEST(PortAddressTest, PrintsAsItReads) {
    std::ostringstream out;
    out << chips::PortAddress{0, 1};
    EXPECT_EQ(out.str(), "0.1");
}

} // namespace
