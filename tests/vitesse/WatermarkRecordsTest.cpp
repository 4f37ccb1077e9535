#include <gtest/gtest.h>

#include "vitesse/EgressMaxWatermarks.hpp"
#include "vitesse/FlowControlWatermarks.hpp"
#include "vitesse/MiscellaneousPoolControl.hpp"

namespace {

TEST(WatermarkRecordsTest, FlowControlHasTwoFields) {
    EXPECT_EQ(FlowControlWatermarks(36, 38).value(), 0x0000'2426U);
    EXPECT_EQ(FlowControlWatermarks(0, 1).value(), 0x0000'0001U);
    EXPECT_EQ(FlowControlWatermarks(1, 0).value(), 0x0000'0100U);
    EXPECT_EQ(FlowControlWatermarks(63, 63).value(), 0x0000'3F3FU);
}

TEST(WatermarkRecordsTest, PoolControlHasFiveFields) {
    EXPECT_EQ(MiscellaneousPoolControl(39, 39, 0, 2, 0).value(), 0x2727'0004U);
    EXPECT_EQ(MiscellaneousPoolControl(36, 0, 0, 0, 1).value(), 0x2400'0001U);
    EXPECT_EQ(MiscellaneousPoolControl(1, 0, 0, 0, 0).value(), 0x0100'0000U);
    EXPECT_EQ(MiscellaneousPoolControl(0, 1, 0, 0, 0).value(), 0x0001'0000U);
    EXPECT_EQ(MiscellaneousPoolControl(0, 0, 1, 0, 0).value(), 0x0000'0100U);
    EXPECT_EQ(MiscellaneousPoolControl(0, 0, 0, 1, 0).value(), 0x0000'0002U);
    EXPECT_EQ(MiscellaneousPoolControl(63, 63, 63, 15, 1).value(), 0x3F3F'3F1FU);
}

TEST(WatermarkRecordsTest, EgressLimitsHaveFourFields) {
    EXPECT_EQ(EgressMaxWatermarks(19, 22, 25, 28).value(), 0x1C19'1613U);
    EXPECT_EQ(EgressMaxWatermarks(1, 0, 0, 0).value(), 0x0000'0001U);
    EXPECT_EQ(EgressMaxWatermarks(0, 1, 0, 0).value(), 0x0000'0100U);
    EXPECT_EQ(EgressMaxWatermarks(0, 0, 1, 0).value(), 0x0001'0000U);
    EXPECT_EQ(EgressMaxWatermarks(0, 0, 0, 1).value(), 0x0100'0000U);
    EXPECT_EQ(EgressMaxWatermarks(63, 63, 63, 63).value(), 0x3F3F'3F3FU);
}

TEST(WatermarkRecordsTest, WhatDoesNotFitAFieldIsCutOff) {
    EXPECT_EQ(FlowControlWatermarks(0x40, 0xC1).value(), 0x0000'0001U);
    EXPECT_EQ(FlowControlWatermarks(0xFF, 0xFF).value(), 0x0000'3F3FU);
    EXPECT_EQ(MiscellaneousPoolControl(0xFF, 0xFF, 0xFF, 0xFF, 0xFF).value(), 0x3F3F'3F1FU);
    EXPECT_EQ(MiscellaneousPoolControl(0x40, 0x80, 0xC0, 0x10, 2).value(), 0x0000'0000U);
    EXPECT_EQ(EgressMaxWatermarks(0xFF, 0xFF, 0xFF, 0xFF).value(), 0x3F3F'3F3FU);
    EXPECT_EQ(EgressMaxWatermarks(0x40, 0x80, 0xC0, 0x41).value(), 0x0100'0000U);
}

} // namespace
