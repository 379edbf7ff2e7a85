#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zip {

/// Name of the system in the high byte of a version word (ZIP application note, section 4.4.2.2).
std::string_view HostSystemName(std::uint16_t version);

/// The version in the low byte of a version word, which holds ten times the version: 20 reads "2.0".
std::string VersionText(std::uint16_t version);

/// Name of a compression method (ZIP application note, section 4.4.5).
std::string_view MethodName(std::int16_t method);

} // namespace zip
