#pragma once
// The Template Selection page without widgets: the tree of folders and templates found under the
// templates root, its counters and summary line, the selection with its details, validation panel
// and advice, and the application of the selected template's defaults to the wizard state.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/wizard.h"
#include "templates/template_info.h"

namespace tsaw {

// One node of the tree; the catalogue owns every node.
struct TCatalogueNode {
  std::string Caption;
  TCatalogueNode* Parent = nullptr;  // nullptr for the invisible root
  std::vector<std::unique_ptr<TCatalogueNode>> Children;
  TTemplateInfo* Record = nullptr;  // owned by the catalogue's record list
  bool Expanded = false;
};

// What the details and validation panels show for the selected record.
struct TSelectionView {
  std::string Prefix;
  std::string Author;
  std::string Purpose;
  std::string Description;
  std::string Caption;    // validation panel: "", "Error" or "Template is ok"
  std::string ErrorName;  // the error kind's name, or empty
  std::string Message;    // the record's ErrorMessage
  std::string Advice;     // advice text A, B or C
};

enum class TTreeAction { Refresh = 0, CollapseAll = 1, ExpandAll = 2 };

// The catalogue page's model. Holds a reference to the wizard state it writes to; the state must
// outlive it. Symbolic links to folders are not followed (a link loop cannot hang the scan and the
// scan never leaves the templates root); the root itself may be a link.
class TCatalogue {
 public:
  explicit TCatalogue(TWizard& wizard);

  // Resets the four counters, scans the folder `root` and updates the summary line. Unreadable
  // folders contribute nothing; a missing root gives an empty tree.
  void Scan_for_Templates(const std::string& root);
  // Frees all records and rebuilds the tree from wizard.TemplatesFolder, sorted by caption.
  void Refresh_Tree();
  // Links each record to the node that now shows it (matched by PartialPath).
  void Fix_Nodes();
  // The first node, in tree order, whose record's PartialPath equals `path`; nullptr if none.
  TCatalogueNode* Find_Node(std::string_view path) const;
  // Refreshes, collapses or expands the tree and keeps the selection (by path) selected and
  // visible. A vanished selection leaves the wizard with no selected record. Reports validity.
  void Do_And_Restore_Selection(TTreeAction action);
  // Frees all records and empties the list.
  void CleanUp_Templates();
  // Rebuilds the summary line from the counters.
  void Update_Count();
  // Selection handling: fills the panels, applies the defaults when a new template is chosen,
  // and reports the page's validity (also returned). Ignored (returns the current validity)
  // while the tree is being updated or when called from within itself.
  bool TreeView_OnChange(TCatalogueNode* node);
  // Sizes every plug-in variable's sub-items to the selected template's PluginCount.
  void Reallocate_SubArrays();

  // Page creation: builds the tree keeping the wizard's selection, and, with an active Job whose
  // values are not applied yet, selects the Job's template and applies the Job's values once.
  // Returns the page's validity.
  bool Open();
  // The user selects `node` (nullptr: no node); runs the change handler unless it is detached.
  bool Select(TCatalogueNode* node);
  // Valid exactly when a record is selected and it is a valid template.
  bool PageValid() const;

  const TCatalogueNode& Root() const { return root_; }
  TCatalogueNode* Selected() const { return selected_; }
  const TSelectionView& View() const { return view_; }
  const std::string& Summary() const { return summary_; }
  int FolderCount() const { return folders_; }
  int TemplateCount() const { return templates_; }
  int GoodCount() const { return good_; }
  int BadCount() const { return bad_; }

  // Called between directory entries so that a window can process pending events.
  std::function<void()> Pump;

 private:
  int ScanFolder(const std::string& folder_path, TCatalogueNode& parent);
  TCatalogueNode& ChildFor(TCatalogueNode& parent, const std::string& name);
  void AddFolder(const std::string& folder_path, const std::string& name, TCatalogueNode& parent,
                 int& found);
  std::shared_ptr<TTemplateInfo> RecordOf(const TCatalogueNode* node) const;
  void ShowRecord(const TTemplateInfo* record);
  bool ReportValidity();

  TWizard& wizard_;
  TCatalogueNode root_;
  std::vector<std::shared_ptr<TTemplateInfo>> records_;
  TCatalogueNode* selected_ = nullptr;
  TSelectionView view_;
  std::string summary_;
  int folders_ = 0;
  int templates_ = 0;
  int good_ = 0;
  int bad_ = 0;
  bool handler_attached_ = true;
  bool in_change_ = false;
};

}  // namespace tsaw
