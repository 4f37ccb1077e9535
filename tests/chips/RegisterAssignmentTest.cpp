#include "chips/RegisterAssignment.hpp"

#include <gtest/gtest.h>

#include <map>

#include "chips/ToolError.hpp"

using chips::ChipCatalogue;
using chips::ExitStatus;
using chips::RegisterAssignment;
using chips::ToolError;

namespace {

class RegisterAssignmentTest : public testing::Test {
protected:
    chips::RegisterAssignment parse(std::string const& text) const {
        return chips::RegisterAssignment::parse(catalogue, text, false);
    }

    chips::ChipCatalogue const catalogue{"88e6096"};
};

TEST_F(RegisterAssignmentTest, ReplacesTheWholeRegister) {
    chips::RegisterAssignment const assignment = parse("port3/PortControl=0x7f");
    EXPECT_FALSE(assignment.isPartial());
    EXPECT_EQ(assignment.apply(0xFFFF), 0x7FU);
    EXPECT_EQ(assignment.getText(), "port 3/PortControl (0x13/0x04) = 0x007f");
    EXPECT_EQ(parse("0x13/4=65535").apply(0), 0xFFFFU);
}

TEST_F(RegisterAssignmentTest, ReplacesFields) {
    chips::RegisterAssignment const assignment = parse("port3/PortControl:PortState=1,egress-mode=0x2");
    EXPECT_TRUE(assignment.isPartial());
    EXPECT_EQ(assignment.apply(0x007F), 0x207DU);
    EXPECT_EQ(assignment.apply(0xFFFF), 0xEFFDU);
    EXPECT_EQ(assignment.getText(), "port 3/PortControl (0x13/0x04): PortState = 0x1, EgressMode = 0x2");
}

TEST_F(RegisterAssignmentTest, OfAVsc7390Has32Bits) {
    chips::ChipCatalogue const vitesse("vsc7390");
    EXPECT_EQ(chips::RegisterAssignment::parse(vitesse, "7.0.0x14=0xFFFFFFFF", false).apply(0), 0xFFFFFFFFU);
    EXPECT_EQ(chips::RegisterAssignment::parse(vitesse, "system/GLORESET:Other=0x7FFFFFFF", false).apply(1),
              0xFFFFFFFFU);
    EXPECT_EQ(chips::RegisterAssignment::parse(vitesse, "3/0=0x8000", true).getText(),
              "phy 3/Control (phy3/0x00) = 0x8000");
}

TEST_F(RegisterAssignmentTest, SaysWhatIsWrong) {
    std::map<std::string, std::string> const reasons = {
        {"port3/4", "not of the form LOCATION=VALUE"},
        {"port3/4=", "\"\" is not a number"},
        {"port3/4=0x", "\"0x\" is not a number"},
        {"port3/4=-1", "\"-1\" is not a number"},
        {"port3/4=12z", "\"12z\" is not a number"},
        {"port3/4=0x10000", "0x10000 does not fit into 16 bits"},
        {"port3/4:PortState=4", "4 does not fit into 2 bits"},
        {"port3/4:State=1", "port 3/PortControl has no field \"State\""},
        {"port3/4:PortState=1,", "\"\" is not of the form FIELD=VALUE"},
        {"port3/4:=1", "port 3/PortControl has no field \"\""},
        {"port3/4:PortState=1,UseIP", "\"UseIP\" is not of the form FIELD=VALUE"},
        {"port3/0x1f:PortState=1", "port 3/0x1f has no field \"PortState\""},
        {"global1/ATUControl:Other=1", "there are several fields \"Other\""},
    };
    for (auto const& [text, reason] : reasons) {
        try {
            ADD_FAILURE() << "took " << text << " for " << parse(text).getText();
        } catch (chips::ToolError const& error) {
            EXPECT_EQ(error.what(), "\"" + text + "\": " + reason);
            EXPECT_EQ(error.getStatus(), chips::ExitStatus::usage);
        }
    }
}

} // namespace
