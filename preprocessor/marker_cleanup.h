#pragma once
// The last step of preprocessing a file: resolved "dd" blocks leave the markers "{remove_me_a}"
// (where the block began) and "{remove_me_b}" (where it ended); a line that held nothing but
// directives disappears, while code sharing a line with them stays.

#include <string>
#include <string_view>
#include <vector>

namespace tsaw {

inline constexpr std::string_view kMarkerA = "{remove_me_a}";
inline constexpr std::string_view kMarkerB = "{remove_me_b}";

// One line of a text: [Start, End) without its line break, Next just after it; for a line with
// markers, also what the clean-up does with it.
struct TTextLine {
  std::size_t Start = 0, End = 0, Next = 0;
  bool Deleted = false;
  bool TakesFollowingBlank = false;  // deleted with the blank line, if any, that then follows
};

// Cleans up one text after another, keeping its lists of lines between them so that a long text
// or a run over many files does not allocate them again each time.
class TMarkerCleanup {
 public:
  // Whole lines [Start, End) of a text.
  struct LineRun {
    std::size_t Start, End;
  };

  // Splits `text` into lines and, from the last line to the first, deletes a line that is blank
  // once every "{remove_me_a}{remove_me_b}" pair is removed (and with it the blank line, if any,
  // that now follows it), else one blank without its "{remove_me_b}"s, else one blank without its
  // "{remove_me_a}"s. Returns the remaining lines with every marker stripped, each followed by
  // CR LF.
  std::string ToText(std::string_view text);

 private:
  std::vector<TTextLine> marker_lines_;
  std::vector<TTextLine> blank_lines_;
  std::vector<LineRun> survivors_;
};

}  // namespace tsaw
