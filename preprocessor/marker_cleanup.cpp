#include "preprocessor/marker_cleanup.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/find_bytes.h"
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

// The offset of the first `byte` in `text` at or after `from`, or npos.
std::size_t FindByte(std::string_view text, char byte, std::size_t from) {
  if (from >= text.size()) return std::string_view::npos;
  const void* found = std::memchr(text.data() + from, byte, text.size() - from);
  return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data())
               : std::string_view::npos;
}

// One line of the text: [Start, End) without its line break, Next just after it.
struct Line {
  std::size_t Start = 0, End = 0, Next = 0;
  bool Deleted = false;
};

bool IsBreak(char c) { return c == '\r' || c == '\n'; }

Line LineFrom(std::string_view text, std::size_t start) {
  Line line{start, text.size(), text.size()};
  const std::size_t cr = FindByte(text, '\r', start);
  const std::size_t lf =
      FindByte(text.substr(0, cr == std::string_view::npos ? text.size() : cr), '\n', start);
  line.End = std::min({lf, cr, text.size()});
  line.Next = line.End;
  if (line.Next < text.size() && text[line.Next] == '\r') ++line.Next;
  if (line.Next < text.size() && text[line.Next] == '\n') ++line.Next;
  return line;
}

// The lines holding a marker, in order; only they can change.
std::vector<Line> MarkerLines(std::string_view text) {
  std::vector<Line> lines;
  for (std::size_t found = platform::FindBytes(text, kMarkerStart);
       found != std::string_view::npos;) {
    std::size_t start = found;
    while (start > 0 && !IsBreak(text[start - 1])) --start;
    lines.push_back(LineFrom(text, start));
    found = platform::FindBytes(text, kMarkerStart, lines.back().Next);
  }
  return lines;
}

// Marks the marker lines a last-to-first pass deletes in place and returns the blank lines without
// markers it deletes with them, in order. "The line that now follows" a deleted one is the nearest
// survivor below it; the survivors below the current line are kept as runs of whole lines, nearest
// on top, so that lines without markers are never visited one by one.
class Deletions {
 public:
  explicit Deletions(std::string_view text) : text_(text) {}

  std::vector<Line> Of(std::vector<Line>& marker_lines) {
    std::size_t below = text_.size();  // where the lines already passed begin
    for (auto line = marker_lines.rbegin(); line != marker_lines.rend(); ++line) {
      PushSurvivors(line->Next, below);
      below = line->Start;
      const LineFate fate = FateOf(text_.substr(line->Start, line->End - line->Start));
      if (fate == LineFate::Keep) {
        PushSurvivors(line->Start, line->Next);
        continue;
      }
      line->Deleted = true;
      if (fate == LineFate::DeleteWithFollowingBlank) DeleteNearestSurvivorIfBlank();
    }
    std::sort(blank_lines_.begin(), blank_lines_.end(),
              [](const Line& a, const Line& b) { return a.Start < b.Start; });
    return std::move(blank_lines_);
  }

 private:
  struct Run {
    std::size_t Start, End;
  };

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
    Run& nearest = survivors_.back();
    const Line line = LineFrom(text_, nearest.Start);
    if (!Trim(text_.substr(line.Start, line.End - line.Start)).empty()) return;
    blank_lines_.push_back(line);
    nearest.Start = line.Next;
    if (nearest.Start >= nearest.End) survivors_.pop_back();
  }

  std::string_view text_;
  std::vector<Run> survivors_;
  std::vector<Line> blank_lines_;
};

// Appends the lines of `part` (whole lines of a text), each followed by CR LF. Runs of lines that
// already end in CR LF are copied at once; the next CR and LF are each looked for again only once
// passed, so the cost stays linear whatever the line ends.
void AppendCrLfLines(std::string_view part, std::string& out) {
  std::size_t next_cr = FindByte(part, '\r', 0);
  std::size_t next_lf = FindByte(part, '\n', 0);
  std::size_t copied = 0;
  for (std::size_t at = 0;;) {
    if (next_cr < at) next_cr = FindByte(part, '\r', at);
    if (next_lf < at) next_lf = FindByte(part, '\n', at);
    const std::size_t line_break = std::min(next_cr, next_lf);
    if (line_break == std::string_view::npos) break;
    if (line_break == next_cr && next_lf == next_cr + 1) {
      at = next_lf + 1;
      continue;
    }
    out.append(part.substr(copied, line_break - copied)).append("\r\n");
    at = copied = line_break + 1;
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
    without_a_.clear();
    AppendWithout(Content(line), kMarkerA, without_a_);
    AppendWithout(without_a_, kMarkerB, out_);
    out_.append("\r\n");
  }
  void CopyUpTo(std::size_t end) { AppendCrLfLines(text_.substr(copied_, end - copied_), out_); }

  std::string_view text_;
  std::string& out_;
  std::string without_a_;
  std::size_t copied_ = 0;
};

}  // namespace

std::string CleanUpMarkersToText(std::string_view text) {
  std::string result;
  result.reserve(text.size() + 2);
  std::vector<Line> marker_lines = MarkerLines(text);
  const std::vector<Line> blank_lines = Deletions(text).Of(marker_lines);
  CleanText(text, result).Write(marker_lines, blank_lines);
  return result;
}

std::vector<std::string> CleanUpMarkers(std::string_view text) {
  return platform::SplitLines(CleanUpMarkersToText(text));
}

}  // namespace tsaw
