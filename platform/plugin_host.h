#pragma once
// The host framework's plug-in interface, as far as the wizard needs it: the plug-in base object
// with its settings, handlers and named commands, the method result, and the host's side of
// loading a plug-in module, registering its object and sending it commands.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tsaw::platform {

class TSharedModule;

// The result codes of the framework's method result; the wizard uses these two.
enum TMethodResultCode { smrOk = 0, smrUnexpectedError = 1 };

// What a handler or command hands back to the host.
struct TMethodResult {
  TMethodResultCode Code = smrUnexpectedError;
  std::string Message;
};

// The framework's instance modes: a single-instance plug-in object exists once per host.
enum class TInstanceMode { MultiInstance = 0, SingleInstance = 1 };

struct TPluginSettings {
  std::string Description;
  std::string DeepName;
  std::string Version;
  TInstanceMode InstanceMode = TInstanceMode::MultiInstance;
};

// One command parameter: the framework's parameters are named, pointer-typed and never null.
struct TCommandParam {
  std::string Name;
  void* Value = nullptr;
};
using TCommandParams = std::vector<TCommandParam>;

// What the host tells a plug-in about the framework before initialising it.
struct THostContext {
  std::string RootPath;   // the framework root folder: what "%RootPath%" expands to
  bool DebugLog = false;  // the host writes the debug log, so the plug-in writes it too
};

// The plug-in base object. A plug-in sets its handlers and declares its commands in its
// constructor; the host attaches its context, then calls Initialize, Execute and Finalize.
class TqrxTsa {
 public:
  using THandler = std::function<void(TqrxTsa& sender, TMethodResult& result)>;
  using TCommandHandler =
      std::function<void(TqrxTsa& sender, const TCommandParams& params, TMethodResult& result)>;

  explicit TqrxTsa(TPluginSettings settings);
  virtual ~TqrxTsa();
  TqrxTsa(const TqrxTsa&) = delete;
  TqrxTsa& operator=(const TqrxTsa&) = delete;

  const TPluginSettings& Settings() const { return settings_; }
  const THostContext& Host() const { return host_; }
  void AttachHost(THostContext context) { host_ = std::move(context); }
  // `text` with every "%RootPath%" replaced by the framework root.
  std::string ExpandFrameworkNames(std::string_view text) const;

  // Run the initialisation or finalisation handler (smrOk when there is none). An exception
  // from the handler gives smrUnexpectedError with the exception's text.
  TMethodResult Initialize();
  TMethodResult Finalize();
  // Runs command `name`. An unknown command, parameters that differ from the declared ones in
  // number or name, or a null parameter give smrUnexpectedError with a message saying which,
  // and the handler is not called. The handler starts from smrUnexpectedError.
  TMethodResult Execute(std::string_view name, const TCommandParams& params);

 protected:
  void SetHandlers(THandler on_initialize, THandler on_finalize);
  void AddCommand(std::string name, std::vector<std::string> param_names, TCommandHandler handler);

 private:
  struct TCommand {
    std::string Name;
    std::vector<std::string> ParamNames;
    TCommandHandler Handler;
  };
  TMethodResult RunHandler(const THandler& handler);

  TPluginSettings settings_;
  THostContext host_;
  THandler on_initialize_;
  THandler on_finalize_;
  std::vector<TCommand> commands_;
};

// The exported entry point every plug-in module provides: it creates the module's plug-in object,
// which the caller owns.
using TRegisterTessera = TqrxTsa* (*)();
inline constexpr const char* kRegisterTesseraSymbol = "RegisterTessera";

// A plug-in module loaded into the host. Destroying it finalises the plug-in object when it was
// initialised, frees the object and unloads the module, in that order.
class TPluginModule {
 public:
  // Loads `file` and calls its RegisterTessera. On failure returns nullptr and stores in `error`
  // what went wrong, naming the file.
  static std::unique_ptr<TPluginModule> Load(const std::string& file, std::string& error);
  ~TPluginModule();
  TPluginModule(const TPluginModule&) = delete;
  TPluginModule& operator=(const TPluginModule&) = delete;

  TqrxTsa& Plugin() { return *plugin_; }
  // Initialises the plug-in object and remembers whether it succeeded.
  TMethodResult Initialize();

 private:
  TPluginModule(std::unique_ptr<TSharedModule> module, std::unique_ptr<TqrxTsa> plugin);

  std::unique_ptr<TSharedModule> module_;
  std::unique_ptr<TqrxTsa> plugin_;
  bool initialized_ = false;
};

}  // namespace tsaw::platform
