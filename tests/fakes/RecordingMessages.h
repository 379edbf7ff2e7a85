#pragma once

#include "app/Messages.h"
#include "fakes/InUse.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fakes {

/// The implementation of messages for tests. It keeps every message and prompt, and returns the answers that
/// the test has given it beforehand.
class RecordingMessages : public InUse<app::MessageDoor, app::SetMessages> {
  public:
    /// A prompt as it was put.
    struct Prompt {
        std::string prompt;
        std::string caption;
        bool hidden = false;
    };

    // What happened, in order.
    std::vector<app::Message> shown; ///< every message, those that offer the rest included
    std::vector<Prompt> asked;

    // What to answer, in order. Without one left: Yes to a question, OK to the rest, no to "the rest at
    // once", and a prompt is cancelled.
    std::deque<int> answers;
    std::deque<bool> restAnswers;
    std::deque<std::optional<std::string>> replies;

    std::function<void()> onAsk; ///< runs while a prompt is open

    /// Ids of the messages shown, in order; 0 for a text without one.
    std::vector<std::uint32_t> Ids() const {
        std::vector<std::uint32_t> ids(shown.size());
        std::transform(shown.begin(), shown.end(), ids.begin(),
                       [](const app::Message& message) { return message.id; });
        return ids;
    }

    int Show(const app::Message& message) override {
        shown.push_back(message);
        const bool isQuestion = message.flags == app::kMessageQuestion;
        return Next(answers, isQuestion ? app::kAnswerYes : app::kAnswerOk);
    }

    bool ShowOfferingRest(const app::Message& message) override {
        shown.push_back(message);
        return Next(restAnswers, false);
    }

    std::optional<std::string> Ask(const std::string& prompt, const std::string& caption,
                                   bool hidden) override {
        if (onAsk)
            onAsk();
        asked.push_back({prompt, caption, hidden});
        return Next(replies, std::optional<std::string>());
    }

  private:
    template <typename T>
    static T Next(std::deque<T>& queue, T otherwise) {
        if (queue.empty())
            return otherwise;
        T next = std::move(queue.front());
        queue.pop_front();
        return next;
    }
};

} // namespace fakes
