#pragma once

#include <cstdint>
#include <string>

namespace cabinet {

/// Object error: an operation was started without a cabinet.
inline constexpr std::uint32_t kCabErrorNoName = 0x800407A4;

/// Description of a system error that ended a cabinet iteration.
std::string CabErrorText(std::uint32_t number);

/// Description of an error number that CabFile itself defines.
std::string CabObjectErrorText(std::uint32_t number);

} // namespace cabinet
