#pragma once
// Test helper: dialogs answered by the test instead of a person. Every request and message is
// recorded; open-file dialogs take their answers, in order, from Answers (cancel when none is left).

#include <deque>
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

  std::optional<std::string> AskOpenFile(const platform::TFileDialogRequest& request) override {
    Requests.push_back(request);
    if (Answers.empty()) return std::nullopt;
    std::optional<std::string> answer = Answers.front();
    Answers.pop_front();
    return answer;
  }
  void ShowMessage(std::string_view message) override { Messages.emplace_back(message); }
};

}  // namespace tsaw::testing
