#pragma once

#include <cstdint>
#include <string>

namespace cabinet {

/// Object error: an operation was started without a cabinet.
inline constexpr std::uint32_t kCabErrorNoName = 0x800407A4;

/// Text of an error number of the system's, as a cabinet iteration fails with it.
std::string CabErrorText(std::uint32_t number);

/// Text of an error number of CabFile's own.
std::string CabObjectErrorText(std::uint32_t number);

} // namespace cabinet
