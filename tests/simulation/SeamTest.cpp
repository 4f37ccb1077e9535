#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/MappedSection.hpp"
#include "host/SystemLogInterface.hpp"
#include "simulation/BusDevice.hpp"
#include "simulation/SimulatedWindow.hpp"

namespace {

class SilentLog : public SystemLogInterface {
public:
    void logCritical(char const*, ...) override {}
    void logError(char const*, ...) override {}
    void logWarning(char const*, ...) override {}
    void logInfo(char const*, ...) override {}
    void logDebug(char const*, ...) override {}
    void log(unsigned, char const*, ...) override {}
};

/// Sixteen words that can be told to fail.
class Memory : public simulation::BusDevice {
public:
    bool read(unsigned offset, unsigned& value) override {
        if (_fails) {
            return false;
        }
        ++_reads;
        value = _words.at(offset / 4);
        return true;
    }

    bool write(unsigned offset, unsigned value) override {
        if (_fails) {
            return false;
        }
        ++_writes;
        _words.at(offset / 4) = value;
        return true;
    }

    std::array<std::atomic<unsigned>, 16> _words{};
    std::atomic<unsigned> _reads{0};
    std::atomic<unsigned> _writes{0};
    std::atomic<bool> _fails{false};
};

/// A section that a test maps by hand.
class Section : public MappedSection {
public:
    explicit Section(SystemLogInterface& log) : MappedSection("test", log, false) {}
    ~Section() override { place(notMapped); }

    void place(std::uintptr_t base, unsigned startOffset = 0) {
        _baseAddress = base;
        _startOffset = startOffset;
    }

    static void useAsDummy(HardwareMapping* section) {
        _dummySection = section;
        _dummySectionWriteCounts = 0;
    }

    static unsigned writeCount() { return _dummySectionWriteCounts; }
};

class SeamTest : public testing::Test {
protected:
    ~SeamTest() override { Section::useAsDummy(nullptr); }

    SilentLog _log;
    Memory _memory;
    simulation::SimulatedWindow _window{_memory, 64};
    Section _section{_log};
};

std::string libraryOf(char const* symbol, void* scope) {
    Dl_info info{};
    void* const address = dlsym(scope, symbol);
    return address != nullptr && dladdr(address, &info) != 0 ? info.dli_fname : "";
}

char const* const setter = "_ZN15HardwareMapping3setEjj";
char const* const getter = "_ZNK15HardwareMapping3getEjRj";

TEST_F(SeamTest, TheDynamicLinkerPrefersTheseAccessorsAndFindsTheLibrarysNext) {
    for (char const* name : {setter, getter}) {
        EXPECT_NE(libraryOf(name, RTLD_DEFAULT), "") << name;
        EXPECT_EQ(libraryOf(name, RTLD_DEFAULT).find("libswitchmanager"), std::string::npos) << name;
        EXPECT_NE(libraryOf(name, RTLD_NEXT).find("libswitchmanager"), std::string::npos) << name;
    }
}

TEST_F(SeamTest, ASimulatedSectionIsAnsweredByItsDevice) {
    _section.place(_window.getBaseAddress());
    EXPECT_TRUE(_section.set(8, 0x12345678));
    EXPECT_EQ(_memory._words[2], 0x12345678U);
    unsigned value = 0;
    EXPECT_TRUE(_section.get(8, value));
    EXPECT_EQ(value, 0x12345678U);
    EXPECT_EQ(_memory._reads, 1U);
    EXPECT_EQ(_memory._writes, 1U);
}

TEST_F(SeamTest, QualifiedAndVirtualCallsMeetTheSameAccessors) {
    _section.place(_window.getBaseAddress());
    HardwareMapping& mapping = _section;
    EXPECT_TRUE(mapping.set(4, 5));
    EXPECT_TRUE(mapping.HardwareMapping::set(8, 6));
    EXPECT_EQ(_memory._words[1], 5U);
    EXPECT_EQ(_memory._words[2], 6U);
}

TEST_F(SeamTest, AddressesAreAlignedAfterTheStartOffsetIsAdded) {
    _section.place(_window.getBaseAddress(), 6);
    EXPECT_TRUE(_section.set(3, 7));
    EXPECT_EQ(_memory._words[2], 7U);
    unsigned value = 0;
    EXPECT_TRUE(_section.get(2, value));
    EXPECT_EQ(value, 7U);
}

TEST_F(SeamTest, AFailingDeviceFailsTheAccess) {
    _section.place(_window.getBaseAddress());
    _memory._fails = true;
    unsigned value = 5;
    EXPECT_FALSE(_section.set(0, 1));
    EXPECT_FALSE(_section.get(0, value));
    EXPECT_EQ(value, 5U);
}

TEST_F(SeamTest, AnUnmappedSectionFails) {
    unsigned value = 5;
    EXPECT_FALSE(_section.set(0, 1));
    EXPECT_FALSE(_section.get(0, value));
    EXPECT_EQ(value, 5U);
    EXPECT_EQ(_memory._writes, 0U);
}

TEST_F(SeamTest, ARealSectionIsLeftToTheLibrary) {
    alignas(8) std::array<unsigned, 4> words{};
    _section.place(reinterpret_cast<std::uintptr_t>(words.data()), 4);
    EXPECT_TRUE(_section.set(5, 0xABCDEF01));
    EXPECT_EQ(words, (std::array<unsigned, 4>{0, 0, 0xABCDEF01, 0}));
    unsigned value = 0;
    EXPECT_TRUE(_section.get(4, value));
    EXPECT_EQ(value, 0xABCDEF01U);
    EXPECT_EQ(_memory._writes, 0U);
    EXPECT_EQ(_memory._reads, 0U);
}

TEST_F(SeamTest, AWindowTakesWholePages) {
    auto const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    EXPECT_EQ(_window.getLength(), page);
    EXPECT_EQ(simulation::SimulatedWindow(_memory, page + 1).getLength(), 2 * page);
    EXPECT_EQ(simulation::SimulatedWindow(_memory, 0).getLength(), page);
}

TEST_F(SeamTest, ADestroyedWindowIsForgotten) {
    auto window = std::make_unique<simulation::SimulatedWindow>(_memory, 64);
    std::uintptr_t const base = window->getBaseAddress();
    std::size_t const length = window->getLength();
    window.reset();
    // Memory of the process's own where the window was.
    void* const memory = mmap(reinterpret_cast<void*>(base), length, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    ASSERT_EQ(memory, reinterpret_cast<void*>(base));
    _section.place(base);
    EXPECT_TRUE(_section.set(4, 9));
    EXPECT_EQ(static_cast<unsigned*>(memory)[1], 9U);
    EXPECT_EQ(_memory._writes, 0U);
    munmap(memory, length);
}

TEST_F(SeamTest, WritesAreCountedInTheDummySection) {
    alignas(8) std::array<unsigned, 2> words{};
    Section dummy(_log);
    Section::useAsDummy(&dummy);
    _section.place(_window.getBaseAddress());
    EXPECT_TRUE(_section.set(0, 1));
    EXPECT_EQ(Section::writeCount(), 0U) << "an unmapped dummy section counts nothing";
    dummy.place(reinterpret_cast<std::uintptr_t>(words.data()));
    EXPECT_TRUE(_section.set(0, 1));
    EXPECT_TRUE(_section.set(4, 1));
    EXPECT_EQ(words[0], 2U);
    unsigned value = 0;
    EXPECT_TRUE(_section.get(0, value));
    _memory._fails = true;
    EXPECT_FALSE(_section.set(0, 1));
    EXPECT_EQ(words[0], 2U);
    EXPECT_EQ(Section::writeCount(), 2U);
    Section::useAsDummy(nullptr);
}

TEST_F(SeamTest, TheLibraryCountsTheWritesOfRealSections) {
    alignas(8) std::array<unsigned, 2> counts{};
    alignas(8) std::array<unsigned, 2> words{};
    Section dummy(_log);
    dummy.place(reinterpret_cast<std::uintptr_t>(counts.data()));
    Section::useAsDummy(&dummy);
    _section.place(reinterpret_cast<std::uintptr_t>(words.data()));
    EXPECT_TRUE(_section.set(0, 1));
    EXPECT_EQ(counts[0], 1U);
    EXPECT_EQ(Section::writeCount(), 1U);
    Section::useAsDummy(nullptr);
}

TEST_F(SeamTest, TheDummySectionMayBeSimulated) {
    Memory counts;
    simulation::SimulatedWindow const window(counts, 4);
    Section dummy(_log);
    dummy.place(window.getBaseAddress());
    Section::useAsDummy(&dummy);
    _section.place(_window.getBaseAddress());
    EXPECT_TRUE(_section.set(0, 1));
    EXPECT_TRUE(_section.set(0, 1));
    EXPECT_EQ(counts._words[0], 2U);
    Section::useAsDummy(nullptr);
}

TEST_F(SeamTest, ThreadsMayUseAndMakeWindowsAtOnce) {
    auto const worker = [this] {
        for (int i = 0; i < 200; ++i) {
            Memory memory;
            simulation::SimulatedWindow const window(memory, 64);
            Section section(_log);
            section.place(window.getBaseAddress());
            unsigned value = 0;
            ASSERT_TRUE(section.set(4, static_cast<unsigned>(i)));
            ASSERT_TRUE(section.get(4, value));
            ASSERT_EQ(value, static_cast<unsigned>(i));
        }
    };
    std::thread first(worker);
    std::thread second(worker);
    first.join();
    second.join();
}

using SeamDeathTest = SeamTest;

TEST_F(SeamDeathTest, AnAccessThatBypassesTheAccessorsFaults) {
    std::uintptr_t const base = _window.getBaseAddress();
    EXPECT_DEATH(*reinterpret_cast<unsigned volatile*>(base) = 1, "");
}

} // namespace
