#include "archive/codec/Crc32Clmul.h"

#if PELLARION_X86_64

#include "archive/codec/Crc32Kernels.h"

#include <immintrin.h>

namespace codec {

// A message is a polynomial over GF(2), and its CRC the remainder by P. A block of 128 bits that stands d
// bits before another may be multiplied by x^d and added to it without changing the remainder; with x^d
// reduced by P first, each 64-bit half takes one carry-less multiplication. All of it is bit-reflected, as
// the CRC is: the lowest bit of the first byte is the highest power.

namespace {

/// x^n mod P, reflected, one bit to the left: a product of reflected factors comes out one bit too far right.
constexpr std::uint64_t PowerOfX(unsigned n) {
    std::uint32_t power = 0x80000000u;
    for (; n > 0; n--)
        power = (power >> 1) ^ ((power & 1) != 0 ? 0xEDB88320u : 0u);
    return std::uint64_t{power} << 1;
}

/// The factors that move a block by `bits`: for its first and for its second half. (The 32 is the width of
/// the CRC.)
struct FoldFactors {
    std::uint64_t first;
    std::uint64_t second;
};

constexpr FoldFactors FactorsFor(unsigned bits) {
    return {PowerOfX(bits + 32), PowerOfX(bits - 32)};
}

constexpr FoldFactors kOneBlock = FactorsFor(128);
constexpr FoldFactors kFourBlocks = FactorsFor(4 * 128);
constexpr FoldFactors kSixteenBlocks = FactorsFor(16 * 128);

[[gnu::target("sse4.1,pclmul")]] inline __m128i Factors(const FoldFactors& factors) {
    return _mm_set_epi64x(static_cast<long long>(factors.second), static_cast<long long>(factors.first));
}

[[gnu::target("sse4.1,pclmul")]] inline __m128i Load(const std::uint8_t* data) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

/// `block` moved by the factors' distance and added to `onto`.
[[gnu::target("sse4.1,pclmul")]] inline __m128i Fold(__m128i block, __m128i factors, __m128i onto) {
    return _mm_xor_si128(onto, _mm_xor_si128(_mm_clmulepi64_si128(block, factors, 0x00),
                                             _mm_clmulepi64_si128(block, factors, 0x11)));
}

/// The CRC of a last block from a register of 0, then of the bytes after it.
[[gnu::target("sse4.1,pclmul")]] inline std::uint32_t Finish(__m128i block, const std::uint8_t* data,
                                                             std::size_t size) {
    alignas(16) std::uint8_t bytes[16];
    _mm_store_si128(reinterpret_cast<__m128i*>(bytes), block);
    return UpdateCrc32Portable(UpdateCrc32Portable(0, bytes, sizeof bytes), data, size);
}

[[gnu::target("avx512f,vpclmulqdq")]] inline __m512i Fold(__m512i block, __m512i factors, __m512i onto) {
    constexpr int kXorOfThree = 0x96;
    return _mm512_ternarylogic_epi64(_mm512_clmulepi64_epi128(block, factors, 0x00),
                                     _mm512_clmulepi64_epi128(block, factors, 0x11), onto, kXorOfThree);
}

[[gnu::target("avx512f,vpclmulqdq")]] inline __m512i WideFactors(const FoldFactors& factors) {
    const auto first = static_cast<long long>(factors.first);
    const auto second = static_cast<long long>(factors.second);
    return _mm512_set4_epi64(second, first, second, first);
}

[[gnu::target("avx512f,vpclmulqdq")]] inline __m512i Load64(const std::uint8_t* data) {
    return _mm512_loadu_si512(data);
}

/// The CRC of four blocks and of the bytes that follow them.
[[gnu::target("sse4.1,pclmul")]] inline std::uint32_t FinishFour(__m128i block0, __m128i block1,
                                                                 __m128i block2, __m128i block3,
                                                                 const std::uint8_t* data, std::size_t size) {
    const __m128i one = Factors(kOneBlock);
    __m128i block = Fold(Fold(Fold(block0, one, block1), one, block2), one, block3);
    for (; size >= 16; data += 16, size -= 16)
        block = Fold(block, one, Load(data));
    return Finish(block, data, size);
}

} // namespace

[[gnu::target("sse4.1,pclmul")]] std::uint32_t UpdateCrc32Clmul(std::uint32_t crc, const std::uint8_t* data,
                                                                std::size_t size) {
    if (size < 64)
        return UpdateCrc32Portable(crc, data, size);
    __m128i block0 = _mm_xor_si128(Load(data), _mm_cvtsi32_si128(static_cast<int>(crc)));
    __m128i block1 = Load(data + 16);
    __m128i block2 = Load(data + 32);
    __m128i block3 = Load(data + 48);
    data += 64;
    size -= 64;
    const __m128i four = Factors(kFourBlocks);
    for (; size >= 64; data += 64, size -= 64) {
        block0 = Fold(block0, four, Load(data));
        block1 = Fold(block1, four, Load(data + 16));
        block2 = Fold(block2, four, Load(data + 32));
        block3 = Fold(block3, four, Load(data + 48));
    }
    return FinishFour(block0, block1, block2, block3, data, size);
}

[[gnu::target("sse4.1,pclmul,avx512f,vpclmulqdq")]] std::uint32_t
UpdateCrc32WideClmul(std::uint32_t crc, const std::uint8_t* data, std::size_t size) {
    if (size < 256)
        return UpdateCrc32Clmul(crc, data, size);
    __m512i blocks0 =
        _mm512_xor_si512(Load64(data), _mm512_zextsi128_si512(_mm_cvtsi32_si128(static_cast<int>(crc))));
    __m512i blocks1 = Load64(data + 64);
    __m512i blocks2 = Load64(data + 128);
    __m512i blocks3 = Load64(data + 192);
    data += 256;
    size -= 256;
    const __m512i sixteen = WideFactors(kSixteenBlocks);
    for (; size >= 256; data += 256, size -= 256) {
        blocks0 = Fold(blocks0, sixteen, Load64(data));
        blocks1 = Fold(blocks1, sixteen, Load64(data + 64));
        blocks2 = Fold(blocks2, sixteen, Load64(data + 128));
        blocks3 = Fold(blocks3, sixteen, Load64(data + 192));
    }
    const __m512i four = WideFactors(kFourBlocks);
    blocks0 = Fold(Fold(Fold(blocks0, four, blocks1), four, blocks2), four, blocks3);
    for (; size >= 64; data += 64, size -= 64)
        blocks0 = Fold(blocks0, four, Load64(data));
    std::uint8_t last[64];
    _mm512_storeu_si512(last, blocks0);
    return FinishFour(Load(last), Load(last + 16), Load(last + 32), Load(last + 48), data, size);
}

} // namespace codec

#endif
