#pragma once
// Test helper: dialogs answered by the test instead of a person. Every request, question and
// message is recorded; file dialogs take their answers, in order, from Answers (cancel when none
// is left), questions from QuestionAnswers (OK when none is left).

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace tsaw::testing {

class FakeDialogs final : public platform::Dialogs {
 public:
  std::deque<std::optional<std::string>> Answers;
  std::vector<platform::TFileDialogRequest> Requests;
  std::vector<std::string> Messages;
  std::vector<platform::TMessageKind> MessageKinds;  // one per message
  std::deque<platform::TAnswer> QuestionAnswers;
  std::vector<std::string> Questions;
  std::function<void()> OnQuestion;  // runs while a question is open (what the user sees then)

  std::optional<std::string> AskOpenFile(const platform::TFileDialogRequest& request) override {
    Requests.push_back(request);
    if (Answers.empty()) return std::nullopt;
    std::optional<std::string> answer = Answers.front();
    Answers.pop_front();
    return answer;
  }
  std::optional<std::string> AskSaveFile(const platform::TFileDialogRequest& request) override {
    return AskOpenFile(request);
  }
  platform::TAnswer AskOkAbort(std::string_view question) override {
    Questions.emplace_back(question);
    if (OnQuestion) OnQuestion();
    if (QuestionAnswers.empty()) return platform::TAnswer::Ok;
    const platform::TAnswer answer = QuestionAnswers.front();
    QuestionAnswers.pop_front();
    return answer;
  }
  void ShowMessage(platform::TMessageKind kind, std::string_view message) override {
    Messages.emplace_back(message);
    MessageKinds.push_back(kind);
  }
};

}  // namespace tsaw::testing
