#pragma once

#include "base/LittleEndian.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace rar {

/// Takes numbers and runs of bytes off the front of a record. What is not there any more reads as zeros or as
/// nothing, and is noted.
class ByteTaker {
  public:
    explicit ByteTaker(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    /// Whether all that was taken was there.
    bool Good() const { return good_; }

    std::span<const std::uint8_t> Rest() const { return rest_; }

    std::span<const std::uint8_t> Take(std::uint64_t count) {
        if (count > rest_.size()) {
            good_ = false;
            rest_ = {};
            return {};
        }
        const auto taken = rest_.first(static_cast<std::size_t>(count));
        rest_ = rest_.subspan(taken.size());
        return taken;
    }

    std::uint8_t Take8() { return TakeNumber<std::uint8_t>(); }

    std::uint16_t Take16() { return TakeNumber<std::uint16_t>(); }

    std::uint32_t Take32() { return TakeNumber<std::uint32_t>(); }

    std::uint64_t Take64() { return TakeNumber<std::uint64_t>(); }

    /// A number of variable length, at most ten bytes.
    std::uint64_t TakeVariable() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 70; shift += 7) {
            const std::uint64_t byte = Take8();
            // The tenth byte has room for one bit.
            if (shift == 63 && byte > 1)
                break;
            value |= (byte & 0x7F) << shift;
            if (byte < 0x80)
                return value;
        }
        good_ = false;
        return 0;
    }

  private:
    template <typename Number>
    Number TakeNumber() {
        const auto bytes = Take(sizeof(Number));
        return bytes.empty() ? Number{0} : base::LoadLittle<Number>(bytes.data());
    }

    std::span<const std::uint8_t> rest_;
    bool good_ = true;
};

} // namespace rar
