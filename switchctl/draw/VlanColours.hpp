#pragma once

#include <cstddef>
#include <iterator>

namespace switchctl::draw {

/// Told apart by people with any colour vision, on white.
constexpr char const* vlanColours[] = {"#0072B2", "#D55E00", "#009E73", "#CC79A7", "#8C6D00",
                                       "#56B4E9", "#6A3D9A", "#B2182B", "#5E5E5E", "#1B7837"};

/// \param number of the VLAN among those of the document, by id.
constexpr char const* vlanColour(std::size_t number) {
    return vlanColours[number % std::size(vlanColours)];
}

} // namespace switchctl::draw
