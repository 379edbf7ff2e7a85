#pragma once

#include <cstdint>

namespace cabinet {

class CabFile;

/// The object whose iteration runs or ran last; null before the first one. One at a time in the process.
CabFile* CurrentCabFile();
void SetCurrentCabFile(CabFile* cabFile);

/// The function that the cabinet iterator calls: hands all to CurrentCabFile and returns its
/// answer, or kNoError when there is none.
std::uint32_t CabIterateCallback(std::uintptr_t context, std::uint32_t notification, void* param1,
                                 std::uintptr_t param2);

} // namespace cabinet
