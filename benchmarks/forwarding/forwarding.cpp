// Frames through the chip models of two examples that the library has brought up, model/X, each beside a
// switch that only does what it cannot do without, floor/X. Both get the same frames, and both send the same
// copies: that is looked at first.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/forwarding/PlainSwitch.hpp"
#include "board/ClockAdoption.hpp"
#include "board/ModelBringUp.hpp"
#include "simulation/network/ChipForwarding.hpp"

namespace {

using benchmarks::PlainSwitch;
using simulation::ChipForwarding;
using simulation::Decision;
using simulation::EthernetFrame;
using Form = Decision::Form;

constexpr unsigned stations = 256;

/// A chip with stations at two of its ports, and the plain switch that is like it.
struct Bench {
    ChipForwarding& chip;
    PlainSwitch& plain;
    unsigned here;
    unsigned there;
    /// Changes nothing, but the chip cannot know.
    std::function<void()> writeRegister;
};

EthernetFrame::Address stationAt(unsigned port, unsigned number) {
    return 0x020000000000 + (port << 16) + number;
}

EthernetFrame frame(EthernetFrame::Address to, EthernetFrame::Address from) {
    return EthernetFrame::make(to, from, 0x0800);
}

/// Frames of 64 bytes between the stations, to known ones or to unknown ones.
std::vector<EthernetFrame> framesFor(Bench const& bench, bool areKnown) {
    std::vector<EthernetFrame> frames;
    for (unsigned i = 0; i < stations; ++i) {
        auto const to = stationAt(areKnown ? bench.there : bench.there + 1, i);
        frames.push_back(frame(to, stationAt(bench.here, i)));
    }
    return frames;
}

void requireSame(std::string const& name, Bench const& bench, EthernetFrame const& frame) {
    Decision const decision = bench.chip.receive(bench.here, frame);
    auto const& copies = bench.plain.receive(bench.here, frame);
    bool same = !copies.empty() && decision.egress.size() == copies.size();
    for (std::size_t i = 0; same && i < copies.size(); ++i) {
        same = decision.egress[i].port == copies[i].port && decision.egress[i].frame == copies[i].frame;
    }
    if (!same) {
        std::fprintf(stderr, "%s: the floor does otherwise than \"%s\"\n", name.c_str(),
                     decision.describe().c_str());
        std::exit(EXIT_FAILURE);
    }
}

template <typename Work>
void run(benchmark::State& state, std::vector<EthernetFrame> const& frames, Work const& work) {
    std::size_t next = 0;
    for (auto _ : state) {
        work(frames[next]);
        next = (next + 1) % frames.size();
    }
    state.SetItemsProcessed(state.iterations());
}

void add(std::string const& name, Bench const& bench, std::vector<EthernetFrame> const& frames) {
    for (EthernetFrame const& each : frames) {
        requireSame(name, bench, each);
    }
    benchmark::RegisterBenchmark(("model/" + name).c_str(), [=](benchmark::State& state) {
        Decision decision;
        run(state, frames, [&](EthernetFrame const& each) {
            bench.chip.receive(bench.here, each, decision);
            benchmark::DoNotOptimize(decision);
        });
    });
    benchmark::RegisterBenchmark(("floor/" + name).c_str(), [=](benchmark::State& state) {
        run(state, frames, [&](EthernetFrame const& each) {
            benchmark::DoNotOptimize(bench.plain.receive(bench.here, each));
        });
    });
}

void addAfterWrite(std::string const& name, Bench const& bench) {
    auto const frames = framesFor(bench, true);
    benchmark::RegisterBenchmark(("model/" + name).c_str(), [=](benchmark::State& state) {
        Decision decision;
        run(state, frames, [&](EthernetFrame const& each) {
            bench.writeRegister();
            bench.chip.receive(bench.here, each, decision);
            benchmark::DoNotOptimize(decision);
        });
    });
    auto const port = bench.plain.ports[bench.here];
    benchmark::RegisterBenchmark(("floor/" + name).c_str(), [=](benchmark::State& state) {
        std::array<std::uint32_t, 8> registers{port.vid | (port.forcesVid ? 1U << 12 : 0), port.mask, 1, 1518,
                                               1};
        run(state, frames, [&](EthernetFrame const& each) {
            benchmark::DoNotOptimize(registers);
            bench.plain.decode(bench.here, registers);
            benchmark::DoNotOptimize(bench.plain.receive(bench.here, each));
        });
    });
}

void addAll(std::string const& chip, Bench const& bench) {
    for (unsigned i = 0; i < stations; ++i) {
        requireSame(chip, {bench.chip, bench.plain, bench.there, bench.here, {}},
                    frame(stationAt(bench.here, stations), stationAt(bench.there, i)));
    }
    add(chip + " to a known station", bench, framesFor(bench, true));
    add(chip + " flood", bench, framesFor(bench, false));
    addAfterWrite(chip + " after a register write", bench);
}

void open(PlainSwitch& plain, simulation::ChipTestSide& chip) {
    plain.states.fill(~0U);
    plain.trunkMasks.fill(~0U);
    for (unsigned port = 0; port < chip.getForwarding()->getNumberOfPorts(); ++port) {
        chip.plugLink(port, 1000);
        plain.ports[port].mask = ~(1U << port);
        plain.flood |= 1U << port;
        plain.senders |= chip.getForwarding()->hasLink(port) ? 1U << port : 0;
    }
}

/// VLAN 4 of the access point: sockets without tags, the uplink and the processor with them.
void addMarvell(board::ModelBringUp& models) {
    static PlainSwitch plain;
    auto& chip = models.getBoard().getMarvell(0);
    open(plain, chip);
    for (unsigned const port : {0U, 1U, 2U, 7U, 8U, 10U}) {
        plain.vlans[4].members |= 1U << port;
        plain.vlans[4].forms[port] = port < 3 ? Form::untagged : Form::tagged;
        plain.ports[port].vid = 4;
    }
    plain.vlans[4].fid = 4;
    auto& unit = chip.getUnit("port 0");
    addAll("88e6096", {*chip.getForwarding(), plain, 0, 1, [&unit] { unit.poke(0x07, unit.peek(0x07)); }});
}

/// VLAN 3 of the video switch: servers and rooms, none with tags.
void addVitesse(board::ModelBringUp& models) {
    static PlainSwitch plain;
    auto& chip = models.getBoard().getVitesse(2);
    open(plain, chip);
    for (unsigned port = 1; port < 16; ++port) {
        if (port != 3) {
            plain.vlans[3].members |= 1U << port;
            plain.vlans[3].forms[port] = Form::untagged;
            plain.ports[port].vid = 3;
        }
    }
    plain.vlans[3].fid = 3;
    auto& unit = chip.getUnit("port 4");
    addAll("vsc7390", {*chip.getForwarding(), plain, 4, 5, [&unit] { unit.poke(0x7A, unit.peek(0x7A)); }});
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    board::ModelBringUp accessPoint(EXAMPLES_FOLDER "/trap-access-point.xml");
    addMarvell(accessPoint);
    board::ModelBringUp videoSwitch(EXAMPLES_FOLDER "/trap-video-switch.xml");
    addVitesse(videoSwitch);
    // What is measured is the machine's time, not the boards'.
    board::ClockAdoption const realTime(nullptr);
    benchmark::RunSpecifiedBenchmarks();
}
