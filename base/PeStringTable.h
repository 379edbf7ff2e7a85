#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace base {

/// The string table (resource type 6) of a 32- or 64-bit PE image.
class PeStringTable {
  public:
    /// Reads the directory of the table. Returns nothing when `image` is no PE image or has no string table,
    /// or when its headers or the upper levels of its resource directory are damaged. A single damaged block
    /// is left out.
    static std::optional<PeStringTable> Read(std::string image);

    /// The string with this id as UTF-8; lone surrogates become U+FFFD. Empty when there is none, or when its
    /// block ends before it.
    std::string Find(std::uint32_t id) const;

  private:
    struct Block {
        std::size_t offset;
        std::size_t size;
    };

    std::string image_;
    std::map<std::uint32_t, Block> blocks_; ///< by block number: id / 16 + 1
};

} // namespace base
