#include "platform/plugin_host.h"

#include <algorithm>
#include <exception>

#include "platform/shared_module.h"

namespace tsaw::platform {

TqrxTsa::TqrxTsa(TPluginSettings settings) : settings_(std::move(settings)) {}

TqrxTsa::~TqrxTsa() = default;

std::string TqrxTsa::ExpandFrameworkNames(std::string_view text) const {
  static constexpr std::string_view kRootPath = "%RootPath%";
  std::string out(text);
  for (size_t at = out.find(kRootPath); at != std::string::npos;
       at = out.find(kRootPath, at + host_.RootPath.size())) {
    out.replace(at, kRootPath.size(), host_.RootPath);
  }
  return out;
}

void TqrxTsa::SetHandlers(THandler on_initialize, THandler on_finalize) {
  on_initialize_ = std::move(on_initialize);
  on_finalize_ = std::move(on_finalize);
}

void TqrxTsa::AddCommand(std::string name, std::vector<std::string> param_names, TCommandHandler handler) {
  commands_.push_back({std::move(name), std::move(param_names), std::move(handler)});
}

TMethodResult TqrxTsa::RunHandler(const THandler& handler) {
  TMethodResult result;
  if (!handler) return {smrOk, {}};
  try {
    handler(*this, result);
  } catch (const std::exception& error) {
    result = {smrUnexpectedError, error.what()};
  }
  return result;
}

TMethodResult TqrxTsa::Initialize() { return RunHandler(on_initialize_); }

TMethodResult TqrxTsa::Finalize() { return RunHandler(on_finalize_); }

TMethodResult TqrxTsa::Execute(std::string_view name, const TCommandParams& params) {
  const auto command =
      std::find_if(commands_.begin(), commands_.end(), [name](const TCommand& c) { return c.Name == name; });
  if (command == commands_.end()) return {smrUnexpectedError, "Unknown command \"" + std::string(name) + "\"."};
  if (params.size() != command->ParamNames.size()) {
    return {smrUnexpectedError, "Command \"" + command->Name + "\" takes " +
                                    std::to_string(command->ParamNames.size()) + " parameter(s), not " +
                                    std::to_string(params.size()) + "."};
  }
  for (size_t i = 0; i < params.size(); ++i) {
    if (params[i].Name != command->ParamNames[i] || params[i].Value == nullptr) {
      return {smrUnexpectedError, "Command \"" + command->Name + "\" needs a non-null parameter \"" +
                                      command->ParamNames[i] + "\" in place " + std::to_string(i + 1) + "."};
    }
  }
  TMethodResult result;
  try {
    command->Handler(*this, params, result);
  } catch (const std::exception& error) {
    result = {smrUnexpectedError, error.what()};
  }
  return result;
}

std::unique_ptr<TPluginModule> TPluginModule::Load(const std::string& file, std::string& error) {
  std::string why;
  auto module = TSharedModule::Open(file, TSharedModule::TUnload::OnClose, why);
  if (!module) {
    error = "Cannot load the plug-in module \"" + file + "\": " + why;
    return nullptr;
  }
  auto entry = reinterpret_cast<TRegisterTessera>(module->Find(kRegisterTesseraSymbol));
  TqrxTsa* plugin = entry ? entry() : nullptr;
  if (!plugin) {
    error = "The plug-in module \"" + file + "\" does not register a plug-in object (" +
            kRegisterTesseraSymbol + ").";
    return nullptr;
  }
  return std::unique_ptr<TPluginModule>(new TPluginModule(std::move(module), std::unique_ptr<TqrxTsa>(plugin)));
}

TPluginModule::TPluginModule(std::unique_ptr<TSharedModule> module, std::unique_ptr<TqrxTsa> plugin)
    : module_(std::move(module)), plugin_(std::move(plugin)) {}

TPluginModule::~TPluginModule() {
  if (initialized_) plugin_->Finalize();
  // The object's code lives in the module: it must be gone before the module is.
  plugin_.reset();
  module_.reset();
}

TMethodResult TPluginModule::Initialize() {
  TMethodResult result = plugin_->Initialize();
  initialized_ = result.Code == smrOk;
  return result;
}

}  // namespace tsaw::platform
