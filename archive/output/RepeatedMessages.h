#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace output {

/// The messages of one operation that may meet the same fault very often. The first two reports of a text are
/// plain message boxes. From the third on, the box also offers to leave out the rest. Reports that are left
/// out are counted, and one last message tells how many there were.
class RepeatedMessages {
  public:
    /// Reports language text `id` with the stop icon, under the title text `titleId`; `entry` is the name put
    /// for "%entry" in it, `suffix` follows the text.
    void Report(std::uint32_t id, std::uint32_t titleId, std::string_view entry = {},
                std::string_view suffix = {});

    /// True once the user has asked for the rest of `id` at once: reports are only counted from then on.
    bool IsSilent(std::uint32_t id) const;

    /// Tells what was only counted, once per text, and starts anew.
    void Finish();

  private:
    struct Kind {
        std::uint32_t id;
        std::uint32_t titleId;
        std::uint64_t shown = 0;
        std::uint64_t counted = 0;
        bool silent = false;
        // Of those that were only counted.
        std::string lastEntry{};
        std::string lastSuffix{};
    };

    std::vector<Kind> kinds_;
};

} // namespace output
