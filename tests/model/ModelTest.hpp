#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference_host/HostApplication.hpp"
#include "tests/support/CallLog.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/RecordingSwitch.hpp"
#include "tests/support/TestDocument.hpp"

/// An application without hardware, the list that recording switches write to, and one such switch
/// with the id 0.
class ModelTest : public testing::Test {
protected:
    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    test_support::CallLog calls;
    test_support::RecordingSwitch chip{application, 0, calls};
};
