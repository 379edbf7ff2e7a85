#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace zip {

/// Stores many short texts in few allocations. A stored text keeps its address as long as the arena lives.
class TextArena {
  public:
    std::string_view Keep(std::string_view text);

  private:
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t left_ = 0;
    char* next_ = nullptr;
};

} // namespace zip
