#pragma once

#include <cstdint>

namespace cabinet {

class CabFile;

/// The object whose iteration is running or was the last to run; null before the first iteration. Only one
/// iteration runs in the process at a time.
CabFile* CurrentCabFile();
void SetCurrentCabFile(CabFile* cabFile);

/// The function that the cabinet iterator calls. It passes everything to CurrentCabFile and returns what that
/// returns, or kNoError when there is no such object.
std::uint32_t CabIterateCallback(std::uintptr_t context, std::uint32_t notification, void* param1,
                                 std::uintptr_t param2);

} // namespace cabinet
