#pragma once

#include <string>
#include <vector>

/// A check, a document that has what it looks for at the marked lines, and one that does not have it.
struct CheckCase {
    std::string check;
    std::string with;
    std::string without;
};

std::vector<CheckCase> switchCases();
std::vector<CheckCase> portCases();
std::vector<CheckCase> trunkCases();
std::vector<CheckCase> vlanCases();
std::vector<CheckCase> memberCases();
std::vector<CheckCase> taggingCases();
std::vector<CheckCase> groupCases();
std::vector<CheckCase> conditionCases();
std::vector<CheckCase> cableCases();
