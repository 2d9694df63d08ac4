#include "preprocessor/directive_scanner.h"

#include <gtest/gtest.h>

namespace tsaw {
namespace {

struct ScanCase {
  const char* name;
  std::string_view text;
  std::int64_t from;
  TNextDirResult expected;
};

TEST(DirectiveScannerTest, FindsTheNextDirective) {
  const ScanCase cases[] = {
      {"plain text", "unit Main;", 1, {}},
      {"other directives are text", "{$R *.res}{$I-}", 1, {}},
      {"open brace at the very end", "x{$", 1, {}},
      {"ifdef with blanks trimmed",
       "a {$IFDEF \t ddX  }b",
       1,
       {TDirKind::Ifdef, 3, 19, "ddX", "{$IFDEF \t ddX  }"}},
      {"lower-case keyword keeps the name's case",
       "{$ifndef ddLog}",
       1,
       {TDirKind::Ifndef, 1, 16, "ddLog", "{$ifndef ddLog}"}},
      {"keyword is a prefix test", "{$IFDEFX}", 1, {TDirKind::Ifdef, 1, 10, "X", "{$IFDEFX}"}},
      {"elseif is else", "{$ELSEIF}", 1, {TDirKind::Else, 1, 10, "IF", "{$ELSEIF}"}},
      {"skips unknown directives",
       "{$R *.res}{$ENDIF}",
       1,
       {TDirKind::Endif, 11, 19, "", "{$ENDIF}"}},
      {"starts at FromPos",
       "{$ELSE}{$UNDEF ddA}",
       2,
       {TDirKind::Undef, 8, 20, "ddA", "{$UNDEF ddA}"}},
      {"no closing brace resumes after the keyword",
       "{$IFDEF ddX\nend.",
       1,
       {TDirKind::Ifdef, 1, 8, "", ""}},
      {"name runs to the first closing brace",
       "{$DEFINE a {$ENDIF}",
       1,
       {TDirKind::Define, 1, 20, "a {$ENDIF", "{$DEFINE a {$ENDIF}"}},
  };
  for (const ScanCase& c : cases) {
    const TNextDirResult got = NextDir(c.text, c.from);
    EXPECT_EQ(got.Kind, c.expected.Kind) << c.name;
    EXPECT_EQ(got.StartPos, c.expected.StartPos) << c.name;
    EXPECT_EQ(got.NextPos, c.expected.NextPos) << c.name;
    EXPECT_EQ(got.Name, c.expected.Name) << c.name;
    EXPECT_EQ(got.Text, c.expected.Text) << c.name;
  }
}

TEST(DirectiveScannerTest, ScannerKeepsFindingBracesAfterOneWasMissing) {
  // The scanner caches its "}" searches; later directives must still see their own braces.
  TDirScanner scanner("{$IFDEF a}{$ELSE}{$ENDIF b");
  EXPECT_EQ(scanner.Next(1).Name, "a");
  EXPECT_EQ(scanner.Next(11).Text, "{$ELSE}");
  const TNextDirResult last = scanner.Next(18);
  EXPECT_EQ(last.Kind, TDirKind::Endif);
  EXPECT_EQ(last.Text, "");
  EXPECT_EQ(last.NextPos, 25);
  EXPECT_EQ(scanner.Next(1).Name, "a");
}

TEST(DirectiveScannerTest, PosFromFindsOnlyWithinReach) {
  EXPECT_EQ(PosFrom("{$", "ab{$c{$", 1), 3);
  EXPECT_EQ(PosFrom("{$", "ab{$c{$", 4), 6);
  EXPECT_EQ(PosFrom("{$", "ab{$c{$", 7), 0);
  EXPECT_EQ(PosFrom("{$", "ab{$c{$", 50), 0);
  EXPECT_EQ(PosFrom("}", "}", 1), 1);
}

}  // namespace
}  // namespace tsaw
