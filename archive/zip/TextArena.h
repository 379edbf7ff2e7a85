#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace zip {

/// Keeps many short texts in few allocations; what it hands out stays where it is as long as the arena lives.
class TextArena {
  public:
    std::string_view Keep(std::string_view text);

  private:
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t left_ = 0;
    char* next_ = nullptr;
};

} // namespace zip
