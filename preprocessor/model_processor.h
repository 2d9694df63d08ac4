#pragma once
// TqrxModelProcessor: evaluates the template directives in the text of one source file against a
// table of "dd" constants. Blocks on a "dd" name are resolved; every other block is an ordinary
// compiler directive of the generated source and is kept whole, its contents still processed.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "preprocessor/defines.h"
#include "preprocessor/directive_scanner.h"
#include "preprocessor/preprocessor_error.h"

namespace tsaw {

struct TDirectiveList;
class TMarkerCleanup;

// One open {$IFDEF}/{$IFNDEF} block. Positions are 1-based; the *Close fields hold the position of
// each directive's "}". ElseStart 0 means no {$ELSE} was seen.
struct TDirBlock {
  TDirKind Kind = TDirKind::None;
  std::string Name;
  std::string IfText, ElseText, EndifText;
  std::int64_t IfStart = 0, ElseStart = 0, EndifStart = 0;
  std::int64_t IfClose = 0, ElseClose = 0, EndifClose = 0;
  std::int64_t Level = 0;  // 1 for a block opened while none was open
  TDirBlock* Parent = nullptr;
  bool Cond = false;
  bool IsDd = false;  // Name begins with the lower-case letters "dd"
};

// Called with true before processing and false afterwards (also after a failure); a window shows
// and restores its busy cursor here.
using TBusyCursorHook = std::function<void(bool busy)>;

// One processor serves one creation run: fill Defines once, then per file set Input, call Execute
// and take Output. DEFINE and UNDEF change Defines in place, so they carry over to later files.
// Not re-entrant.
class TqrxModelProcessor {
 public:
  explicit TqrxModelProcessor(TBusyCursorHook busy_cursor = {});
  ~TqrxModelProcessor();

  // Processes Input (its lines joined with CR LF) into Output. Returns "" on success, or
  // "Property "Input" cannot be empty." when Input has no lines (Output then stays empty). Adds
  // "ddTrue=1" to Defines when it is empty. Throws TPreprocessorError for a text it cannot process.
  std::string Execute();

  // Returns `InputText` with its directives evaluated against `Defines`. With `RemoveMarkers`, the
  // lines left holding only resolved "dd" directives are removed and every line ends in CR LF.
  // Throws TPreprocessorError as Execute does.
  std::string ProcessText(std::string_view InputText, TDefines& Defines, bool RemoveMarkers);

  // Blocks left open by a text without their {$ENDIF} stay here for the processor's life.
  std::vector<std::unique_ptr<TDirBlock>> Blocks;
  TDefines Defines;
  std::vector<std::string> Input;
  std::vector<std::string> Output;

 private:
  // Appends `text` with its blocks resolved to `out`; true when an outermost "dd" block left its
  // markers. Blocks left open join Blocks.
  bool Resolve(std::string_view text, TDefines& defines, std::string& out);

  TBusyCursorHook busy_cursor_;
  // Kept between calls so that a run over many files reuses their memory.
  std::string joined_;
  std::string processed_;
  std::unique_ptr<TDirectiveList> directives_;
  std::unique_ptr<TMarkerCleanup> cleanup_;
};

}  // namespace tsaw
