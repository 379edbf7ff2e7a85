#pragma once

#include "archive/codec/CpuTarget.h"

#if PELLARION_X86_64

#include <array>
#include <cstddef>
#include <cstdint>
#include <immintrin.h>

namespace codec {

/// Row d: for each of 32 bytes its place in a pattern of d bytes.
constexpr std::array<std::array<std::uint8_t, 32>, 16> MakePatternPlaces() {
    std::array<std::array<std::uint8_t, 32>, 16> places{};
    for (std::size_t period = 1; period < places.size(); period++)
        for (std::size_t i = 0; i < 32; i++)
            places[period][i] = static_cast<std::uint8_t>(i % period);
    return places;
}

alignas(32) inline constexpr std::array<std::array<std::uint8_t, 32>, 16> kPatternPlaces =
    MakePatternPlaces();

/// Copies as CopyNear does, with the pattern put together in registers. Writes up to 32 bytes more than
/// asked.
[[gnu::target("ssse3")]] inline void CopyNearSsse3(std::uint8_t* to, std::size_t distance,
                                                   std::size_t length) {
    const auto* const places = reinterpret_cast<const __m128i*>(kPatternPlaces[distance].data());
    const __m128i recent = _mm_loadu_si128(reinterpret_cast<const __m128i*>(to - distance));
    const __m128i first = _mm_shuffle_epi8(recent, _mm_load_si128(places));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), first);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 16),
                     _mm_shuffle_epi8(recent, _mm_load_si128(places + 1)));
    if (length <= 32) [[likely]]
        return;
    // As many whole patterns at once as fit in sixteen bytes.
    const std::size_t step = 16 - 16 % distance;
    for (std::uint8_t* at = to + step; at < to + length; at += step)
        _mm_storeu_si128(reinterpret_cast<__m128i*>(at), first);
}

} // namespace codec

#endif
