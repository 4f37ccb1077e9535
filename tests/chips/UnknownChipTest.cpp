// A chip family that tools do not know is refused by its name; none takes it for another. One that is there
// needs no more than its ChipKind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "board/BoardAccess.hpp"
#include "board/trace/TraceReader.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/Program.hpp"
#include "switchctl/statistics/LibraryText.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ChipKind;
using chips::ChipKinds;
using chips::ExitStatus;
using chips::ToolError;
using test_support::TemporaryFile;
using testing::HasSubstr;

namespace {

constexpr char const* document = "<switches><switch id='1' switchModel='abacus'>"
                                 "<port id='1' connectedTo='external' portStatus='forwarding'/>"
                                 "</switch></switches>";

struct Verb {
    std::vector<std::string> words;
    ExitStatus status;
    char const* text;
};

class UnknownChipTest : public testing::TestWithParam<Verb> {};

template <typename Action> std::string refusalOf(Action action) {
    try {
        action();
    } catch (ToolError const& error) {
        return error.what();
    }
    return "not refused";
}

/// Registers in memory: what was written, and 0 elsewhere.
class MemoryTransport : public chips::RegisterTransport {
public:
    using RegisterTransport::RegisterTransport;
    std::map<std::string, std::uint32_t> registers;

private:
    bool tryRead(chips::RegisterAddress const& address, std::uint32_t& value) override {
        value = registers[address.getText()];
        return true;
    }
    bool tryWrite(chips::RegisterAddress const& address, std::uint32_t value) override {
        registers[address.getText()] = value;
        return true;
    }
};

/// Has the tables of a VSC7390, and says something else of itself.
class Abacus : public ChipKind {
public:
    Abacus()
        : ChipKind({"abacus",
                    "Abacus",
                    2,
                    {},
                    simulation::UnitKind::port,
                    0x10,
                    {"Beads", 7, 0},
                    10,
                    {{"beads", "beads", "Beads.", chips::Counter::Unit::events,
                      chips::Counter::Place::portRegister, 0x04, 0x08, 32}}}) {}

    std::unique_ptr<chips::RegisterTransport> connect(Transport /*transport*/,
                                                      Reach const& /*reach*/) const override {
        return nullptr;
    }
    std::unique_ptr<chips::PortStatusReader>
    makePortStatusReader(chips::ChipCatalogue const& /*catalogue*/,
                         chips::RegisterTransport& /*transport*/) const override {
        return nullptr;
    }
    std::unique_ptr<chips::TableReader>
    makeTableReader(chips::ChipCatalogue const& /*catalogue*/,
                    chips::RegisterTransport& /*transport*/) const override {
        return nullptr;
    }
    void seed(simulation::SimulatedBoard& /*board*/, chips::PortAddress const& /*port*/,
              chips::Counter const& /*counter*/, std::uint64_t /*value*/) const override {}
    std::unique_ptr<chips::ChipTables> makeTables(chips::ChipCatalogue const& /*catalogue*/) const override {
        return nullptr;
    }
    chips::Examination examine(Reach const& /*reach*/,
                               chips::ExaminationRequest const& /*request*/) const override {
        return {};
    }
    void decode(unsigned /*switchId*/, chips::TraceSink& /*sink*/,
                chips::DecodedWindows& /*windows*/) const override {}
    bool drives(ManagedSwitch const& /*managedSwitch*/) const override { return false; }
    bool usePort(Reach const& /*reach*/, std::vector<unsigned> const& /*ports*/, unsigned /*port*/,
                 std::function<bool(ManagedSwitchPort&)> const& /*use*/) const override {
        return false;
    }
};

} // namespace

TEST_P(UnknownChipTest, IsNoOtherChipToAnyVerb) {
    TemporaryFile const board(document);
    std::vector<std::string> words = GetParam().words;
    for (std::string& word : words) {
        std::size_t const place = word.find("BOARD");
        if (place != std::string::npos) {
            word.replace(place, 5, board.path());
        }
    }
    std::ostringstream out;
    std::ostringstream errors;
    EXPECT_EQ(switchctl::Program("/nonexistent/mem").run(words, out, errors), GetParam().status);
    EXPECT_THAT(out.str() + errors.str(), HasSubstr(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Verbs, UnknownChipTest,
    testing::Values(
        Verb{{"bring-up", "BOARD", "--simulate"},
             ExitStatus::switchMissing,
             "switch 1  abacus    missing: no such driver"},
        Verb{{"paths", "BOARD"}, ExitStatus::startUpFailed, "no model of a \"abacus\""},
        Verb{{"explain", "BOARD", "1.1", "to", "1.2"}, ExitStatus::startUpFailed, "no model of a \"abacus\""},
        Verb{{"plan", "BOARD"}, ExitStatus::startUpFailed, "no model of a \"abacus\""},
        Verb{{"audit", "BOARD", "--simulate"}, ExitStatus::startUpFailed, "no model of a \"abacus\""},
        Verb{{"statistics", "BOARD", "--simulate"},
             ExitStatus::badDocument,
             "the document has no port of a known switch"},
        Verb{
            {"statistics", "BOARD", "1.1", "--simulate"}, ExitStatus::usage, "has no switch 1 (it has none)"},
        Verb{{"check", "BOARD"}, ExitStatus::badDocument, "abacus"},
        Verb{{"register", "read", "smi", "--switch", "1", "port0/0", "--simulate=BOARD"},
             ExitStatus::registerFailed,
             "port 0/PortStatus could not be read"},
        Verb{{"register", "read", "parallel", "port0/0", "--simulate=BOARD"},
             ExitStatus::noHardware,
             "nothing on the simulated board answers"}));

TEST(UnknownChipTest, IsRefusedByNameWhereToolsAskForIt) {
    EXPECT_EQ(ChipKinds::find("abacus"), nullptr);
    EXPECT_EQ(refusalOf([] { ChipKinds::get("abacus", "audit"); }), "no chip \"abacus\" is known to audit");
    EXPECT_EQ(refusalOf([] {
                  chips::PortCounters{{0, 1}, "abacus", {}}.getCounters();
              }),
              "no chip \"abacus\" is known to statistics");

    auto const board = reference_host::XmlDocument::fromText(document, "board");
    simulation::SimulatedBoard models(*board);
    board::BoardAccess access(models);
    EXPECT_EQ(refusalOf([&] { access.connect(1, "abacus"); }), "no chip \"abacus\" is known to switchctl");
    std::ostringstream out;
    EXPECT_EQ(refusalOf([&] {
                  switchctl::statistics::LibraryText(access).write({{1, 1}, "abacus", "", ""}, out);
              }),
              "no chip \"abacus\" is known to statistics");
    EXPECT_EQ(out.str(), "");

    std::istringstream trace("switchctl trace 1\nchip 1 abacus\n");
    EXPECT_EQ(refusalOf([&] { board::TraceReader(trace, "t.txt"); }), "t.txt:2: no model of a \"abacus\"");
}

TEST(UnknownChipTest, AFamilyIsWhatItsKindSays) {
    Abacus const kind;
    chips::ChipCatalogue const catalogue("vsc7390");
    chips::AccessErrors errors;
    MemoryTransport transport(errors);
    transport.registers = {{"1.0/0x10", 10}, {"1.1/0x04", 7}, {"1.1/0x08", 2}};
    auto const reader = kind.makeCounterReader(catalogue, transport);
    EXPECT_TRUE(reader->isChipThere());
    std::vector<std::string> unread;
    chips::PortCounters const counters = reader->read({4, 1}, unread);
    EXPECT_EQ(counters.model, "abacus");
    ASSERT_EQ(counters.values.size(), 1U);
    EXPECT_EQ(counters.values[0], 0x200000007U);
    EXPECT_THAT(unread, testing::IsEmpty());
    transport.registers["1.0/0x10"] = 0x7390;
    EXPECT_FALSE(reader->isChipThere());
}

TEST(UnknownChipTest, EachModelHasItsKindAndEachTransportLeadsToOneFamily) {
    for (ChipKind const* const kind : ChipKinds::getAll()) {
        EXPECT_EQ(ChipKinds::find(kind->getFacts().model), kind);
        for (ChipKind::Transport const transport : kind->getFacts().transports) {
            EXPECT_EQ(&ChipKinds::reachedOver(transport), kind);
        }
    }
    EXPECT_EQ(ChipKinds::get("88e6096", "a test").getFacts().name, "88E6096");
    EXPECT_EQ(ChipKinds::get("vsc7390", "a test").getFacts().name, "VSC7390");
}
