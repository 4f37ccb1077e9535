// What an examination does to chips: without leave to write, nothing.

#include <gtest/gtest.h>

#include "board/BoardAccess.hpp"
#include "board/ClockAdoption.hpp"
#include "chips/ChipKinds.hpp"
#include "reference_host/XmlDocument.hpp"

using chips::ChipKind;
using simulation::Arm920tMac;
using simulation::BusFaults;
using simulation::SimulatedBoard;

namespace {

constexpr unsigned miiCommand = Arm920tMac::physicalAddress + 0x10;
constexpr unsigned miiData = Arm920tMac::physicalAddress + 0x14;
constexpr unsigned macControl = Arm920tMac::physicalAddress + 0x20;
constexpr unsigned opcodeShift = 14;
constexpr unsigned readOpcode = 2;

class HarmlessDoctorTest : public testing::Test {
protected:
    HarmlessDoctorTest() {
        _board.getMac().write(0x20, _control);
        _board.getFaults().startRecord();
    }

    chips::Examination examine(std::string const& model, unsigned id, bool allowsWrites) {
        chips::ExaminationRequest request;
        request.switches = {{id, {1, 4}}};
        request.allowsWrites = allowsWrites;
        return chips::ChipKinds::find(model)->examine({_access.getApplication(), _access.getErrors(), id},
                                                      request);
    }

    /// Writes that reach a chip: in a window of its own, or in a frame of the MAC.
    unsigned writesToChips() const {
        unsigned count = 0;
        for (BusFaults::Access const& access : _board.getFaults().getRecord()) {
            bool const isFrame = access.physicalAddress == miiCommand;
            bool const isMac = access.physicalAddress == miiData || access.physicalAddress == macControl;
            bool const isRead = isFrame && access.value >> opcodeShift == readOpcode;
            count += access.isWrite && !isMac && !isRead ? 1 : 0;
        }
        return count;
    }

    static constexpr unsigned _control = 0x55;
    std::unique_ptr<reference_host::XmlDocument> const _document =
        reference_host::XmlDocument::fromFile(EXAMPLES_FOLDER "/trap-mixed.xml");
    mutable SimulatedBoard _board{*_document};
    board::ClockAdoption const _clock{&_board.getClock()};
    board::BoardAccess _access{_board};
};

} // namespace

TEST_F(HarmlessDoctorTest, NoChipIsWrittenToWithoutLeave) {
    EXPECT_EQ(examine("88e6096", 0, false).answers.size(), 1U);
    EXPECT_EQ(examine("vsc7390", 3, false).answers.size(), 1U);
    EXPECT_GT(_board.getFaults().getRecord().size(), 100U);
    EXPECT_EQ(writesToChips(), 0U);
}

TEST_F(HarmlessDoctorTest, WithLeaveTheCommandRegistersAreWritten) {
    EXPECT_EQ(examine("88e6096", 0, true).answers.size(), 1U);
    unsigned const ofMdio = writesToChips();
    EXPECT_GT(ofMdio, 0U);
    EXPECT_EQ(examine("vsc7390", 3, true).answers.size(), 1U);
    EXPECT_GT(writesToChips(), ofMdio);
}

TEST_F(HarmlessDoctorTest, TheManagementClockIsPutBack) {
    examine("88e6096", 0, false);
    unsigned value = 0;
    EXPECT_TRUE(_board.getMac().read(0x20, value));
    EXPECT_EQ(value, _control);
}

TEST_F(HarmlessDoctorTest, ABoardWithoutAVsc7390IsNotReadWhereOneWouldBe) {
    chips::Examination const result = chips::ChipKinds::find("vsc7390")->examine(
        {_access.getApplication(), _access.getErrors(), 0}, chips::ExaminationRequest());
    EXPECT_EQ(_board.getFaults().getAccesses(), 0U);
    EXPECT_EQ(result.unread.size(), 1U);
}
