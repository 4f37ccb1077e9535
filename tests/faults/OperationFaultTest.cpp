#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include "tests/faults/DiagnosticsFaults.hpp"
#include "tests/faults/FaultTable.hpp"
#include "tests/faults/OperationFaults.hpp"

using namespace fault_test;
using Family = OperationFaults::Family;

namespace {

/// Of the accesses of an operation, every so many are hit, beginning at another one for each operation.
constexpr std::uint64_t stride = 43;
/// And of those with few accesses, every so many.
constexpr std::uint64_t shortStride = 5;

void sweepAll(Family family, std::vector<ChipOperation> const& operations) {
    FaultTable table;
    std::uint64_t first = 1;
    for (ChipOperation const& operation : operations) {
        OperationFaults faults(family, operation);
        EXPECT_GT(faults.getAccesses(), 0U) << operation.name;
        EXPECT_EQ(faults.getUndisturbed().result,
                  operation.isQuestion ? faults.getUndisturbed().result : "success")
            << operation.name;
        FaultTable own;
        sweep(faults, {first, (faults.getAccesses() > stride ? stride : shortStride) * STRIDE_FACTOR}, own);
        EXPECT_EQ(wrongIn(own), "") << operation.name;
        for (auto const& [kind, count] : own) {
            table[kind].add(count);
        }
        first = first % shortStride + 1;
    }
    for (auto const& [kind, count] : table) {
        std::cout << kind << ": " << count.runs << " runs\n";
    }
}

TEST(OperationFaultTest, OfAn88E6096) {
    sweepAll(Family::marvell, marvellOperations());
}

TEST(OperationFaultTest, OfAVsc7390) {
    sweepAll(Family::vitesse, vitesseOperations());
}

TEST(DiagnosticsFaultTest, OfAPortOfAnAccessPoint) {
    DiagnosticsFaults faults(EXAMPLES_FOLDER "/trap-minimal.xml", {0, 1});
    EXPECT_EQ(faults.getUndisturbed().result, "written");
    FaultTable table;
    sweep(faults, {1, 211 * STRIDE_FACTOR}, table);
    EXPECT_EQ(wrongIn(table), "");
}

TEST(DiagnosticsFaultTest, OfAPortOfAVideoSwitch) {
    DiagnosticsFaults faults(EXAMPLES_FOLDER "/trap-video-switch.xml", {2, 1});
    EXPECT_EQ(faults.getUndisturbed().result, "written");
    FaultTable table;
    sweep(faults, {1, 13 * STRIDE_FACTOR}, table);
    EXPECT_EQ(wrongIn(table), "");
}

} // namespace
