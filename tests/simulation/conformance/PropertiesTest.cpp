// What holds whatever registers say and frames are.

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "tests/simulation/conformance/ForwardingChip.hpp"

namespace simulation_test {

namespace {

using simulation::Decision;
using simulation::RegisterFile;
using simulation::UnitKind;
using Frame = Frames::Frame;

#ifdef SLOW_BUILD
constexpr unsigned seeds = 12;
#else
constexpr unsigned seeds = 50;
#endif
constexpr unsigned walks = 2;
constexpr unsigned mostWalks = 20;
/// Of units that are many.
constexpr unsigned numberAmongMany = 1;
constexpr unsigned framesOfSeed = 60;

bool areSame(Decision const& one, Decision const& other) {
    return one.vid == other.vid && one.learnt == other.learnt && one.toProcessor == other.toProcessor &&
           one.rules == other.rules && one.dropReason == other.dropReason &&
           one.notModelled == other.notModelled &&
           std::equal(one.egress.begin(), one.egress.end(), other.egress.begin(), other.egress.end(),
                      [](auto const& first, auto const& second) {
                          return first.port == second.port && first.form == second.form &&
                                 first.frame == second.frame;
                      });
}

struct Probe {
    unsigned port;
    Frame frame;
};

class PropertiesTest : public testing::TestWithParam<char const*> {
protected:
    using Chip = std::unique_ptr<ForwardingChip>;

    static Chip make(unsigned seed) {
        Chip chip = ForwardingChip::make(GetParam());
        Chance chance(seed);
        chip->apply(chip->contents(chance));
        return chip;
    }

    static Probe probe(ForwardingChip& chip, Chance& chance) {
        unsigned const port = chance.below(chip.forwarding().getNumberOfPorts());
        return {port, chance.frame()};
    }

    /// Into one decision for all frames, so that what one leaves there shows in the next.
    static Decision receive(ForwardingChip& chip, Probe const& probe) {
        static Decision decision;
        chip.forwarding().receive(probe.port, probe.frame, decision);
        return decision;
    }

    /// Calls `look` with chip and frame, many times; the chip keeps what it learns.
    template <typename Look> void forEachFrame(Look look) {
        for (_seed = 0; _seed < seeds && !HasFailure(); ++_seed) {
            SCOPED_TRACE(_seed);
            Chip const chip = make(_seed);
            Chance chance(_seed + seeds);
            for (unsigned count = 0; count < framesOfSeed; ++count) {
                _isNew = count == 0;
                look(*chip, probe(*chip, chance));
            }
        }
    }

    unsigned _seed = 0;
    /// Whether the chip is one that the frames before had not.
    bool _isNew = false;
};

TEST_P(PropertiesTest, NoCopyLeavesAPortWithoutLink) {
    unsigned closed = 0;
    forEachFrame([&](ForwardingChip& chip, Probe const& probe) {
        for (auto const& copy : receive(chip, probe).egress) {
            EXPECT_TRUE(chip.forwarding().hasLink(copy.port)) << copy.port;
        }
        closed += chip.forwarding().hasLink(probe.port) ? 0 : 1;
    });
    EXPECT_NE(closed, 0U);
}

TEST_P(PropertiesTest, AFrameReturnsOnlyWhereRegistersLetIt) {
    unsigned returned = 0;
    forEachFrame([&](ForwardingChip& chip, Probe const& probe) {
        if (receive(chip, probe).find(probe.port) != nullptr) {
            EXPECT_TRUE(chip.mayReturn(probe.port)) << probe.port;
            ++returned;
        }
    });
    EXPECT_NE(returned, 0U);
}

TEST_P(PropertiesTest, WhatIsForeseenHappensAndHappensAgain) {
    Chip twin;
    forEachFrame([&](ForwardingChip& chip, Probe const& probe) {
        if (_isNew) {
            twin = make(_seed);
        }
        Decision const foreseen = chip.forwarding().decide(probe.port, probe.frame);
        Decision const decision = receive(chip, probe);
        EXPECT_TRUE(areSame(foreseen, decision)) << foreseen.describe() << '\n' << decision.describe();
        Decision const again = receive(*twin, probe);
        EXPECT_TRUE(areSame(decision, again)) << decision.describe() << '\n' << again.describe();
    });
}

TEST_P(PropertiesTest, EveryFrameIsRefusedOrDroppedForAReasonOrGoesOn) {
    std::map<std::string, unsigned> ends;
    forEachFrame([&](ForwardingChip& chip, Probe const& probe) {
        Decision const decision = receive(chip, probe);
        EXPECT_EQ(decision.isDropped(), !decision.dropReason.empty()) << decision.describe();
        EXPECT_TRUE(decision.isDropped() || !decision.isRefused()) << decision.describe();
        ++ends[decision.isRefused() ? "refused" : decision.isDropped() ? "dropped" : "sent"];
    });
    EXPECT_EQ(ends.size(), 3U);
    EXPECT_GT(ends["sent"], seeds * framesOfSeed / 10);
}

TEST_P(PropertiesTest, PortsCountEachFrameAndEachCopyOnce) {
    auto const totals = [](ForwardingChip& chip) {
        std::vector<std::uint32_t> values;
        for (unsigned port = 0; port < chip.forwarding().getNumberOfPorts(); ++port) {
            values.insert(values.end(), {chip.received(port), chip.sent(port), chip.octetsSent(port)});
        }
        return values;
    };
    forEachFrame([&](ForwardingChip& chip, Probe const& probe) {
        std::vector<std::uint32_t> expected = totals(chip);
        Decision const decision = receive(chip, probe);
        expected[probe.port * 3] += chip.isOn(probe.port) ? 1 : 0;
        for (auto const& copy : decision.egress) {
            expected[copy.port * 3 + 1] += 1;
            expected[copy.port * 3 + 2] += static_cast<std::uint32_t>(copy.frame.getWireLength());
        }
        EXPECT_EQ(totals(chip), expected) << decision.describe();
    });
}

/// What a chip keeps ready of its registers against what they hold: each frame twice, the second time with
/// all read anew.
class FreshnessTest : public PropertiesTest {
protected:
    std::vector<Decision> decide(ForwardingChip& chip) {
        std::vector<Decision> decisions;
        for (Probe const& probe : _probes) {
            decisions.push_back(chip.forwarding().decide(probe.port, probe.frame));
        }
        return decisions;
    }

    static bool areAllSame(std::vector<Decision> const& ones, std::vector<Decision> const& others) {
        return std::equal(ones.begin(), ones.end(), others.begin(), others.end(), areSame);
    }

    /// Whether frames fare otherwise than before.
    bool change(ForwardingChip& chip, ForwardingChip::Writes const& writes) {
        std::vector<Decision> const before = decide(chip);
        chip.apply(writes);
        std::vector<Decision> const after = decide(chip);
        chip.forget();
        auto const& last = writes.back();
        EXPECT_TRUE(areAllSame(after, decide(chip)))
            << fmt::format("{} {:02X} {:08X}", last.unit, last.address, last.value);
        return !areAllSame(before, after);
    }

    static bool isOneOfMany(RegisterFile const& unit) {
        return unit.getIdentity().kind == UnitKind::port || unit.getIdentity().kind == UnitKind::phy;
    }

    /// Each field of each register otherwise, and back.
    void changeAll(ForwardingChip& chip, RegisterFile& unit, Chance& chance) {
        std::string const& name = unit.getName();
        std::string const kind = isOneOfMany(unit) ? name.substr(0, name.find(' ')) : name;
        for (auto const& [address, row] : unit.getTable().getRegisters()) {
            for (simulation::Field const& field : row.getFields()) {
                std::uint32_t const value = unit.peek(address);
                std::uint32_t const bits = chance.manyBits(field.getMask() & row.getWritable());
                if (change(chip, {{name, address, value ^ bits}})) {
                    _deciding.insert(fmt::format("{} {:02X}", kind, address));
                }
                unit.write(address, value, 0);
            }
        }
    }

    /// Registers that are to matter to frames, and have not done so yet.
    std::string silent() {
        std::string names;
        for (std::string const& name : ForwardingChip::make(GetParam())->deciding()) {
            names += _deciding.count(name) == 0 ? name + ", " : "";
        }
        return names;
    }

    std::vector<Probe> _probes;
    std::set<std::string> _deciding;
};

TEST_P(FreshnessTest, AnyFieldOfAnyRegister) {
    for (unsigned seed = 0; seed < walks || (!silent().empty() && seed < mostWalks); ++seed) {
        SCOPED_TRACE(seed);
        Chip const chip = make(seed);
        Chance chance(seed + walks);
        _probes.clear();
        for (unsigned count = 0; count < 16; ++count) {
            _probes.push_back(probe(*chip, chance));
            _probes.push_back({numberAmongMany, chance.frame()});
        }
        for (RegisterFile* const unit : chip->side().getUnits()) {
            if (!isOneOfMany(*unit) || unit->getIdentity().number == numberAmongMany) {
                changeAll(*chip, *unit, chance);
                Chance again(seed);
                chip->apply(chip->contents(again));
            }
        }
    }
    EXPECT_EQ(silent(), "") << "no frame minded";
}

TEST_P(FreshnessTest, AnyCommand) {
    unsigned changes = 0;
    for (unsigned seed = 0; seed < walks; ++seed) {
        SCOPED_TRACE(seed);
        Chip const chip = make(seed);
        Chance chance(seed + walks);
        _probes.clear();
        for (unsigned count = 0; count < 20; ++count) {
            _probes.push_back(probe(*chip, chance));
        }
        for (unsigned count = 0; count < 300; ++count) {
            changes += change(*chip, chip->command(chance)) ? 1 : 0;
        }
    }
    EXPECT_NE(changes, 0U);
}

constexpr char const* models[] = {"88e6096", "vsc7390"};

std::string modelOf(testing::TestParamInfo<char const*> const& model) {
    return model.param;
}

INSTANTIATE_TEST_SUITE_P(Chips, PropertiesTest, testing::ValuesIn(models), modelOf);
INSTANTIATE_TEST_SUITE_P(Chips, FreshnessTest, testing::ValuesIn(models), modelOf);

} // namespace

} // namespace simulation_test
