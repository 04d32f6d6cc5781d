// The user interface of tests: records everything and fails on a question it was not told to expect.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/user_interface.h"

namespace quorvelant {

class RecordingUi : public UserInterface {
 public:
  void Tell(const Message& message) override { Messages.push_back(message); }
  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    Questions.push_back({Severity::Information, std::string(title), std::string(text), {}});
    if (Answers.empty()) {
      EXPECT_TRUE(Unattended) << "unexpected question: " << title << ": " << text;
      return unattended;
    }
    const bool answer = Answers.front();
    Answers.pop_front();
    return answer;
  }
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override {
    Questions.push_back({Severity::Information, std::string(title), std::string(text), {}});
    if (Texts.empty()) {
      return std::string(proposal);
    }
    auto answer = Texts.front();
    Texts.pop_front();
    return answer;
  }
  void Status(std::string_view words) override { StatusWords.emplace_back(words); }
  void Progress(double, double) override {}
  bool StopRequested() override { return StopWhen && StopWhen(); }

  std::vector<Message> Messages;
  std::vector<Message> Questions;
  std::vector<std::string> StatusWords;
  std::deque<bool> Answers;                      // taken in order
  std::deque<std::optional<std::string>> Texts;  // taken in order; the proposal when empty
  bool Unattended = false;                       // take the default of a question without failing
  std::function<bool()> StopWhen;
};

}  // namespace quorvelant
