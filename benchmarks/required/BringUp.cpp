#include "benchmarks/required/BringUp.hpp"

#include <map>
#include <memory>

#include "benchmarks/required/Marvell.hpp"
#include "benchmarks/required/Vitesse.hpp"
#include "host/MappedSection.hpp"

namespace required {

namespace {

struct Switch {
    SwitchPlan const* plan;
    std::unique_ptr<MappedSection> section;

    marvell::Chip marvell() const { return {*section, plan->id, plan->countedPorts}; }
    vitesse::Chip vitesse() const { return {*section, plan->countedPorts, plan->ports}; }
};

using Switches = std::map<unsigned, Switch>;

void open(Switches& switches, BoardPlan const& board, bool marvells, SystemLogInterface& log) {
    for (SwitchPlan const& plan : board.switches) {
        if (plan.isMarvell != marvells) {
            continue;
        }
        Switch& opened = switches[plan.id];
        opened.plan = &plan;
        opened.section = marvells ? marvell::sectionOf(log) : vitesse::sectionOf(log);
        if (marvells) {
            marvell::openMac(*opened.section);
        } else {
            vitesse::openBus(*opened.section);
            vitesse::setUp(*opened.section);
        }
    }
}

void configureVlans(Switch const& chip) {
    if (chip.plan->isMarvell) {
        marvell::clearTables(chip.marvell());
    } else {
        vitesse::clearTables(chip.vitesse());
    }
    for (PortPlan const& port : chip.plan->ports) {
        if (chip.plan->isMarvell) {
            marvell::configureVlans(chip.marvell(), port);
        } else {
            vitesse::configureVlans(chip.vitesse(), port);
        }
    }
}

void configureTrunks(Switch const& chip) {
    // An 88E6096 is not told of trunks.
    if (!chip.plan->isMarvell) {
        for (auto const& members : chip.plan->trunks) {
            vitesse::aggregate(chip.vitesse(), members);
        }
    }
}

void configureGroups(Switch const& chip) {
    // Nor of groups.
    if (chip.plan->isMarvell) {
        return;
    }
    for (PortPlan const& port : chip.plan->ports) {
        for (GroupMembership const& group : port.groups) {
            vitesse::joinGroup(chip.vitesse(), port.id, group);
        }
    }
}

void configurePorts(Switch const& chip) {
    for (PortPlan const& port : chip.plan->ports) {
        if (chip.plan->isMarvell) {
            marvell::configurePort(chip.marvell(), port);
        } else {
            vitesse::configurePort(chip.vitesse(), port);
        }
    }
}

void push(Switches const& switches, void (*step)(Switch const&)) {
    for (auto const& entry : switches) {
        step(entry.second);
    }
}

} // namespace

void probe(Probe const& wanted, SystemLogInterface& log) {
    if (wanted.isMarvell) {
        auto const section = marvell::sectionOf(log);
        unsigned const saved = marvell::openMac(*section);
        marvell::isThere({*section, wanted.id, 0});
        marvell::closeMac(*section, saved);
    } else {
        auto const section = vitesse::sectionOf(log);
        vitesse::openBus(*section);
        vitesse::isThere(*section);
    }
}

void bringUp(BoardPlan const& board, SystemLogInterface& log) {
    for (Probe const& wanted : board.probes) {
        probe(wanted, log);
    }
    Switches switches;
    open(switches, board, true, log);
    open(switches, board, false, log);
    for (auto const& entry : switches) {
        if (entry.second.plan->isMarvell && entry.second.plan->ageSeconds) {
            marvell::setAgeTime(entry.second.marvell(), *entry.second.plan->ageSeconds);
        }
    }
    push(switches, configureVlans);
    push(switches, configureTrunks);
    push(switches, configureGroups);
    push(switches, configurePorts);
}

} // namespace required
