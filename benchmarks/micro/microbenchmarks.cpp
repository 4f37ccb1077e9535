// The hot paths of the library, library/X, each beside a replay of the accesses that it makes, floor/X. Both
// use the same register accessors, on ordinary memory.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "benchmarks/Replay.hpp"
#include "benchmarks/micro/AnsweringLine.hpp"
#include "benchmarks/micro/PlainMemory.hpp"
#include "host/Threads.hpp"
#include "manager/SwitchManager.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/LogSink.hpp"
#include "reference_host/XmlDocument.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"
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

void addOne(std::string const& name, Work const& work) {
    // Wall-clock time, since a manager works on a thread of its own.
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        repeat(state, work);
    })->UseRealTime();
}

void add(std::string const& name, Work const& work) {
    static benchmarks::Replay replay(host().application);
    work();
    auto const steps = replay.prepare(host().memory.record(work));
    addOne("library/" + name, work);
    addOne("floor/" + name, [=] { benchmark::DoNotOptimize(benchmarks::Floor::run(steps)); });
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

unsigned readByLine(int line) {
    constexpr std::size_t longest = 32;
    constexpr std::size_t answer = 12;
    constexpr int hexadecimal = 16;
    char text[longest];
    int const length = std::snprintf(text, sizeof text, "r %u %u %u\r\n", analyser, 0U, number);
    if (write(line, text, static_cast<std::size_t>(length)) != length || read(line, text, answer) != answer) {
        return 0;
    }
    return static_cast<unsigned>(std::strtoul(text, nullptr, hexadecimal));
}

/// As repeat(), but has the line prepared now and then, which does not count.
void repeatOnLine(benchmark::State& state, benchmarks::AnsweringLine& line, Work const& work) {
    int answers = 0;
    for (auto _ : state) {
        if (answers-- == 0) {
            state.PauseTiming();
            line.prepare();
            answers = benchmarks::AnsweringLine::answers - 1;
            state.ResumeTiming();
        }
        work();
    }
    // The next one starts with a line without answers.
    for (; answers > 0; --answers) {
        work();
    }
}

void addSerialLine() {
    using Bsa = VitesseManagementCommunications::Bsa;
    auto const line = std::make_shared<benchmarks::AnsweringLine>();
    auto const access =
        std::make_shared<VitesseSerialCommunications>(host().application, false, line->getDevicePath());
    int const own = open(line->getDevicePath().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    auto const addRead = [line](char const* name, Work const& work) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State& state) {
            repeatOnLine(state, *line, work);
        })->UseRealTime();
    };
    addRead("library/vsc7390 register read, serial line", [=] {
        unsigned value = 0;
        benchmark::DoNotOptimize(access->readRegister(Bsa{analyser, 0, number}, value));
    });
    addRead("floor/vsc7390 register read, serial line", [=] { benchmark::DoNotOptimize(readByLine(own)); });
}

/// Has a manager assemble the document and waits for it.
void assemble(Xml& document) {
    std::mutex mutex;
    std::condition_variable populated;
    bool ready = false;
    std::vector<std::function<void()>> callbacks = {[&] {
        std::lock_guard<std::mutex> const lock(mutex);
        ready = true;
        populated.notify_one();
    }};
    NoLog log;
    reference_host::HostApplication application(log, host().memory);
    SwitchManager manager(application, document, false, true);
    manager.phyInterfacesHaveNowBeenSetup();
    manager.start(callbacks);
    std::unique_lock<std::mutex> lock(mutex);
    populated.wait(lock, [&] { return ready; });
    lock.unlock();
    application.getThreads().endEventLoops();
}

void addAssembly(char const* path) {
    std::shared_ptr<Xml> const document = reference_host::XmlDocument::fromFile(path);
    addOne("library/assembly of a document", [=] { assemble(*document); });
}

} // namespace

int main(int argc, char** argv) try {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fputs("microbenchmarks [--benchmark_...] BOARD.xml\n", stderr);
        return 2;
    }
    addMarvell();
    addParallelBus();
    addSerialLine();
    addAssembly(argv[1]);
    benchmark::RunSpecifiedBenchmarks();
} catch (std::exception const& error) {
    std::fprintf(stderr, "microbenchmarks: %s\n", error.what());
    return 2;
}
