#pragma once
// What handing a Project Set to the running IDE needs from the host: the inside-the-IDE test, a
// DDE-like conversation, the registry, finding and raising a window, and modal message boxes.

#include <memory>
#include <string>

namespace tsaw::platform {

// One client conversation with a server's topic. Connect mode is manual: nothing happens
// before OpenLink.
class DdeConversation {
 public:
  virtual ~DdeConversation() = default;
  virtual void SetLink(const std::string& service, const std::string& topic) = 0;
  // The program to start when no server answers.
  virtual void SetServiceApplication(const std::string& executable) = 0;
  // False when no conversation could be opened.
  virtual bool OpenLink() = 0;
  // Sends `macro` and waits for it; false when the server did not carry it out.
  virtual bool ExecuteMacro(const std::string& macro) = 0;
  virtual void CloseLink() = 0;
};

enum class MessageKind { Information, Error };

class Ide {
 public:
  virtual ~Ide() = default;
  // True when the wizard runs inside the IDE.
  virtual bool InsideIde() = 0;
  virtual std::unique_ptr<DdeConversation> NewConversation() = 0;
  // A string value read read-only below HKEY_LOCAL_MACHINE; empty when the key or value is absent.
  virtual std::string ReadMachineRegistry(const std::string& key, const std::string& value) = 0;
  // Finds the top-level window `name`; when found shows it normally, brings it to the front and
  // returns true.
  virtual bool RaiseWindow(const std::string& name) = 0;
  // A modal box with an OK button.
  virtual void ShowMessage(MessageKind kind, const std::string& text) = 0;
};

// The Linux host: never inside the IDE, no DDE server, no registry, no host window; messages go
// to standard error.
std::unique_ptr<Ide> MakeLinuxIde();

}  // namespace tsaw::platform
