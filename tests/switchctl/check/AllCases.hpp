#pragma once

#include <gtest/gtest.h>

#include "tests/switchctl/check/CheckCase.hpp"

/// The cases of all topics.
std::vector<CheckCase> allCases();

/// A name for the test of a case.
std::string nameOfCase(testing::TestParamInfo<CheckCase> const& info);
