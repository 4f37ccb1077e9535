#pragma once

#include "model/BitField.hpp"

/// The fields of the VSC7390's watermark registers, from the most significant byte down.
namespace vsc7390::watermark {

using Field = BitField<unsigned int>;

constexpr Field byte3(24, 6);
constexpr Field byte2(16, 6);
constexpr Field byte1(8, 6);
constexpr Field byte0(0, 6);
constexpr Field poolSelection(1, 4);
constexpr Field poolEnable(0);

} // namespace vsc7390::watermark
