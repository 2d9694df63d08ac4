#include "templates/catalogue.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>
#include <unordered_map>

#include "model/format.h"
#include "model/variables.h"
#include "platform/runtime_text.h"
#include "platform/debug_log.h"
#include "templates/defaults.h"

namespace tsaw {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUnit = "TSaW_frmTemplates.TfrmTemplates.";
constexpr const char* kAdviceIntro =
    "Select a valid template which will be used for the rest of the process.\r\n\r\n"
    "Bad templates (marked with a red icon) can be inspected for the especific error in the "
    "Validation tab below. You won't be able to step forward until a valid template is selected."
    "\r\n\r\n";
constexpr const char* kAdviceFolderTail = "Current selection is a folder, not a template.";
constexpr const char* kAdviceBadTail = "The template selected is invalid!";
constexpr const char* kAdviceGood =
    "Ok, you have selected a valid template. Now you can go forward and set your choices for the "
    "creation of the project set.\r\n\r\n"
    "In the next steps you'll be presented with a number of options; some provided by the wizard "
    "itself and others by the template definitions.";

void SortByCaption(TCatalogueNode& node) {
  std::stable_sort(node.Children.begin(), node.Children.end(), [](const auto& a, const auto& b) {
    const std::string la = platform::LowerAscii(a->Caption), lb = platform::LowerAscii(b->Caption);
    return la != lb ? la < lb : a->Caption < b->Caption;
  });
  for (auto& child : node.Children) SortByCaption(*child);
}

void SetExpanded(TCatalogueNode& node, bool expanded) {
  for (auto& child : node.Children) {
    child->Expanded = expanded;
    SetExpanded(*child, expanded);
  }
}

// Visits every node below `node` in tree order (depth first, children in order).
template <typename Visit>
void ForEachNode(const TCatalogueNode& node, Visit&& visit) {
  for (const auto& child : node.Children) {
    visit(*child);
    ForEachNode(*child, visit);
  }
}

}  // namespace

TCatalogue::TCatalogue(TWizard& wizard) : wizard_(wizard) {}

void TCatalogue::Scan_for_Templates(const std::string& root) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Scan_for_Templates");
  folders_ = templates_ = good_ = bad_ = 0;
  // Paths are built by appending names, so the root needs its separator.
  ScanFolder(root.empty() || root.back() == '/' ? root : root + "/", root_);
  Update_Count();
}

int TCatalogue::ScanFolder(const std::string& folder_path, TCatalogueNode& parent) {
  int found = 0;
  std::error_code ec;
  for (fs::directory_iterator it(folder_path, ec), end; !ec && it != end; it.increment(ec)) {
    if (Pump) Pump();
    const std::string name = it->path().filename().string();
    if (name.empty() || name.front() == '.') continue;
    std::error_code status_ec;
    // Links are not followed: a link to an ancestor would never end, and one to a folder
    // elsewhere would read outside the templates root.
    if (it->is_symlink(status_ec) || !it->is_directory(status_ec)) continue;
    AddFolder(folder_path, name, parent, found);
  }
  if (ec) platform::DebugLine("  Cannot read folder '" + folder_path + "': " + ec.message());
  return found;
}

void TCatalogue::AddFolder(const std::string& folder_path, const std::string& name,
                           TCatalogueNode& parent, int& found) {
  TCatalogueNode& node = ChildFor(parent, name);
  auto info = Alloc_Info(&node);
  node.Record = info.get();
  records_.push_back(info);
  info->IsFolder = true;
  info->FolderName = name;
  info->FolderPath = folder_path + name + "/";
  info->IniFile = info->FolderPath + "Template.ini";
  info->PartialPath = folder_path + name;
  std::error_code ec;
  if (fs::is_regular_file(info->IniFile, ec)) {
    info->IsTemplate = true;
    info->IsFolder = false;
    ++found;
    ++templates_;
    ++(Validate(*info) ? good_ : bad_);
  } else {
    ++folders_;
    const int below = ScanFolder(info->FolderPath, node);
    info->TemplateCount += below;
    found += below;
  }
}

TCatalogueNode& TCatalogue::ChildFor(TCatalogueNode& parent, const std::string& name) {
  const std::string lowered = platform::LowerAscii(name);
  for (auto& child : parent.Children) {
    if (platform::LowerAscii(child->Caption) == lowered) return *child;
  }
  auto node = std::make_unique<TCatalogueNode>();
  node->Caption = name;
  node->Parent = &parent;
  parent.Children.push_back(std::move(node));
  return *parent.Children.back();
}

void TCatalogue::Refresh_Tree() {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Refresh_Tree");
  CleanUp_Templates();
  root_.Children.clear();
  selected_ = nullptr;
  Scan_for_Templates(wizard_.TemplatesFolder);
  SortByCaption(root_);
  Fix_Nodes();
  ForEachNode(root_, [](TCatalogueNode& node) {
    if (node.Record && node.Record->TemplateCount > 0) {
      node.Caption += " (" + FormatCount(node.Record->TemplateCount) + ")";
    }
  });
}

void TCatalogue::Fix_Nodes() {
  std::unordered_map<std::string_view, TTemplateInfo*> by_path;
  for (const auto& record : records_) by_path.emplace(record->PartialPath, record.get());
  ForEachNode(root_, [&by_path](TCatalogueNode& node) {
    if (!node.Record) return;
    if (auto it = by_path.find(node.Record->PartialPath); it != by_path.end()) {
      it->second->Node = &node;
    }
  });
}

TCatalogueNode* TCatalogue::Find_Node(std::string_view path) const {
  if (records_.empty()) return nullptr;
  TCatalogueNode* found = nullptr;
  ForEachNode(root_, [&](TCatalogueNode& node) {
    if (!found && node.Record && node.Record->PartialPath == path) found = &node;
  });
  return found;
}

void TCatalogue::Do_And_Restore_Selection(TTreeAction action) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Do_And_Restore_Selection");
  handler_attached_ = false;
  std::string path = wizard_.SelectedTemplatePath;
  if (path.empty() && selected_ && selected_->Record) path = selected_->Record->PartialPath;
  const std::shared_ptr<TTemplateInfo> previous = wizard_.SelectedTemplate;

  if (action == TTreeAction::Refresh) Refresh_Tree();
  if (action != TTreeAction::Refresh) SetExpanded(root_, action == TTreeAction::ExpandAll);

  wizard_.SelectedTemplate = nullptr;
  if (TCatalogueNode* node = path.empty() ? nullptr : Find_Node(path)) {
    wizard_.SelectedTemplate = RecordOf(node);
    wizard_.SelectedTemplatePath = node->Record->PartialPath;
    // A rebuilt record starts without the marks that the applied defaults set; the defaults are
    // not applied again for the same template, so the marks move over.
    if (previous && previous != wizard_.SelectedTemplate &&
        previous->PartialPath == wizard_.SelectedTemplatePath) {
      wizard_.SelectedTemplate->ReadOnly = previous->ReadOnly;
    }
    selected_ = node;
  }
  for (TCatalogueNode* up = selected_ ? selected_->Parent : nullptr; up; up = up->Parent) {
    up->Expanded = true;
  }
  handler_attached_ = true;
  ShowRecord(wizard_.SelectedTemplate.get());
  ReportValidity();
}

void TCatalogue::CleanUp_Templates() { records_.clear(); }

void TCatalogue::Update_Count() {
  const std::string good_bad =
      bad_ > 0 ? " (" + FormatCount(good_) + " good and " + FormatCount(bad_) + " bad)" : "";
  summary_ = FormatCount(templates_) + " Template" + (templates_ == 1 ? "" : "s") + good_bad +
             " in " + FormatCount(folders_) + " Folder" + (folders_ == 1 ? "" : "s") + ":";
}

bool TCatalogue::TreeView_OnChange(TCatalogueNode* node) {
  if (!handler_attached_ || in_change_) return PageValid();
  in_change_ = true;
  int step = 10;
  try {
    if (node && node->Record) {
      step = 20;
      wizard_.SelectedTemplate = RecordOf(node);
      wizard_.SelectedTemplatePath = node->Record->PartialPath;
      step = 30;
      ShowRecord(node->Record);
      step = 40;
      if (wizard_.SelectedTemplatePath != wizard_.LastAppliedTemplatePath && node->Record->IsTemplate) {
        wizard_.LastAppliedTemplatePath = wizard_.SelectedTemplatePath;
        Reallocate_SubArrays();
        Apply_Internal_Default_Values(wizard_);
        Apply_Config_Default_Values(wizard_);
        Apply_Template_Values(wizard_);
        Update_Wizard_Variables(wizard_);
      }
      step = 50;
      ReportValidity();
    }
  } catch (const std::exception& error) {
    platform::DebugLine(platform::ExceptionLine(std::string(kUnit) + "TreeView_OnChange", step, error.what()));
  }
  in_change_ = false;
  return PageValid();
}

void TCatalogue::Reallocate_SubArrays() {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.Reallocate_SubArrays");
  const TTemplateInfo* info = wizard_.SelectedTemplate.get();
  if (!info || !info->IsTemplate) return;
  platform::DebugLine("Clearing plugin sub-array items..");
  Clear_Pin_SubArrays(wizard_);
  platform::DebugLine(std::string("IsTemplate: ") + (info->IsTemplate ? "True" : "False"));
  platform::DebugLine("Template: '" + info->PartialPath + "'");
  platform::DebugLine("Allocating plugin sub-array items..");
  const uint16_t count = info->PluginCount;
  for (uint16_t v = 1; v <= LastSearchedVar(wizard_); ++v) {
    if (wizard_.Variables[v].IsPluginArray) ResizePinSubArray(wizard_.Variables[v], count);
  }
  // The look-up's bound on sub-array entries must follow the template's plug-in count.
  if (!wizard_.RunData) wizard_.RunData = std::make_unique<TRunData>();
  wizard_.RunData->PluginCount = count;
}

bool TCatalogue::Open() {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.FormCreate");
  Do_And_Restore_Selection(TTreeAction::Refresh);
  if (!wizard_.ActiveJobFile.empty() && !wizard_.JobValuesApplied) {
    TreeView_OnChange(selected_);
    Apply_Job_Default_Values(wizard_);
    wizard_.JobValuesApplied = true;
  }
  return ReportValidity();
}

bool TCatalogue::Select(TCatalogueNode* node) {
  selected_ = node;
  return TreeView_OnChange(node);
}

bool TCatalogue::PageValid() const {
  return wizard_.SelectedTemplate && wizard_.SelectedTemplate->IsTemplate &&
         wizard_.SelectedTemplate->IsValid;
}

std::shared_ptr<TTemplateInfo> TCatalogue::RecordOf(const TCatalogueNode* node) const {
  for (const auto& record : records_) {
    if (record.get() == node->Record) return record;
  }
  return nullptr;
}

void TCatalogue::ShowRecord(const TTemplateInfo* record) {
  view_ = TSelectionView{};
  if (!record) return;
  view_.Prefix = record->Prefix;
  view_.Author = record->Author;
  view_.Purpose = record->Purpose;
  view_.Description = record->Description;
  view_.Message = record->ErrorMessage;
  if (!record->IsTemplate) {
    view_.Advice = std::string(kAdviceIntro) + kAdviceFolderTail;
  } else if (record->ErrorKind != errUndefined) {
    view_.Caption = "Error";
    view_.ErrorName = kTemplateErrorNames[record->ErrorKind];
    view_.Advice = std::string(kAdviceIntro) + kAdviceBadTail;
  } else {
    view_.Caption = "Template is ok";
    view_.Advice = kAdviceGood;
  }
}

bool TCatalogue::ReportValidity() {
  const bool valid = PageValid();
  if (wizard_.RefreshStepButtons) wizard_.RefreshStepButtons(valid);
  return valid;
}

}  // namespace tsaw
