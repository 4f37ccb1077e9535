#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "simulation/network/ChipForwarding.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

namespace board_test {

/// Bits of registers and tables that are turned over one at a time: who reaches whom changes, or a rule says
/// why it does not.
class BitFlips {
public:
    explicit BitFlips(ComparedBoard const& compared)
        : _compared(compared),
          _before(getMatrix(1)),
          _beforeOfFlows(getMatrix(board::RegisterPaths::flows)) {}

    ~BitFlips() {
        testing::Test::RecordProperty("noticed", static_cast<int>(_noticed));
        for (auto const& [rule, count] : _explained) {
            testing::Test::RecordProperty("explained: " + rule, static_cast<int>(count));
        }
    }
    BitFlips(BitFlips const&) = delete;
    BitFlips& operator=(BitFlips const&) = delete;

    /// What is in force now, with one bit turned over.
    /// \param rule why it makes no difference; empty when it has to make one.
    /// \param hasFlows whether many pairs of addresses are asked: some may go another way than others.
    void check(std::string const& what, std::string const& rule, bool hasFlows = false) {
        bool const isNoticed =
            hasFlows ? getMatrix(board::RegisterPaths::flows) != _beforeOfFlows : getMatrix(1) != _before;
        EXPECT_EQ(isNoticed, rule.empty())
            << what << ": " << (isNoticed ? "noticed, but " + rule : "unnoticed");
        ++(isNoticed ? _noticed : _explained[rule]);
    }

    /// What follows is turned over beginning with what is in force now.
    void restart() {
        _before = getMatrix(1);
        _beforeOfFlows = getMatrix(board::RegisterPaths::flows);
    }

    unsigned getNoticed() const { return _noticed; }

private:
    /// For each port and frame, which ports get it in which form.
    std::vector<std::uint64_t> getMatrix(unsigned flows) const {
        std::vector<std::uint64_t> matrix;
        auto const& frames = _compared.frames;
        for (std::size_t to = 0; to < frames.getDestinations().size(); ++to) {
            for (std::size_t tags = 0; tags < frames.getTags().size(); ++tags) {
                for (unsigned flow = 0; flow < flows; ++flow) {
                    addFrame(board::RegisterPaths::frameOf(frames.getFrame(tags, to), flow), matrix);
                }
            }
        }
        return matrix;
    }

    void addFrame(simulation::EthernetFrame const& frame, std::vector<std::uint64_t>& matrix) const {
        for (auto const& [id, chip] : _compared.registers.getChips()) {
            for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                for (auto const& copies : board::RegisterPaths::copiesOf(chip->decide(port, frame))) {
                    matrix.push_back(copies.ports);
                    matrix.push_back(std::uint64_t{copies.tags.count} << 32 | copies.tags.vid << 12 |
                                     copies.tags.inner);
                }
                matrix.push_back(~std::uint64_t{0}); // end of the port
            }
        }
    }

    ComparedBoard const& _compared;
    std::vector<std::uint64_t> _before;
    std::vector<std::uint64_t> _beforeOfFlows;
    unsigned _noticed = 0;
    std::map<std::string, unsigned> _explained;
};

} // namespace board_test
