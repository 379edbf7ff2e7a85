#pragma once

#include "JsonWriter.h"
#include "app/Messages.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tools {

/// Keeps the ids of the messages of one run and returns OK for each. A prompt gets the given password, or is
/// cancelled when there is none. After a thousand reports the rest of a kind is left out at once, so that the
/// list cannot grow without end.
class ProbeMessages final : public app::MessageDoor {
  public:
    explicit ProbeMessages(std::optional<std::string> password) : password_(std::move(password)) {}

    /// Writes the ids as the value "messages".
    void Write(JsonWriter& json) const;

    int Show(const app::Message& message) override;
    bool ShowOfferingRest(const app::Message& message) override;
    std::optional<std::string> Ask(const std::string& prompt, const std::string& caption,
                                   bool hidden) override;

  private:
    std::optional<std::string> password_;
    std::vector<std::uint32_t> ids_;
};

} // namespace tools
