#include "preprocessor/block_output.h"

#include <vector>

#include "platform/large_pages.h"
#include "preprocessor/marker_cleanup.h"

namespace tsaw {
namespace {

class OutputWalk {
 public:
  OutputWalk(std::string_view text, const TDirectiveList& list, std::string& out)
      : text_(text), dirs_(list.Directives), blocks_(list.Blocks), out_(out) {}

  bool Run() {
    while (next_ < dirs_.size()) {
      const TListedDirective& dir = dirs_[next_];
      switch (dir.Kind) {
        case TDirKind::Ifdef:
        case TDirKind::Ifndef:
          if (open_.empty() && blocks_[dir.Ref].Endif == kNoIndex) return LeaveOpen(dir);
          OnIf(dir);
          break;
        case TDirKind::Else:
          OnElse(dir);
          break;
        case TDirKind::Endif:
          OnEndif(dir);
          break;
        default:  // DEFINE and UNDEF stay in the text where they stand
          ++next_;
          break;
      }
    }
    CopyUpTo(text_.size());
    return markers_used_;
  }

 private:
  void CopyUpTo(std::size_t end) {
    out_.append(text_.substr(copied_, end - copied_));
    copied_ = end;
  }
  // Continues after directive `index`, dropping the text up to its end.
  void ResumeAfter(std::size_t index) {
    copied_ = dirs_[index].End;
    next_ = index + 1;
  }
  std::string_view Written(const TListedDirective& dir) const {
    return SpanOf(dir, text_).Text(text_);
  }

  void OnIf(const TListedDirective& dir) {
    const TListedBlock& block = blocks_[dir.Ref];
    CopyUpTo(dir.Start);
    if (!block.IsDd) {
      out_ += Written(dir);
      Enter(dir.Ref, next_);
      return;
    }
    if (open_.empty()) markers_used_ = true;
    out_ += kMarkerA;
    if (block.Cond) {
      Enter(dir.Ref, next_);
    } else if (block.Else != kNoIndex) {
      Enter(dir.Ref, block.Else);
    } else {
      out_ += kMarkerB;
      ResumeAfter(block.Endif);
    }
  }

  void Enter(std::uint32_t block, std::size_t after) {
    open_.push_back(block);
    ResumeAfter(after);
  }

  // Only the last ELSE of a block is met here: a second one stopped the listing.
  void OnElse(const TListedDirective& dir) {
    const TListedBlock& block = blocks_[open_.back()];
    CopyUpTo(dir.Start);
    if (block.IsDd) {  // the then part was chosen; the else part is skipped
      out_ += kMarkerB;
      open_.pop_back();
      ResumeAfter(block.Endif);
      return;
    }
    out_ += Written(dir);
    ResumeAfter(next_);
  }

  void OnEndif(const TListedDirective& dir) {
    if (open_.empty()) {  // no open block: the text since the previous directive goes too
      CopyUpTo(next_ == 0 ? 0 : dirs_[next_ - 1].End);
      ResumeAfter(next_);
      return;
    }
    const TListedBlock& block = blocks_[open_.back()];
    CopyUpTo(dir.Start);
    out_ += block.IsDd ? kMarkerB : Written(dir);
    open_.pop_back();
    ResumeAfter(next_);
  }

  // An outermost block never closed: only the text after the last directive is kept.
  bool LeaveOpen(const TListedDirective& dir) {
    CopyUpTo(dir.Start);
    copied_ = dirs_.back().End;
    CopyUpTo(text_.size());
    return markers_used_;
  }

  std::string_view text_;
  const std::vector<TListedDirective>& dirs_;
  const std::vector<TListedBlock>& blocks_;
  std::string& out_;
  std::vector<std::uint32_t> open_;  // the blocks whose parts are being written
  std::size_t next_ = 0;             // the next directive to look at
  std::size_t copied_ = 0;           // the text before this offset is written or dropped
  bool markers_used_ = false;        // an outermost "dd" block was resolved
};

}  // namespace

bool AppendResolvedText(std::string_view text, const TDirectiveList& list, std::string& out) {
  // Each directive leaves at most one marker on average, so the output fits without growing and
  // copying a long text again on the way.
  out.reserve(out.size() + text.size() + kMarkerA.size() * list.Directives.size());
  platform::PreferLargePages(out.data(), out.capacity());
  return OutputWalk(text, list, out).Run();
}

}  // namespace tsaw
