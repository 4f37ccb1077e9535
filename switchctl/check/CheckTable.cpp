#include "switchctl/check/CheckTable.hpp"

#include "switchctl/check/AgeTimeChecks.hpp"
#include "switchctl/check/GroupChecks.hpp"
#include "switchctl/check/GroupTableChecks.hpp"
#include "switchctl/check/MemberChecks.hpp"
#include "switchctl/check/PathChecks.hpp"
#include "switchctl/check/PortChecks.hpp"
#include "switchctl/check/SchemaChecks.hpp"
#include "switchctl/check/SwitchChecks.hpp"
#include "switchctl/check/TaggingChecks.hpp"
#include "switchctl/check/TrunkChecks.hpp"
#include "switchctl/check/VitessePortChecks.hpp"
#include "switchctl/check/VlanChecks.hpp"

namespace switchctl::check {

std::vector<Check> const& allChecks() {
    static std::vector<Check> const checks = [] {
        std::vector<Check> all;
        for (auto const topic :
             {schemaChecks, switchChecks, ageTimeChecks, portChecks, vitessePortChecks, trunkChecks,
              vlanChecks, memberChecks, taggingChecks, pathChecks, groupChecks, groupTableChecks}) {
            std::vector<Check> const some = topic();
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return checks;
}

} // namespace switchctl::check
