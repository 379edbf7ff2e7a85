#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace codec {

/// Decryption of the traditional encryption of the ZIP application note (section 6.1).
class Cls_Encrypt {
  public:
    /// Sets the keys from the password and decrypts the first 12 bytes of `data`, the encryption header, in
    /// place. `password` is UTF-8; the bytes that count are those of its characters in the ANSI code page.
    /// `data` must hold at least 12 bytes.
    void ZipPrepareKey(std::span<std::uint8_t> data, std::string_view password);

    /// Decrypts `data` in place. The keys go on from where the last call left them.
    void ZipDecryptArray(std::span<std::uint8_t> data);

  private:
    void UpdateKeys(std::uint8_t byte);

    std::uint32_t key0_ = 0;
    std::uint32_t key1_ = 0;
    std::uint32_t key2_ = 0;
};

} // namespace codec
