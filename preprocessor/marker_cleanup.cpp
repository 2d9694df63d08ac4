#include "preprocessor/marker_cleanup.h"

#include <algorithm>
#include <vector>

#include "platform/find_bytes.h"
#include "platform/large_pages.h"
#include "platform/runtime_text.h"

namespace tsaw {
namespace {

using platform::Trim;

constexpr std::string_view kMarkerStart = "{remove_me_";

// Appends `text` with every `what` removed, in one left-to-right pass (removals are not
// rescanned).
void AppendWithout(std::string_view text, std::string_view what, std::string& out) {
  std::size_t start = 0;
  for (std::size_t found = platform::FindBytes(text, what); found != std::string_view::npos;
       found = platform::FindBytes(text, what, start)) {
    out.append(text, start, found - start);
    start = found + what.size();
  }
  out.append(text, start);
}

enum class LineFate { Keep, Delete, DeleteWithFollowingBlank };

// What the clean-up does with `line`: delete it when it holds nothing but blanks and
// "{remove_me_a}{remove_me_b}" pairs (taking a blank line below along), or nothing but blanks and
// one kind of marker; else keep it. Read in one pass: removing the pairs, or the markers of one
// kind, from left to right leaves a blank line exactly when each byte that is not blank begins a
// pair or such a marker, taken in turn, as a blank cannot begin one.
LineFate FateOf(std::string_view line) {
  bool only_pairs = true, only_a = true, only_b = true;
  bool any = false;
  for (std::size_t at = 0; at < line.size();) {
    if (static_cast<unsigned char>(line[at]) <= ' ') {
      ++at;
      continue;
    }
    const std::string_view rest = line.substr(at);
    if (rest.starts_with(kMarkerA) && rest.substr(kMarkerA.size()).starts_with(kMarkerB)) {
      only_a = only_b = false;
      at += kMarkerA.size() + kMarkerB.size();
    } else if (rest.starts_with(kMarkerA)) {
      only_pairs = only_b = false;
      at += kMarkerA.size();
    } else if (rest.starts_with(kMarkerB)) {
      only_pairs = only_a = false;
      at += kMarkerB.size();
    } else {
      return LineFate::Keep;
    }
    any = true;
  }
  if (!any) return LineFate::Keep;
  if (only_pairs) return LineFate::DeleteWithFollowingBlank;
  return only_a || only_b ? LineFate::Delete : LineFate::Keep;
}

using Line = TTextLine;

bool IsBreak(char c) { return c == '\r' || c == '\n'; }

// Sets `line` to the line of `text` that begins at `start`; no line break lies between `start`
// and `from`.
void SetLine(std::string_view text, std::size_t start, std::size_t from, Line& line) {
  line.Start = start;
  line.End = std::min(platform::FindEitherByte(text, '\r', '\n', from), text.size());
  line.Next = line.End;
  if (line.Next < text.size() && text[line.Next] == '\r') ++line.Next;
  if (line.Next < text.size() && text[line.Next] == '\n') ++line.Next;
}

// The first "{remove_me_" at or after `from`, or npos.
std::size_t FindMarkerStart(std::string_view text, std::size_t from) {
  for (std::size_t at = platform::FindByte(text, '{', from); at != std::string_view::npos;
       at = platform::FindByte(text, '{', at + 1)) {
    if (text.substr(at).starts_with(kMarkerStart)) return at;
  }
  return std::string_view::npos;
}

// Sets `lines` to the lines holding a marker, in order, with their fates; only they can change.
// Each line is filled in place, as one made aside and copied in costs a stall on reading it back.
void ListMarkerLines(std::string_view text, std::vector<Line>& lines) {
  lines.clear();
  for (std::size_t found = FindMarkerStart(text, 0); found != std::string_view::npos;) {
    std::size_t start = found;
    while (start > 0 && !IsBreak(text[start - 1])) --start;
    Line& line = lines.emplace_back();
    SetLine(text, start, found, line);
    // Decided while the line is at hand, so that the pass from the last line to the first does
    // not read the text again.
    const LineFate fate = FateOf(text.substr(line.Start, line.End - line.Start));
    line.Deleted = fate != LineFate::Keep;
    line.TakesFollowingBlank = fate == LineFate::DeleteWithFollowingBlank;
    found = FindMarkerStart(text, line.Next);
  }
}

// Lists the blank lines without markers that a last-to-first pass over the marker lines deletes
// with them, in order. "The line that now follows" a deleted one is the nearest survivor below
// it; the survivors below the current line are kept as runs of whole lines, nearest on top, so
// that lines without markers are never visited one by one.
class Deletions {
 public:
  Deletions(std::string_view text, std::vector<TMarkerCleanup::LineRun>& survivors,
            std::vector<Line>& blank_lines)
      : text_(text), survivors_(survivors), blank_lines_(blank_lines) {
    survivors_.clear();
    blank_lines_.clear();
  }

  void Find(const std::vector<Line>& marker_lines) {
    std::size_t below = text_.size();  // where the lines already passed begin
    for (auto line = marker_lines.rbegin(); line != marker_lines.rend(); ++line) {
      PushSurvivors(line->Next, below);
      below = line->Start;
      if (!line->Deleted) {
        PushSurvivors(line->Start, line->Next);
      } else if (line->TakesFollowingBlank) {
        DeleteNearestSurvivorIfBlank();
      }
    }
    std::sort(blank_lines_.begin(), blank_lines_.end(),
              [](const Line& a, const Line& b) { return a.Start < b.Start; });
  }

 private:
  void PushSurvivors(std::size_t start, std::size_t end) {
    if (start >= end) return;
    if (!survivors_.empty() && survivors_.back().Start == end) {
      survivors_.back().Start = start;
    } else {
      survivors_.push_back({start, end});
    }
  }

  void DeleteNearestSurvivorIfBlank() {
    if (survivors_.empty()) return;
    TMarkerCleanup::LineRun& nearest = survivors_.back();
    Line line;
    SetLine(text_, nearest.Start, nearest.Start, line);
    if (!Trim(text_.substr(line.Start, line.End - line.Start)).empty()) return;
    blank_lines_.push_back(line);
    nearest.Start = line.Next;
    if (nearest.Start >= nearest.End) survivors_.pop_back();
  }

  std::string_view text_;
  std::vector<TMarkerCleanup::LineRun>& survivors_;  // nearest last
  std::vector<Line>& blank_lines_;
};

// Appends the lines of `part` (whole lines of a text), each followed by CR LF. Runs of lines that
// already end in CR LF are copied at once.
void AppendCrLfLines(std::string_view part, std::string& out) {
  std::size_t copied = 0;
  for (std::size_t at = platform::FindEitherByte(part, '\r', '\n'); at != std::string_view::npos;
       at = platform::FindEitherByte(part, '\r', '\n', at)) {
    if (part[at] == '\r' && at + 1 < part.size() && part[at + 1] == '\n') {
      at += 2;
      continue;
    }
    out.append(part.substr(copied, at - copied)).append("\r\n");
    at = copied = at + 1;
  }
  if (copied == part.size()) return;
  out.append(part.substr(copied));
  if (part.back() != '\n') out.append("\r\n");
}

// Writes `text` without its deleted lines and with the markers stripped from the others.
class CleanText {
 public:
  CleanText(std::string_view text, std::string& out) : text_(text), out_(out) {}

  void Write(const std::vector<Line>& marker_lines, const std::vector<Line>& blank_lines) {
    auto marked = marker_lines.begin();
    auto blank = blank_lines.begin();
    while (marked != marker_lines.end() || blank != blank_lines.end()) {
      if (blank == blank_lines.end() ||
          (marked != marker_lines.end() && marked->Start < blank->Start)) {
        CopyUpTo(marked->Start);
        if (!marked->Deleted) WriteStripped(*marked);
        copied_ = marked->Next;
        ++marked;
      } else {
        CopyUpTo(blank->Start);
        copied_ = blank->Next;
        ++blank;
      }
    }
    CopyUpTo(text_.size());
  }

 private:
  std::string_view Content(const Line& line) const {
    return text_.substr(line.Start, line.End - line.Start);
  }
  // First every "{remove_me_a}", then every "{remove_me_b}" of what is left.
  void WriteStripped(const Line& line) {
    if (!AppendWithoutMarkersAtBraces(Content(line))) {
      without_a_.clear();
      AppendWithout(Content(line), kMarkerA, without_a_);
      AppendWithout(without_a_, kMarkerB, out_);
    }
    out_.append("\r\n");
  }
  // The same in one pass, when every "{" of `content` begins a marker: removing the start markers
  // then cannot join the pieces of an end marker. Returns false, appending nothing, otherwise.
  bool AppendWithoutMarkersAtBraces(std::string_view content) {
    static_assert(kMarkerA.size() == kMarkerB.size());
    const std::size_t written = out_.size();
    std::size_t copied = 0;
    for (std::size_t brace = platform::FindByte(content, '{'); brace != std::string_view::npos;
         brace = platform::FindByte(content, '{', copied)) {
      const std::string_view rest = content.substr(brace);
      if (!rest.starts_with(kMarkerA) && !rest.starts_with(kMarkerB)) {
        out_.resize(written);
        return false;
      }
      out_.append(content.substr(copied, brace - copied));
      copied = brace + kMarkerA.size();
    }
    out_.append(content.substr(copied));
    return true;
  }
  void CopyUpTo(std::size_t end) { AppendCrLfLines(text_.substr(copied_, end - copied_), out_); }

  std::string_view text_;
  std::string& out_;
  std::string without_a_;
  std::size_t copied_ = 0;
};

}  // namespace

std::string TMarkerCleanup::ToText(std::string_view text) {
  std::string result;
  result.reserve(text.size() + 2);
  platform::PreferLargePages(result.data(), result.capacity());
  ListMarkerLines(text, marker_lines_);
  Deletions(text, survivors_, blank_lines_).Find(marker_lines_);
  CleanText(text, result).Write(marker_lines_, blank_lines_);
  return result;
}

}  // namespace tsaw
