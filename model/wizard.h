#pragma once
// The wizard state: one TWizard holds every answer and every computed value. Pages write into it,
// the creation run reads it, Jobs and configurations save and load it. It is passed by reference;
// nothing reaches it through a global.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tsaw {

// Numbers of the 47 fixed variables; the order is the search order of the expansion.
enum TVarIdx : uint16_t {
  viUndefined = 0,
  viTsaVersion = 1,
  viTsawDeepName,
  viTsawVersion,
  viCreationDate,
  viCreationTime,
  viCreationYear,
  viPathDelphi,
  viPathTsaProjects,
  viPathTsaRoot,
  viPathWindowsSystem,
  viPathWindows,
  viPathProgramFiles,
  viTemplatePrefix,
  viHostSourcePrefix,
  viPluginSourcePrefix,
  viTargetLanguage,
  viTargetPlatform,
  viTarget,
  viPluginCount,
  viPluginIndex,
  viProjectsPrefix,
  viProjectGroup,
  viProductName,
  viCompanyName,
  viAuthor,
  viCopyright,
  viManagerPluginExtension,
  viManagerPluginFolder,
  viManagerServiceFolder,
  viHostProjectName,
  viManagerVersion,
  viManagerAuthor,
  viManagerDeepName,
  viManagerCopyright,
  viPluginProjectName,
  viPluginVersion,
  viPluginAuthor,
  viPluginDeepName,
  viPluginCopyright,
  viPluginDescription,
  viLoggingUseTLG,
  viLoggingLogComments,
  viLoggingLogInitFinit,
  viLoggingLogPinCreation,
  viLoggingLogFunctionResults,
  viCosmeticCommentedHeaders,
  viOutputBaseFolder,
};

inline constexpr uint16_t kFixedVariableCount = 47;
// The variable count starts one above the last fixed number; searches are bounded by the table.
inline constexpr uint16_t kInitialVariableCount = 48;

// The fixed variable names, index 0 empty.
extern const std::array<const char*, kFixedVariableCount + 1> kFixedVariableNames;

// One wizard variable.
struct TVariableItem {
  std::string Name;          // as written between '#' marks, e.g. "Product.Name"
  std::string Token;         // identifier token: "vr" + Name with '.' turned into '_'
  std::string Title;         // custom and look-up variables
  std::string Kind;          // look-up variables
  std::string Hint;          // look-up variables
  std::string DefaultValue;  // what the default sources set
  std::string Value;         // what #Name# expands to
  std::string IdfValue;      // what the identifier token expands to
  bool UserDefined = false;
  bool IsPluginArray = false;
  bool IsLookup = false;
  uint16_t LookedUpVar = 0;  // on a look-up variable: the variable it offers values for
  uint16_t LookupVar = 0;    // on a looked-up variable: its look-up variable
  int32_t ListCount = 0;
  std::string BackupValue;
  // One item per plug-in, used only when IsPluginArray; element 0 stays empty.
  std::vector<std::unique_ptr<TVariableItem>> Pins;
};

// One template directive constant: "dd" + suffix, and the variable it mirrors.
struct TDirectiveItem {
  uint16_t VarIdx = 0;
  std::string Name;
};
using TDirectives = std::vector<TDirectiveItem>;
inline constexpr uint16_t ddUndef = 0;

// The result of one variable look-up.
struct TFindVarResult {
  bool Found = false;
  uint16_t VarIdx = 0;
  std::string Token;  // the exact text that was found
  int Position = 0;   // 1-based position of Token in the searched text
  int PluginIndex = 0;  // the sub-array entry that matched, 0 when the variable's own token did
};

// The separately allocated block of run data.
struct TRunData {
  uint16_t PluginCount = 0;  // upper bound of the plug-in sub-arrays during look-ups
};

// Per-target choice flags (index 1..18 of the target catalogue).
struct TTargetChoice {
  bool Allowed = false;
  bool Required = false;
  bool PreSelected = false;
  bool Checked = false;
  int InstallState = 0;  // 2 or 3: not selectable on this machine
};

// The numbers of the run directives; all ddUndef until a run sets them up.
struct TRunDirectiveNumbers {
  uint16_t PluginCount = ddUndef;
  uint16_t PluginIndex = ddUndef;
  uint16_t TargetLanguage = ddUndef;
  uint16_t TargetPlatform = ddUndef;
  uint16_t Target = ddUndef;
  uint16_t PluginExtension = ddUndef;
  uint16_t Unused = ddUndef;
  uint16_t PluginExtensionOther = ddUndef;
};

struct TTemplateInfo;  // the selected template's record, defined by the template catalogue

struct TWizard {
  // Folders, each with a trailing separator, set at start-up.
  std::string WizardFolder;
  std::string JobsFolder;
  std::string TemplatesFolder;

  std::unique_ptr<TRunData> RunData;
  uint16_t PluginIndex = 0;  // the current plug-in
  // Pages report their validity through this; the frame binds it.
  std::function<void(bool page_valid)> RefreshStepButtons;
  // Told each time a "Default Values" source sets variable `var_idx` (plug-in `plugin`'s item, 0
  // for the variable itself), or, with `var_idx` 0, the flags of target `plugin`. Unset unless
  // someone asks where the answers came from.
  std::function<void(uint16_t var_idx, uint16_t plugin)> DefaultApplied;

  std::vector<TVariableItem> Variables;  // index 0 is the undefined entry
  TDirectives Directives;                // index 0 is ddUndef
  uint16_t VarCount = kInitialVariableCount;  // upper bound of searches over Variables
  uint16_t DirectivesHigh = 0;                // highest directive number handed out
  uint16_t LastFixedDirective = 0;
  TRunDirectiveNumbers RunDirectives;

  // Template selection and Jobs.
  std::shared_ptr<TTemplateInfo> SelectedTemplate;
  std::string SelectedTemplatePath;     // a PartialPath
  std::string LastAppliedTemplatePath;  // whose defaults were applied last
  std::string ActiveJobFile;            // empty: no Job active
  bool JobValuesApplied = false;

  // Configuration.
  std::string ConfigFile;
  int ShellBrowserMode = 1;

  std::array<TTargetChoice, 19> Targets{};  // index 0 unused
  uint16_t CurrentLanguage = 0;
  uint16_t CurrentTarget = 0;
};

}  // namespace tsaw
