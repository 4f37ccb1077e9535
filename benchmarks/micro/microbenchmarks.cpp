// The hot paths of the library, library/X, each beside a replay of the accesses that it makes, floor/X. Both
// use the same register accessors, on ordinary memory.

#include <benchmark/benchmark.h>
#include <functional>
#include <memory>

#include "benchmarks/Replay.hpp"
#include "benchmarks/micro/PlainMemory.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/LogSink.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace {

using Port = ManagedSwitchPort;

class NoLog : public reference_host::LogSink {
public:
    void write(reference_host::LogMessage const& /*message*/) override {}
};

/// A host without a board.
struct Host {
    NoLog log;
    benchmarks::PlainMemory memory;
    reference_host::HostApplication application{log, memory};
};

Host& host() {
    static Host instance;
    return instance;
}

constexpr unsigned switchId = 3;
constexpr unsigned short marvellPorts = 11;
constexpr unsigned short vitessePorts = 24;
constexpr unsigned short device = 0x14;
constexpr unsigned short analyser = 2;
constexpr unsigned short number = 4;
constexpr unsigned short vid = 5;
constexpr char const* group = "239.1.2.3";

using Work = std::function<void()>;

void repeat(benchmark::State& state, Work const& work) {
    for (auto _ : state) {
        work();
    }
}

void add(std::string const& name, Work const& work) {
    static benchmarks::Replay replay(host().application);
    work();
    auto const steps = replay.prepare(host().memory.record(work));
    benchmark::RegisterBenchmark(("library/" + name).c_str(),
                                 [=](benchmark::State& state) { repeat(state, work); });
    benchmark::RegisterBenchmark(("floor/" + name).c_str(), [=](benchmark::State& state) {
        repeat(state, [&] { benchmark::DoNotOptimize(benchmarks::Floor::run(steps)); });
    });
}

MarvellSwitch& marvellSwitch() {
    static MarvellSwitch instance(host().application, switchId, marvellPorts, false);
    return instance;
}

VitesseSwitch& vitesseSwitch() {
    static VitesseSwitch instance(host().application, switchId, vitessePorts, false);
    return instance;
}

void addMarvell() {
    using Access = MarvellMultiMdioManagementCommunications;
    using Registers = MarvellManagementCommunications::MarvelRegisterValues;
    auto const access = std::make_shared<Access>(host().application, switchId, false);
    add("88e6096 register read", [=] {
        Registers registers(device, number);
        benchmark::DoNotOptimize(access->readRegister(registers));
    });
    add("88e6096 register write", [=] { access->writeRegister(Registers(device, number, 1)); });
    add("88e6096 port into a VLAN", [] {
        marvellSwitch().getPort(1)->addPortToVlan(vid, Port::IngressTagSetting::addTag,
                                                  Port::EgressTagSetting::stripTag);
    });
}

void addParallelBus() {
    using Bsa = VitesseManagementCommunications::Bsa;
    auto const access = std::make_shared<VitesseParallelCommunication>(host().application, false);
    add("vsc7390 register read, parallel bus", [=] {
        unsigned value = 0;
        benchmark::DoNotOptimize(access->readRegister(Bsa{analyser, 0, number}, value));
    });
    add("vsc7390 register write, parallel bus", [=] { access->writeRegister(Bsa{analyser, 0, number}, 1); });
    add("vsc7390 port into a VLAN", [] {
        vitesseSwitch().getPort(1)->addPortToVlan(vid, Port::IngressTagSetting::addTag,
                                                  Port::EgressTagSetting::stripTag);
    });
    add("vsc7390 port into a group", [] { vitesseSwitch().getPort(1)->addPortToMulticastGroup(group, vid); });
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    addMarvell();
    addParallelBus();
    benchmark::RunSpecifiedBenchmarks();
}
