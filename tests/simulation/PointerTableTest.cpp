// Tables of Global 2 as drivers fill them: one write an entry, then a wait for bit 15.

#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class PointerTableTest : public BoardFixture {
protected:
    void update(unsigned reg, unsigned word) {
        write(global2, reg, 0x8000 | word);
        EXPECT_EQ(read(global2, reg) & 0x8000U, 0U) << reg;
    }

    unsigned entry(unsigned reg, unsigned pointer) {
        write(global2, reg, pointer);
        return read(global2, reg);
    }
};

struct PointerRow {
    unsigned reg;
    unsigned firstPointer;
    unsigned lastPointer;
    unsigned data;
    unsigned reset;
};

// Device mapping, trunk masks, trunk mapping, switch MAC, priority override.
constexpr PointerRow tables[] = {
    {0x06, 0x0000, 0x1F00, 0x000A, 0x0000}, {0x07, 0x0000, 0x7000, 0x0555, 0x07FF},
    {0x08, 0x0000, 0x7800, 0x06A5, 0x0000}, {0x0D, 0x0000, 0x1F00, 0x00C3, 0x0000},
    {0x0F, 0x0000, 0x0F00, 0x0081, 0x0000},
};

TEST_F(PointerTableTest, EntriesAreKeptEachForItself) {
    for (PointerRow const& row : tables) {
        EXPECT_EQ(entry(row.reg, row.lastPointer), row.lastPointer | row.reset) << row.reg;
        update(row.reg, row.firstPointer | row.data);
        EXPECT_EQ(entry(row.reg, row.lastPointer), row.lastPointer | row.reset) << row.reg;
        EXPECT_EQ(entry(row.reg, row.firstPointer), row.firstPointer | row.data) << row.reg;
        update(row.reg, row.lastPointer | row.data);
        update(row.reg, row.firstPointer);
        EXPECT_EQ(entry(row.reg, row.lastPointer), row.lastPointer | row.data) << row.reg;
        EXPECT_EQ(entry(row.reg, row.firstPointer), row.firstPointer) << row.reg;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(PointerTableTest, WithoutTheUpdateBitAWriteOnlySaysWhatIsRead) {
    write(global2, 0x08, 0x0800 | 0x0123);
    EXPECT_EQ(read(global2, 0x08), 0x0800U);
}

TEST_F(PointerTableTest, HowTrunksAreHashedBelongsToAllMasks) {
    update(0x07, 0x3000 | 0x0800 | 0x0123);
    EXPECT_EQ(entry(0x07, 0x3000), 0x3000U | 0x0800U | 0x0123U);
    EXPECT_EQ(entry(0x07, 0x2000), 0x2000U | 0x0800U | 0x07FFU);
    update(0x07, 0x2000 | 0x07FF);
    EXPECT_EQ(entry(0x07, 0x3000), 0x3000U | 0x0123U);
}

TEST_F(PointerTableTest, CommandsOfUnitsThatAreNotThereEnd) {
    for (unsigned reg : {0x09U, 0x0BU, 0x14U}) {
        write(global2, reg, 0x9234);
        EXPECT_EQ(read(global2, reg), 0x1234U) << reg;
        write(global2, reg + 1, 0x5678);
        EXPECT_EQ(read(global2, reg + 1), 0x5678U) << reg;
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(PointerTableTest, SwitchManagementKeepsWhatIsWritten) {
    for (unsigned word : {0xE0FFU, 0x0000U, 0x4008U}) {
        write(global2, 0x05, word);
        EXPECT_EQ(read(global2, 0x05), word);
    }
    EXPECT_EQ(misuseText(), "");
}

} // namespace
