#include "switchctl/check/CheckTable.hpp"

namespace switchctl::check {

std::vector<Check> const& allChecks() {
    static std::vector<Check> const checks = [] {
        std::vector<Check> all;
        for (auto const topic : {schemaChecks, numberChecks, switchChecks, cableChecks, ageTimeChecks,
                                 portChecks, vitessePortChecks, trunkChecks, vlanChecks, memberChecks,
                                 taggingChecks, pathChecks, groupChecks, groupTableChecks, conditionChecks}) {
            std::vector<Check> const some = topic();
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return checks;
}

} // namespace switchctl::check
