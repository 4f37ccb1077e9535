#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "marvell/MarvellPort.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "tests/support/FailingSteps.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/SmiScript.hpp"

/// A switch without a document on a scripted chip.
class SwitchTest : public testing::Test {
protected:
    explicit SwitchTest(unsigned short numberOfPorts)
        : chip(bench.application, test_support::SmiScript::chipAddress, numberOfPorts, false) {
        bench.log.take();
    }

    MarvellPort& port(unsigned int id) { return dynamic_cast<MarvellPort&>(*chip.getPort(id)); }

    test_support::MacBench<test_support::SmiScript> bench;
    test_support::SmiScript& script = bench.script;
    MarvellSwitch chip;
};
