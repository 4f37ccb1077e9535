#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class StatisticsTest : public BoardFixture {
protected:
    void operate(unsigned operation, unsigned item) { write(global1, 0x1D, 0x8000 | operation << 12 | item); }

    std::uint32_t captured(unsigned counter) {
        operate(4, counter);
        unsigned const low = read(global1, 0x1F);
        return read(global1, 0x1E) << 16 | low;
    }
};

TEST_F(StatisticsTest, AllCountersOfThePortAreCaptured) {
    for (unsigned counter = 0; counter < 32; ++counter) {
        chip().setCounter(10, counter, 0xA0B00000 + counter * 0x10001);
        chip().setCounter(9, counter, 1);
    }
    operate(5, 10);
    for (unsigned counter = 0; counter < 32; ++counter) {
        EXPECT_EQ(captured(counter), 0xA0B00000 + counter * 0x10001) << counter;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(StatisticsTest, TheCaptureStaysUntilTheNext) {
    chip().setCounter(1, 4, 100);
    operate(5, 1);
    chip().setCounter(1, 4, 200);
    EXPECT_EQ(captured(4), 100U);
    operate(1, 0);
    EXPECT_EQ(captured(4), 100U);
    operate(5, 1);
    EXPECT_EQ(captured(4), 0U);
}

TEST_F(StatisticsTest, TheValueStaysUntilTheNextRead) {
    chip().setCounter(1, 4, 0x12345678);
    operate(5, 1);
    operate(4, 4);
    EXPECT_EQ(read(global1, 0x1E), 0x1234U);
    operate(5, 2);
    EXPECT_EQ(read(global1, 0x1F), 0x5678U);
    EXPECT_EQ(read(global1, 0x1E), 0x1234U);
}

TEST_F(StatisticsTest, FlushOfOnePort) {
    chip().setCounter(1, 4, 1);
    chip().setCounter(2, 4, 2);
    chip().poke("port 1", 0x12, 3);
    operate(2, 1);
    EXPECT_EQ(chip().getCounter(1, 4), 0U);
    EXPECT_EQ(chip().getCounter(2, 4), 2U);
    EXPECT_EQ(read(port0 + 1, 0x12), 3U);
}

TEST_F(StatisticsTest, FlushOfAllPorts) {
    chip().setCounter(1, 4, 1);
    chip().setCounter(10, 31, 2);
    chip().poke("port 1", 0x10, 3);
    operate(1, 0);
    EXPECT_EQ(chip().getCounter(1, 4), 0U);
    EXPECT_EQ(chip().getCounter(10, 31), 0U);
    EXPECT_EQ(read(port0 + 1, 0x10), 3U);
}

TEST_F(StatisticsTest, AnyHistogramModeAndBankIsTaken) {
    chip().setCounter(1, 8, 77);
    for (unsigned mode = 0; mode < 4; ++mode) {
        operate(5, mode << 10 | 0x03C0 | 1);
        operate(4, mode << 10 | 0x03C0 | 8);
        EXPECT_EQ(read(global1, 0x1F), 77U) << mode;
        EXPECT_EQ(read(global1, 0x1D), 0x4008U | mode << 10) << mode;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(StatisticsTest, WhatDoesNotExistChangesNothing) {
    chip().setCounter(1, 4, 5);
    operate(5, 1);
    operate(4, 4);
    for (unsigned word : {0x8000U, 0xB000U, 0xE000U, 0xF000U, 0xC020U, 0xD00BU, 0xA00BU, 0x1000U}) {
        write(global1, 0x1D, word);
    }
    EXPECT_EQ(read(global1, 0x1F), 5U);
    EXPECT_EQ(captured(4), 5U);
    EXPECT_EQ(chip().getCounter(1, 4), 5U);
    EXPECT_EQ(misuse().getSize(Kind::meaninglessCommand), 7U);
    EXPECT_EQ(misuse().getSize(), 7U);
}

TEST_F(StatisticsTest, NumbersThatDoNotExist) {
    EXPECT_THROW(chip().setCounter(11, 0, 1), std::out_of_range);
    EXPECT_THROW(chip().setCounter(0, 32, 1), std::out_of_range);
    EXPECT_THROW(chip().getCounter(0, 32), std::out_of_range);
}

} // namespace
