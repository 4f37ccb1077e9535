#pragma once

#include <cstdint>
#include <deque>
#include <map>

#include "simulation/88e6096/CommandUnit.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"

namespace simulation::marvell {

/// The VLAN table unit and the spanning-tree table unit, which share their registers in Global 1.
class Vtu : public CommandUnit {
public:
    using VtuEntry = Marvell88E6096TestSide::VtuEntry;
    using StuEntry = Marvell88E6096TestSide::StuEntry;
    using Violation = Marvell88E6096TestSide::VtuViolation;

    /// \param registers those of Global 1. Both must outlive the unit.
    Vtu(Context& context, RegisterFile& registers);

    bool hasViolation() const;
    void flush();

    std::map<unsigned, VtuEntry> const& getVtu() const { return _vtu; }
    std::map<unsigned, StuEntry> const& getStu() const { return _stu; }
    /// Null when there is none.
    VtuEntry const* findVlan(unsigned vid) const;
    StuEntry const* findStates(unsigned sid) const;
    void setEntry(unsigned vid, VtuEntry const& entry);
    void setEntry(unsigned sid, StuEntry const& entry);
    void addViolation(unsigned vid, unsigned sourcePort, Violation violation);
    /// The same for a frame's violation, which is lost while another waits to be fetched.
    void noteViolation(unsigned vid, unsigned sourcePort, Violation violation);

    /// Highest SID, all bits of the field set.
    static unsigned highestSid(Marvell88E6096Options const& options);

private:
    using PortCodes = decltype(VtuEntry::memberTags);

    struct PendingViolation {
        unsigned vid;
        unsigned sourcePort;
        Violation kind;
    };

    void perform(std::uint32_t word) override;
    void loadVtu();
    void nextVtu();
    void loadStu();
    void nextStu();
    void fetchViolation();
    /// A code for each port, from its field of the data registers, or into it.
    PortCodes staged(Field const* fields) const;
    void stage(Field const* fields, PortCodes const& codes);
    void clearData();
    void stageVid(unsigned vid, bool valid);
    void stageValid(bool valid);

    Context& _context;
    std::map<unsigned, VtuEntry> _vtu;
    std::map<unsigned, StuEntry> _stu;
    std::deque<PendingViolation> _violations;
};

} // namespace simulation::marvell
