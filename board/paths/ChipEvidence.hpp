#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "board/paths/FieldAccess.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "simulation/network/EthernetFrame.hpp"

namespace board {

/// What a chip's registers and tables hold for the way of one frame from one port to another.
class ChipEvidence {
public:
    /// What a rule looks at, and what is there: "port 1/PortControl2:802.1QMode" and "0x3".
    struct Fact {
        std::string place;
        std::string value;
    };

    /// Something that would let more frames pass.
    struct Change {
        /// "port 1/PortControl2:802.1QMode=0x0".
        std::string text;
        /// Makes it in the model; what it returns takes it back.
        std::function<FieldAccess::Undo()> make;
    };

    struct Question {
        unsigned from = 0;
        /// The port that it is to leave by, if it is to leave by a certain one.
        std::optional<unsigned> to;
        /// Ports of the way out that are looked at: that one, or those that send.
        std::vector<unsigned> exits;
        /// The VLAN that the chip puts the frame in, or 0.
        unsigned vid = 0;
        simulation::EthernetFrame::Address destination = 0;
        /// VLANs that the frame may be meant for.
        std::vector<unsigned> vids;
    };

    virtual ~ChipEvidence() = default;
    ChipEvidence(ChipEvidence const&) = delete;
    ChipEvidence& operator=(ChipEvidence const&) = delete;

    /// \param rule as in simulation::Decision.
    virtual std::vector<Fact> getFacts(std::string_view rule) const = 0;
    virtual std::vector<Change> getChanges() const = 0;

    /// Of a switch of the board, which must outlive the object and its changes.
    /// \param model as in configuration documents.
    static std::unique_ptr<ChipEvidence> of(simulation::SimulatedBoard& board, unsigned switchId,
                                            std::string const& model, Question const& question);

protected:
    /// Whose register a rule looks at.
    enum class Side { from, to, chip };

    struct Row {
        std::string_view rule;
        /// Of Side::chip.
        char const* unit;
        /// One that ends in "_" ends with the number of the port that got the frame.
        char const* name;
        char const* field;
        Side side;
        /// Of a mask of ports: the side whose bit counts.
        Side bit = Side::chip;
    };

    ChipEvidence(simulation::ChipTestSide& chip, std::string const& model, Question question)
        : _fields(chip, model), _question(std::move(question)) {}

    Question const& getQuestion() const { return _question; }
    FieldAccess const& getFields() const { return _fields; }

    /// Those of one rule, of a table of all.
    template <std::size_t Count>
    std::vector<Fact> factsOf(std::string_view rule, Row const (&rows)[Count]) const {
        std::vector<Fact> facts;
        for (Row const& row : rows) {
            if (row.rule == rule) {
                addFacts(row, facts);
            }
        }
        return facts;
    }
    void addFacts(Row const& row, std::vector<Fact>& facts) const;
    /// ", without port 3", when the side has one port.
    std::string describeBit(Side side, std::uint32_t ports) const;

    std::string unitOf(Side side) const;
    /// The field of the row becomes that.
    Change changeOf(Row const& row, std::uint32_t value) const;
    /// The ports are set in the field of the row.
    Change additionOf(Row const& row, std::uint32_t ports) const;

private:
    std::string unitOf(Row const& row) const;
    std::string nameOf(Row const& row) const;

    FieldAccess _fields;
    Question const _question;
};

} // namespace board
