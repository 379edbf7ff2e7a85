#pragma once

#include "app/Messages.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace fakes {

/// The implementation of messages for tests. It keeps every message and prompt, and returns the answers that
/// the test has given it beforehand. Its constructor puts it in use and its destructor puts back the one
/// before.
class RecordingMessages : public app::MessageDoor {
  public:
    /// A prompt as it was put.
    struct Prompt {
        std::string prompt;
        std::string caption;
        bool hidden = false;
    };

    RecordingMessages() : before_(app::SetMessages(this)) {}

    ~RecordingMessages() override { app::SetMessages(before_); }

    RecordingMessages(const RecordingMessages&) = delete;
    RecordingMessages& operator=(const RecordingMessages&) = delete;

    // What happened, in order.
    std::vector<app::Message> shown; ///< every message, those that offer the rest included
    std::vector<Prompt> asked;

    // What to answer, in order. Without one left: Yes to a question, OK to the rest, no to "the rest at
    // once", and a prompt is cancelled.
    std::deque<int> answers;
    std::deque<bool> restAnswers;
    std::deque<std::optional<std::string>> replies;

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

    app::MessageDoor* before_;
};

} // namespace fakes
