#pragma once

/// The VSC7390's frame arbiter.
namespace vsc7390::arbiter {

constexpr unsigned short block = 5;
constexpr unsigned short subBlock = 0;

enum Address : unsigned short {
    empty = 0x0C,   ///< ports from which nothing is queued
    discard = 0x0E, ///< ports whose queued frames are dropped
};

} // namespace vsc7390::arbiter
