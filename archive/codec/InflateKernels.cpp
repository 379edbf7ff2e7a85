#include "archive/codec/InflateKernels.h"

#include "archive/codec/CopyNearSsse3.h"
#include "archive/codec/CpuTarget.h"
#include "archive/codec/InflateFastLoop.h"

namespace codec {

namespace {

FastLoopEnd DecodePortable(InflateBits& bits, std::uint8_t* space, std::size_t& at, std::size_t size,
                           const InflateTables& tables) {
    return RunInflateFastLoop<CopyNear>(bits, space, at, size, tables);
}

constexpr InflateKernel kPortable{"portable", DecodePortable};

#if PELLARION_X86_64
// Shifts by a register and masks of a variable width take one instruction each.
[[gnu::target("bmi,bmi2,ssse3")]] FastLoopEnd DecodeBmi2(InflateBits& bits, std::uint8_t* space,
                                                         std::size_t& at, std::size_t size,
                                                         const InflateTables& tables) {
    return RunInflateFastLoop<CopyNearSsse3>(bits, space, at, size, tables);
}

constexpr InflateKernel kBmi2{"bmi2", DecodeBmi2};
#endif

std::vector<const InflateKernel*> FindKernels() {
    std::vector<const InflateKernel*> kernels{&kPortable};
#if PELLARION_X86_64
    if (FastCodeAllowed() && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
        __builtin_cpu_supports("ssse3"))
        kernels.push_back(&kBmi2);
#endif
    return kernels;
}

} // namespace

const std::vector<const InflateKernel*>& InflateKernels() {
    static const std::vector<const InflateKernel*> kernels = FindKernels();
    return kernels;
}

} // namespace codec
