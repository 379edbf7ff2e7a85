#include "InflateKernels.h"

#include "InflateFastLoop.h"

namespace archive {

namespace {

FastLoopEnd DecodePortable(InflateBits& bits, std::uint8_t* space, std::size_t& at, std::size_t size,
                           const InflateTables& tables) {
    return InflateFastLoop(bits, space, at, size, tables);
}

constexpr InflateKernel kPortable{"portable", DecodePortable};

} // namespace

const std::vector<const InflateKernel*>& InflateKernels() {
    static const std::vector<const InflateKernel*> kernels{&kPortable};
    return kernels;
}

} // namespace archive
