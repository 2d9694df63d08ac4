#include "platform/ide.h"

#include <iostream>

namespace tsaw::platform {
namespace {

class NoServerConversation : public DdeConversation {
 public:
  void SetLink(const std::string&, const std::string&) override {}
  void SetServiceApplication(const std::string&) override {}
  bool OpenLink() override { return false; }
  bool ExecuteMacro(const std::string&) override { return false; }
  void CloseLink() override {}
};

class LinuxIde : public Ide {
 public:
  bool InsideIde() override { return false; }
  std::unique_ptr<DdeConversation> NewConversation() override {
    return std::make_unique<NoServerConversation>();
  }
  std::string ReadMachineRegistry(const std::string&, const std::string&) override { return {}; }
  bool RaiseWindow(const std::string&) override { return false; }
  void ShowMessage(MessageKind, const std::string& text) override { std::cerr << text << '\n'; }
};

}  // namespace

std::unique_ptr<Ide> MakeLinuxIde() { return std::make_unique<LinuxIde>(); }

}  // namespace tsaw::platform
