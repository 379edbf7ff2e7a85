#pragma once

#include <iconv.h>
#include <string>
#include <string_view>

namespace platform {

/// The name by which iconv knows a Windows code page.
std::string IconvName(int codePage);

/// An open conversion between two character sets.
class IconvHandle {
  public:
    IconvHandle(const std::string& to, const std::string& from);
    ~IconvHandle();
    IconvHandle(const IconvHandle&) = delete;
    IconvHandle& operator=(const IconvHandle&) = delete;

    /// Whether both character sets are known.
    explicit operator bool() const;

    /// Appends the converted start of `bytes` to `result`; returns how many bytes could be converted.
    std::size_t Convert(std::string_view bytes, std::string& result) const;

  private:
    iconv_t handle_;
};

} // namespace platform
