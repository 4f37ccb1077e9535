#include "switchctl/plan/WriteAlignment.hpp"

#include <algorithm>
#include <dtl/dtl.hpp>

namespace switchctl::plan {

WriteAlignment::WriteAlignment(Writes const& first, Writes const& second) {
    dtl::Diff<PlannedWrite, Writes> difference(first, second);
    difference.onHuge();
    difference.compose();
    std::size_t settled = 0;
    // Those of the first before those of the second, whichever the library names first.
    auto const settle = [&] {
        std::stable_partition(_lone.begin() + static_cast<std::ptrdiff_t>(settled), _lone.end(),
                              [](Lone const& lone) { return lone.isInFirst; });
        settled = _lone.size();
    };
    for (auto const& [write, place] : difference.getSes().getSequence()) {
        if (place.type == dtl::SES_COMMON) {
            settle();
        } else {
            _lone.push_back({place.type == dtl::SES_DELETE, write});
        }
    }
    settle();
}

} // namespace switchctl::plan
