#include "preprocessor/model_processor.h"

#include "platform/debug_log.h"
#include "platform/runtime_text.h"
#include "preprocessor/block_conditions.h"
#include "preprocessor/block_output.h"
#include "preprocessor/directive_list.h"
#include "preprocessor/marker_cleanup.h"

namespace tsaw {
namespace {

using platform::SplitLines;

// Calls the busy-cursor hook around one Execute, also when it throws.
class BusyCursorScope {
 public:
  explicit BusyCursorScope(const TBusyCursorHook& hook) : hook_(hook) {
    if (hook_) hook_(true);
  }
  ~BusyCursorScope() {
    if (hook_) hook_(false);
  }
  BusyCursorScope(const BusyCursorScope&) = delete;
  BusyCursorScope& operator=(const BusyCursorScope&) = delete;

 private:
  const TBusyCursorHook& hook_;
};

// The record of a block never closed, as it stood when the text ended.
std::unique_ptr<TDirBlock> OpenBlockRecord(std::string_view text, const TDirectiveList& list,
                                           const TDefines& defines, const TListedBlock& listed,
                                           TDirBlock* parent) {
  const TListedDirective& if_dir = list.Directives[listed.If];
  const TDirSpan span = SpanOf(if_dir, text);
  auto block = std::make_unique<TDirBlock>();
  block->Kind = if_dir.Kind;
  block->Name = span.Name(text);
  block->IfText = span.Text(text);
  block->IfStart = static_cast<std::int64_t>(if_dir.Start) + 1;
  block->IfClose = static_cast<std::int64_t>(if_dir.End);
  if (listed.Else != kNoIndex) {
    const TDirSpan else_span = SpanOf(list.Directives[listed.Else], text);
    block->ElseText = else_span.Text(text);
    block->ElseStart = static_cast<std::int64_t>(else_span.Start) + 1;
    block->ElseClose = static_cast<std::int64_t>(else_span.End());
  }
  block->Level = static_cast<std::int64_t>(listed.Depth);
  block->Parent = parent;
  block->IsDd = listed.IsDd;
  block->Cond = ConditionInOrder(list, defines, listed);
  return block;
}

// A constant set anywhere in the text, excluded parts included, ends with its last setting.
void ApplySettings(const TDirectiveList& list, TDefines& defines) {
  for (std::size_t entry = 0; entry < list.SettersOf.size(); ++entry) {
    if (list.SettersOf[entry].empty()) continue;
    defines.SetValueAt(entry, ValueBefore(list, defines, entry, list.Directives.size()));
  }
}

}  // namespace

TqrxModelProcessor::TqrxModelProcessor(TBusyCursorHook busy_cursor)
    : busy_cursor_(std::move(busy_cursor)), directives_(std::make_unique<TDirectiveList>()),
      cleanup_(std::make_unique<TMarkerCleanup>()) {}

TqrxModelProcessor::~TqrxModelProcessor() = default;

bool TqrxModelProcessor::Resolve(std::string_view text, TDefines& defines, std::string& out) {
  if (text.empty()) return false;
  TDirectiveList& list = *directives_;
  ListDirectives(text, defines, list);
  DecideConditions(list, defines);
  const bool markers_used = AppendResolvedText(text, list, out);
  TDirBlock* parent = nullptr;
  for (const std::size_t open : list.LeftOpen) {
    Blocks.push_back(OpenBlockRecord(text, list, defines, list.Blocks[open], parent));
    parent = Blocks.back().get();
  }
  ApplySettings(list, defines);
  return markers_used;
}

std::string TqrxModelProcessor::Execute() {
  platform::ScopedRoutine routine("TSaW_ModelProcessor.TqrxModelProcessor.Execute");
  Output.clear();
  joined_.clear();
  for (const std::string& line : Input) joined_.append(line).append("\r\n");
  if (joined_.empty()) return "Property \"Input\" cannot be empty.";
  if (Defines.Empty()) Defines.Add("ddTrue", "1");
  BusyCursorScope busy(busy_cursor_);
  // Same lines as splitting ProcessText(joined_, Defines, true), without joining them first.
  processed_.clear();
  const bool markers_used = Resolve(joined_, Defines, processed_);
  Output = SplitLines(markers_used ? cleanup_->ToText(processed_) : processed_);
  return {};
}

std::string TqrxModelProcessor::ProcessText(std::string_view InputText, TDefines& Defines,
                                            bool RemoveMarkers) {
  platform::ScopedRoutine routine("TSaW_ModelProcessor.TqrxModelProcessor.ProcessText");
  processed_.clear();
  const bool markers_used = Resolve(InputText, Defines, processed_);
  if (RemoveMarkers && markers_used && !processed_.empty()) return cleanup_->ToText(processed_);
  return processed_;
}

}  // namespace tsaw
