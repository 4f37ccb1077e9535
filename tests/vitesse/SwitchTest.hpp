#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/FailingSteps.hpp"
#include "tests/support/ParallelBench.hpp"
#include "tests/support/ParallelScript.hpp"
#include "tests/vitesse/ReportedFailures.hpp"
#include "vitesse/VitessePort.hpp"
#include "vitesse/VitesseSwitch.hpp"

/// What a switch does to its chip when it is built: the bus, then the settings of the whole chip.
inline test_support::Accesses const switchSetUp{
    test_support::writes(7, 0, 0x02, 0x0000'000C), test_support::writes(2, 0, 0x20, 0x0000'0004),
    test_support::reads(2, 0, 0xA0, 0x0000'0000), test_support::writes(2, 0, 0xA0, 0x0001'0000)};

/// A switch of that type, with the ports 0 and up and without a document, on a scripted chip.
template <typename Switch> class SwitchTestOf : public testing::Test {
protected:
    explicit SwitchTestOf(unsigned short numberOfPorts)
        : chip((script.expect(switchSetUp), bench.application), 5, numberOfPorts, false) {
        script.verify();
        bench.log.take();
    }

    VitessePort& port(unsigned int id) { return dynamic_cast<VitessePort&>(*chip.getPort(id)); }

    /// The table with success, then with each single access failing and being told so.
    template <typename Operation>
    void expectStrict(test_support::Accesses const& table, Operation operation,
                      std::set<std::size_t> const& except = {}) {
        expectSuccess(script, table, operation);
        {
            ReportedFailures const reported(script);
            expectEachFailureStops(script, table, operation, except);
        }
        bench.log.take();
    }

    test_support::ParallelBench<test_support::ParallelScript> bench;
    test_support::ParallelScript& script = bench.script;
    Switch chip;
};

using SwitchTest = SwitchTestOf<VitesseSwitch>;
