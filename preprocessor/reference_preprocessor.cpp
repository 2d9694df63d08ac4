#include "preprocessor/reference_preprocessor.h"

#include <algorithm>

#include "platform/find_bytes.h"
#include "platform/runtime_text.h"
#include "preprocessor/directive_list.h"
#include "preprocessor/marker_cleanup.h"

namespace tsaw::reference {
namespace {

using platform::SplitLineViews;
using platform::Trim;

using BlockList = std::vector<std::unique_ptr<TDirBlock>>;

// One processing of one text: the directive loop with its current block, reading position and
// markers-used flag. Parts of outermost blocks are processed by nested passes over views of the
// same `whole` text, which lets errors name the line in it.
class TextPass {
 public:
  TextPass(BlockList& blocks, TDefines& defines, std::string_view whole, std::string_view text,
           int depth, int max_nesting)
      : blocks_(blocks),
        defines_(defines),
        whole_(whole),
        text_(text),
        depth_(depth),
        max_nesting_(max_nesting),
        scanner_(text) {}

  // Appends the processed text to `out`; true when an outermost "dd" block left its markers.
  bool Run(std::string& out);

 private:
  void OnDefine(const TNextDirResult& dir);
  void OnIf(TNextDirResult& dir);
  void OnElse(const TNextDirResult& dir);
  void OnEndif(const TNextDirResult& dir);
  void Resolve(const TDirBlock& block);
  void ProcessPart(std::int64_t after_close, std::int64_t before_start, std::string& out);
  void AppendUpTo(std::int64_t last_pos);
  void RemoveBlock(const TDirBlock* block);
  std::int64_t LineOf(std::int64_t pos) const;

  BlockList& blocks_;
  TDefines& defines_;
  std::string_view whole_;
  std::string_view text_;
  int depth_;
  int max_nesting_;
  TDirScanner scanner_;
  std::string* out_ = nullptr;
  TDirBlock* current_ = nullptr;
  std::int64_t pos_ = 1;
  bool markers_used_ = false;
};

bool TextPass::Run(std::string& out) {
  out_ = &out;
  if (text_.empty()) return false;
  for (;;) {
    TNextDirResult dir = scanner_.Next(pos_);
    switch (dir.Kind) {
      case TDirKind::None:
        out.append(text_.substr(static_cast<std::size_t>(pos_ - 1)));
        return markers_used_;
      case TDirKind::Define:
      case TDirKind::Undef:
        OnDefine(dir);
        break;
      case TDirKind::Ifdef:
      case TDirKind::Ifndef:
        OnIf(dir);
        break;
      case TDirKind::Else:
        OnElse(dir);
        break;
      case TDirKind::Endif:
        OnEndif(dir);
        break;
    }
    pos_ = dir.NextPos;
  }
}

// Appends the characters from the reading position through `last_pos`.
void TextPass::AppendUpTo(std::int64_t last_pos) {
  if (last_pos < pos_) return;
  out_->append(text_.substr(static_cast<std::size_t>(pos_ - 1),
                            static_cast<std::size_t>(last_pos - pos_ + 1)));
}

// DEFINE and UNDEF act wherever they stand, excluded branches included; only names already in the
// table change.
void TextPass::OnDefine(const TNextDirResult& dir) {
  defines_.SetExisting(dir.Name, dir.Kind == TDirKind::Define ? "1" : "0");
  if (!current_) AppendUpTo(dir.NextPos - 1);
}

void TextPass::OnIf(TNextDirResult& dir) {
  auto block = std::make_unique<TDirBlock>();
  block->Kind = dir.Kind;
  block->Name = std::move(dir.Name);
  block->Parent = current_;
  block->Level = current_ ? current_->Level + 1 : 1;
  if (block->Name == "ddTrue") {
    block->Cond = true;
  } else {
    block->Cond = defines_.Value(block->Name) == (dir.Kind == TDirKind::Ifdef ? "1" : "0");
  }
  block->IsDd = block->Name.starts_with("dd");
  block->IfStart = dir.StartPos;
  block->IfClose = dir.NextPos - 1;
  block->IfText = std::move(dir.Text);
  if (block->Level == 1) AppendUpTo(dir.StartPos - 1);
  current_ = block.get();
  blocks_.push_back(std::move(block));
}

void TextPass::OnElse(const TNextDirResult& dir) {
  if (!current_) {
    const std::string_view written =
        text_.substr(static_cast<std::size_t>(dir.StartPos - 1),
                     static_cast<std::size_t>(dir.NextPos - dir.StartPos));
    throw TPreprocessorError(
        LineOf(dir.StartPos),
        "\"" + std::string(written) + "\" has no open {$IFDEF} or {$IFNDEF} block");
  }
  current_->ElseStart = dir.StartPos;
  current_->ElseClose = dir.NextPos - 1;
  current_->ElseText = dir.Text;
}

// A stray ENDIF is dropped together with the text read since the previous directive.
void TextPass::OnEndif(const TNextDirResult& dir) {
  if (!current_) return;
  TDirBlock* block = current_;
  // Resolving recurses once per level of closed blocks; blocks left open cost nothing.
  if (depth_ + block->Level > max_nesting_) {
    throw TPreprocessorError(LineOf(block->IfStart), "blocks are nested deeper than " +
                                                         std::to_string(max_nesting_) + " levels");
  }
  block->EndifStart = dir.StartPos;
  block->EndifClose = dir.NextPos - 1;
  block->EndifText = dir.Text;
  if (block->Level == 1) Resolve(*block);
  current_ = block->Parent;
  RemoveBlock(block);
}

// Appends what an outermost block leaves in the output; its parts are processed with the constants
// as they stand now.
void TextPass::Resolve(const TDirBlock& block) {
  const bool has_else = block.ElseStart != 0;
  const std::int64_t then_end = has_else ? block.ElseStart : block.EndifStart;
  if (!block.IsDd) {
    *out_ += block.IfText;
    ProcessPart(block.IfClose, then_end, *out_);
    *out_ += block.ElseText;
    if (has_else) ProcessPart(block.ElseClose, block.EndifStart, *out_);
    *out_ += block.EndifText;
    return;
  }
  // The branch not taken is processed too: its DEFINEs and its errors count.
  std::string dropped;
  markers_used_ = true;
  *out_ += kMarkerA;
  ProcessPart(block.IfClose, then_end, block.Cond ? *out_ : dropped);
  if (has_else) ProcessPart(block.ElseClose, block.EndifStart, block.Cond ? dropped : *out_);
  *out_ += kMarkerB;
}

// Processes the text strictly between position `after_close` and position `before_start` into
// `out`.
void TextPass::ProcessPart(std::int64_t after_close, std::int64_t before_start, std::string& out) {
  const std::int64_t length = std::max<std::int64_t>(0, before_start - 1 - after_close);
  const std::string_view part =
      text_.substr(static_cast<std::size_t>(after_close), static_cast<std::size_t>(length));
  TextPass(blocks_, defines_, whole_, part, depth_ + 1, max_nesting_).Run(out);
}

void TextPass::RemoveBlock(const TDirBlock* block) {
  const auto found = std::find_if(blocks_.rbegin(), blocks_.rend(),
                                  [block](const auto& item) { return item.get() == block; });
  if (found != blocks_.rend()) blocks_.erase(std::next(found).base());
}

std::int64_t TextPass::LineOf(std::int64_t pos) const {
  const std::size_t offset =
      static_cast<std::size_t>(text_.data() - whole_.data()) + static_cast<std::size_t>(pos - 1);
  return LineAt(whole_, offset);
}

// `text` with every `what` removed, in one left-to-right pass (removals are not rescanned).
std::string RemoveAll(std::string_view text, std::string_view what) {
  std::string result;
  result.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t found = platform::FindBytes(text, what); found != std::string_view::npos;
       found = platform::FindBytes(text, what, start)) {
    result.append(text, start, found - start);
    start = found + what.size();
  }
  result.append(text, start);
  return result;
}

// True when the trimmed line contains `marker` and is blank once every `marker` is removed.
bool OnlyMarkers(std::string_view line, std::string_view marker) {
  const std::string_view trimmed = Trim(line);
  if (trimmed.find(marker) == std::string_view::npos) return false;
  return Trim(RemoveAll(trimmed, marker)).empty();
}

enum class LineFate { Keep, Delete, DeleteWithFollowingBlank };

LineFate FateOf(std::string_view line) {
  if (platform::FindBytes(line, "{remove_me_") == std::string_view::npos) return LineFate::Keep;
  static const std::string pair = std::string(kMarkerA) + std::string(kMarkerB);
  if (OnlyMarkers(line, pair)) return LineFate::DeleteWithFollowingBlank;
  if (OnlyMarkers(line, kMarkerB) || OnlyMarkers(line, kMarkerA)) return LineFate::Delete;
  return LineFate::Keep;
}

// Which lines survive a last-to-first pass that deletes in place: "the line that now follows"
// a deleted one is the nearest survivor below it, which `survivors` keeps on its top. Rebuilding
// instead of erasing keeps the pass linear.
std::vector<bool> SurvivingLines(const std::vector<std::string_view>& lines) {
  std::vector<bool> keep(lines.size(), true);
  std::vector<std::size_t> survivors;
  for (std::size_t i = lines.size(); i-- > 0;) {
    const LineFate fate = FateOf(lines[i]);
    if (fate == LineFate::Keep) {
      survivors.push_back(i);
      continue;
    }
    keep[i] = false;
    if (fate == LineFate::DeleteWithFollowingBlank && !survivors.empty() &&
        Trim(lines[survivors.back()]).empty()) {
      keep[survivors.back()] = false;
      survivors.pop_back();
    }
  }
  return keep;
}

// Calls `line(text)` for each remaining line, markers stripped.
template <typename OnLine>
void ForEachCleanLine(std::string_view text, OnLine&& line) {
  const std::vector<std::string_view> lines = SplitLineViews(text);
  const std::vector<bool> keep = SurvivingLines(lines);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!keep[i]) continue;
    if (platform::FindBytes(lines[i], "{remove_me_") == std::string_view::npos) {
      line(lines[i]);
    } else {
      line(RemoveAll(RemoveAll(lines[i], kMarkerA), kMarkerB));
    }
  }
}

}  // namespace

std::string ProcessText(std::string_view text, TDefines& defines, bool remove_markers,
                        BlockList& blocks, int max_nesting) {
  std::string out;
  const bool markers_used = TextPass(blocks, defines, text, text, 0, max_nesting).Run(out);
  if (!remove_markers || !markers_used || out.empty()) return out;
  std::string cleaned;
  ForEachCleanLine(out, [&cleaned](std::string_view line) { cleaned.append(line).append("\r\n"); });
  return cleaned;
}

}  // namespace tsaw::reference
