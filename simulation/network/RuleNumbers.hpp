#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace simulation {

/// Numbers of forwarding rules, for example "M7": the first of a chip's table, as many as were asked. The
/// table has to stay.
class RuleNumbers {
public:
    using value_type = std::string_view;
    using const_iterator = value_type const*;

    constexpr RuleNumbers() = default;
    constexpr RuleNumbers(value_type const* table, std::size_t asked) : _table(table), _asked(asked) {}
    template <std::size_t Asked>
    constexpr RuleNumbers(value_type const (&table)[Asked]) : RuleNumbers(table, Asked) {}

    const_iterator begin() const { return _table; }
    const_iterator end() const { return _table + _asked; }
    std::size_t size() const { return _asked; }
    bool empty() const { return _asked == 0; }
    value_type back() const { return _table[_asked - 1]; }

    bool operator==(RuleNumbers const& other) const {
        return std::equal(begin(), end(), other.begin(), other.end());
    }
    bool operator!=(RuleNumbers const& other) const { return !(*this == other); }

private:
    value_type const* _table = nullptr;
    std::size_t _asked = 0;
};

/// Asks rules, which are members of `asked`, until one ends a frame's way.
/// \return how many were asked.
template <auto... Rules, typename Asked, typename... Frame>
std::size_t askRules(Asked& asked, Frame&... frame) {
    std::size_t count = 0;
    static_cast<void>((... && (++count, (asked.*Rules)(frame...))));
    return count;
}

} // namespace simulation
