#pragma once

#include "Compare.h"

#include <filesystem>
#include <string>

namespace bench {

/// A folder that is deleted with everything in it when this object is destroyed.
class Workplace {
  public:
    explicit Workplace(const std::filesystem::path& parent) {
        std::string pattern = (parent / "bench-XXXXXX").string();
        Require(::mkdtemp(pattern.data()) != nullptr, "temporary folder in " + parent.string());
        path_ = pattern;
    }

    ~Workplace() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

} // namespace bench
