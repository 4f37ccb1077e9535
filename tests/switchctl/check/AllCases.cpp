#include "tests/switchctl/check/AllCases.hpp"

#include <algorithm>

std::vector<CheckCase> allCases() {
    std::vector<CheckCase> all;
    for (auto const topic : {switchCases, portCases, trunkCases, vlanCases, memberCases, taggingCases,
                             groupCases, conditionCases, cableCases}) {
        std::vector<CheckCase> const some = topic();
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

std::string nameOfCase(testing::TestParamInfo<CheckCase> const& info) {
    std::string name = info.param.check + "_" + std::to_string(info.index);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}
