// The answers of tests: given in order, and a question that was not expected fails.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "ui/answerer.h"

namespace quorvelant {

class ScriptedAnswers : public Answerer {
 public:
  bool Ask(std::string_view title, std::string_view text, std::string_view yes,
           std::string_view no) override {
    Questions.push_back({std::string(title), std::string(text)});
    Verbs = {std::string(yes), std::string(no)};
    return Next(Yes, title, text).value_or(false);
  }
  bool AskToDestroy(std::string_view title, std::string_view text, std::string_view yes,
                    std::string_view no) override {
    ++Harms;
    return Ask(title, text, yes, no);
  }
  std::optional<bool> AskOrStay(std::string_view title, std::string_view text, std::string_view yes,
                                std::string_view no) override {
    Questions.push_back({std::string(title), std::string(text)});
    Verbs = {std::string(yes), std::string(no)};
    return Next(Yes, title, text);
  }
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override {
    Questions.push_back({std::string(title), std::string(text)});
    Proposal = proposal;
    return Next(Texts, title, text).value_or(std::nullopt);
  }
  std::optional<std::size_t> Choose(std::string_view title, std::string_view text,
                                    const std::vector<std::string>& choices) override {
    Questions.push_back({std::string(title), std::string(text)});
    Choices = choices;
    return Next(Chosen, title, text).value_or(std::nullopt);
  }
  std::vector<std::string> FilesToOpen(std::string_view title, const std::vector<FileFilter>&,
                                       bool) override {
    return Next(Files, title, "files").value_or(std::vector<std::string>());
  }
  std::optional<std::string> FileToSave(std::string_view title, std::string_view proposal,
                                        const std::vector<FileFilter>&) override {
    Proposal = proposal;
    return Next(Saves, title, "file to save").value_or(std::nullopt);
  }
  std::optional<std::string> FolderToUse(std::string_view title, std::string_view) override {
    return Next(Folders, title, "folder").value_or(std::nullopt);
  }

  struct Question {
    std::string Title;
    std::string Text;
  };
  // Taken in order.
  std::deque<bool> Yes;
  std::deque<std::optional<std::string>> Texts;
  std::deque<std::optional<std::size_t>> Chosen;
  std::deque<std::vector<std::string>> Files;
  std::deque<std::optional<std::string>> Saves;
  std::deque<std::optional<std::string>> Folders;
  bool IsAway = false;  // a question without an answer is given up, as by closing its box

  // What was asked.
  std::vector<Question> Questions;
  std::vector<std::string> Verbs;  // of the last question
  std::vector<std::string> Choices;
  std::string Proposal;
  int Harms = 0;  // questions whose yes destroys something

 private:
  template <class Answer>
  std::optional<Answer> Next(std::deque<Answer>& answers, std::string_view title,
                             std::string_view text) const {
    if (answers.empty()) {
      EXPECT_TRUE(IsAway) << "unexpected question: " << title << ": " << text;
      return std::nullopt;
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

}  // namespace quorvelant
