#include "simulation/SerialControllerCommand.hpp"

#include <gtest/gtest.h>

#include <map>

using simulation::SerialControllerCommand;
using Operation = simulation::SerialControllerCommand::Operation;
using Operands = std::vector<std::uint32_t>;

namespace {

std::string reasonFor(std::string const& line) {
    std::string reason;
    EXPECT_FALSE(SerialControllerCommand::parse(line, reason)) << line;
    return reason;
}

void expectCommand(std::string const& line, Operation operation, Operands const& operands) {
    std::string reason;
    auto const command = SerialControllerCommand::parse(line, reason);
    ASSERT_TRUE(command) << line << ": " << reason;
    EXPECT_EQ(command->operation, operation) << line;
    EXPECT_EQ(command->operands, operands) << line;
}

TEST(SerialControllerCommandTest, UnderstandsTheFourCommands) {
    expectCommand("r 1 4 16", Operation::readRegister, {1, 4, 16});
    expectCommand("w 7 0 2 12", Operation::writeRegister, {7, 0, 2, 12});
    expectCommand("i 3 0", Operation::readPhy, {3, 0});
    expectCommand("o 3 0 4416", Operation::writePhy, {3, 0, 4416});
}

TEST(SerialControllerCommandTest, TakesOperandsUpToTheWidthOfTheirFields) {
    expectCommand("r 0 0 0", Operation::readRegister, {0, 0, 0});
    expectCommand("w 15 15 255 4294967295", Operation::writeRegister, {15, 15, 255, 0xFFFFFFFF});
    expectCommand("i 31 31", Operation::readPhy, {31, 31});
    expectCommand("o 31 31 65535", Operation::writePhy, {31, 31, 65535});
}

TEST(SerialControllerCommandTest, RefusesEverythingElseWithAReason) {
    std::map<std::string, std::string> const reasons = {
        {"", "no such command"},
        {"x 1 2 3", "no such command"},
        {"R 1 4 16", "no such command"},
        {"read 1 4 16", "no such command"},
        {" r 1 4 16", "no such command"},
        {"r", "takes 3 operands"},
        {"r 1 4", "takes 3 operands"},
        {"r 1 4 16 ", "takes 3 operands"},
        {"r  1 4 16", "takes 3 operands"},
        {"w 1 4 16", "takes 4 operands"},
        {"i 1 2 3", "takes 2 operands"},
        {"o 1 2", "takes 3 operands"},
        {"r 16 0 0", "the block is not a decimal number up to 15"},
        {"r 0 16 0", "the sub-block is not a decimal number up to 15"},
        {"r 0 0 256", "the address is not a decimal number up to 255"},
        {"r 0 0 0x10", "the address is not a decimal number up to 255"},
        {"r 01 0 0", "the block is not a decimal number up to 15"},
        {"r -1 0 0", "the block is not a decimal number up to 15"},
        {"r +1 0 0", "the block is not a decimal number up to 15"},
        {"r 1\t0 0 0", "the block is not a decimal number up to 15"},
        {"w 0 0 0 4294967296", "the value is not a decimal number up to 4294967295"},
        {"i 32 0", "the PHY is not a decimal number up to 31"},
        {"i 0 32", "the PHY register is not a decimal number up to 31"},
        {"o 0 0 65536", "the PHY value is not a decimal number up to 65535"},
    };
    for (auto const& [line, reason] : reasons) {
        EXPECT_EQ(reasonFor(line), reason) << line;
    }
}

} // namespace
