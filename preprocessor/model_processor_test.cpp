#include "preprocessor/model_processor.h"

#include <gtest/gtest.h>

#include <utility>

namespace tsaw {
namespace {

TDefines Table(std::initializer_list<std::pair<std::string_view, std::string_view>> entries) {
  TDefines defines;
  for (const auto& [name, value] : entries) defines.Add(name, value);
  return defines;
}

const std::vector<std::string> kWorkedExample = {
    "unit Main;",     "{$IFDEF ddUseTLG}",
    "uses Logger;",   "{$ELSE}",
    "uses Dummy;",    "{$ENDIF}",
    "{$IFDEF DEBUG}", "{$IFNDEF ddLogComments}// no comments{$ENDIF}",
    "{$ENDIF}",       "x := 1;{$IFDEF ddLogComments} // commented{$ENDIF}",
    "end.",
};

TEST(ModelProcessorTest, WorkedExampleResolvesDdBlocksAndKeepsOthers) {
  TqrxModelProcessor processor;
  processor.Defines = Table({{"ddTemplate", "0"}, {"ddUseTLG", "1"}, {"ddLogComments", "0"}});
  processor.Input = kWorkedExample;
  EXPECT_EQ(processor.Execute(), "");
  EXPECT_EQ(processor.Output,
            (std::vector<std::string>{"unit Main;", "uses Logger;", "{$IFDEF DEBUG}",
                                      "// no comments", "{$ENDIF}", "x := 1;", "end."}));
  EXPECT_TRUE(processor.Blocks.empty());

  TDefines defines = processor.Defines;
  std::string joined;
  for (const std::string& line : kWorkedExample) joined += line + "\r\n";
  EXPECT_EQ(processor.ProcessText(joined, defines, false),
            "unit Main;\r\n{remove_me_a}\r\nuses Logger;\r\n{remove_me_b}\r\n{$IFDEF DEBUG}\r\n"
            "{remove_me_a}// no comments{remove_me_b}\r\n{$ENDIF}\r\n"
            "x := 1;{remove_me_a}{remove_me_b}\r\nend.\r\n");
}

struct TextCase {
  const char* name;
  std::string_view input;
  std::string_view expected;
};

// ddOn=1, ddOff=0, ddLate=0; RemoveMarkers on, as Execute does.
TEST(ModelProcessorTest, ProcessTextResolvesDirectives) {
  const TextCase cases[] = {
      {"text without directives is unchanged", "a\nb", "a\nb"},
      {"other directives are ordinary text", "{$R *.res}\n{$I-}", "{$R *.res}\n{$I-}"},
      {"lower-case keyword, name found in any case",
       "{$ifdef DDON}x{$endif}|{$ifdef ddon}y{$endif}", "{$ifdef DDON}x{$endif}|y\r\n"},
      {"ddTrue is true for IFDEF and IFNDEF", "{$IFDEF ddTrue}a{$ENDIF}{$IFNDEF ddTrue}b{$ENDIF}",
       "ab\r\n"},
      {"unknown dd name is false both ways",
       "{$IFDEF ddNone}a{$ELSE}b{$ENDIF}{$IFNDEF ddNone}c{$ELSE}d{$ENDIF}", "bd\r\n"},
      {"excluded line goes with one blank line after it",
       "a\r\n{$IFDEF ddOff}x{$ENDIF}\r\n\r\n\r\nb", "a\r\n\r\nb\r\n"},
      {"nested dd blocks inside a dd block",
       "{$IFDEF ddOn}1{$IFNDEF ddOff}2{$ELSE}3{$ENDIF}{$ENDIF}", "12\r\n"},
      {"define of an unknown name changes nothing",
       "{$DEFINE ddNew}{$IFDEF ddNew}a{$ELSE}b{$ENDIF}", "{$DEFINE ddNew}b\r\n"},
      {"define in an excluded branch still counts",
       "{$IFDEF ddOff}{$DEFINE ddLate}{$ENDIF}{$IFDEF ddLate}yes{$ENDIF}", "yes\r\n"},
      {"undef at the outermost level stays in the text",
       "{$UNDEF ddOn}\r\n{$IFDEF ddOn}a{$ELSE}b{$ENDIF}", "{$UNDEF ddOn}\r\nb\r\n"},
      {"markers from inside a kept block stay without an outer dd block",
       "{$IFDEF DEBUG}{$IFDEF ddOn}x{$ENDIF}{$ENDIF}",
       "{$IFDEF DEBUG}{remove_me_a}x{remove_me_b}{$ENDIF}"},
      {"stray ENDIF drops the text read since the previous directive",
       "{$R x}keep\r\nlost{$ENDIF}after", "after"},
      {"unclosed block keeps only the text after the last directive read",
       "a{$IFDEF ddOn}b{$ELSE}c", "ac"},
      {"ENDIF without its closing brace still closes the block", "a{$IFDEF ddOn}b{$ENDIF",
       "ab\r\n"},
  };
  for (const TextCase& c : cases) {
    TqrxModelProcessor processor;
    TDefines defines = Table({{"ddOn", "1"}, {"ddOff", "0"}, {"ddLate", "0"}});
    EXPECT_EQ(processor.ProcessText(c.input, defines, true), c.expected) << c.name;
  }
}

TEST(ModelProcessorTest, ExecuteRejectsEmptyInputAndLeavesOutputEmpty) {
  TqrxModelProcessor processor;
  processor.Output = {"old"};
  EXPECT_EQ(processor.Execute(), "Property \"Input\" cannot be empty.");
  EXPECT_TRUE(processor.Output.empty());
  EXPECT_TRUE(processor.Defines.Empty());
}

TEST(ModelProcessorTest, ExecuteAddsDdTrueOnlyToAnEmptyTable) {
  TqrxModelProcessor empty_table;
  empty_table.Input = {"{$IFDEF ddTrue}a{$ENDIF}"};
  EXPECT_EQ(empty_table.Execute(), "");
  ASSERT_EQ(empty_table.Defines.Entries().size(), 1u);
  EXPECT_EQ(empty_table.Defines.Entries()[0].Name, "ddTrue");
  EXPECT_EQ(empty_table.Defines.Entries()[0].Value, "1");

  TqrxModelProcessor filled;
  filled.Defines = Table({{"ddX", "0"}});
  filled.Input = {"x"};
  EXPECT_EQ(filled.Execute(), "");
  EXPECT_EQ(filled.Defines.Entries().size(), 1u);
}

TEST(ModelProcessorTest, ExecuteSplitsTheResultAtEveryKindOfLineBreak) {
  TqrxModelProcessor processor;
  processor.Input = {"a\rb", "", "c\nd"};
  EXPECT_EQ(processor.Execute(), "");
  EXPECT_EQ(processor.Output, (std::vector<std::string>{"a", "b", "", "c", "d"}));
}

TEST(ModelProcessorTest, DefinesCarryOverToLaterFiles) {
  TqrxModelProcessor processor;
  processor.Defines = Table({{"ddA", "0"}});
  processor.Input = {"{$DEFINE DDA}"};
  ASSERT_EQ(processor.Execute(), "");
  processor.Input = {"{$IFDEF ddA}on{$ELSE}off{$ENDIF}"};
  ASSERT_EQ(processor.Execute(), "");
  EXPECT_EQ(processor.Output, std::vector<std::string>{"on"});
}

TEST(ModelProcessorTest, RejectsElseWithoutOpenBlockNamingTheLine) {
  struct ElseCase {
    const char* name;
    std::vector<std::string> input;
    std::string message;
  };
  const ElseCase cases[] = {
      {"at the outermost level",
       {"a", "b", "{$else}"},
       "line 3: \"{$else}\" has no open {$IFDEF} or {$IFNDEF} block"},
      // The then part of a block with two ELSEs runs up to the second one and holds the first.
      {"second ELSE of a block",
       {"{$IFDEF ddX}", "a", "{$ELSE}", "b", "{$ELSE}", "{$ENDIF}"},
       "line 3: \"{$ELSE}\" has no open {$IFDEF} or {$IFNDEF} block"},
  };
  for (const ElseCase& c : cases) {
    std::vector<bool> busy_calls;
    TqrxModelProcessor processor([&busy_calls](bool busy) { busy_calls.push_back(busy); });
    processor.Input = c.input;
    try {
      processor.Execute();
      ADD_FAILURE() << c.name << ": no error";
    } catch (const TPreprocessorError& error) {
      EXPECT_EQ(error.what(), c.message) << c.name;
    }
    EXPECT_EQ(busy_calls, (std::vector<bool>{true, false})) << c.name;
  }
}

TEST(ModelProcessorTest, FollowsNestingUpTo4096LevelsAndRefusesDeeperWhereItBegins) {
  auto nested = [](int levels, bool closed) {
    std::string text = "a\n";
    for (int i = 0; i < levels; ++i) text += "{$IFDEF ddTrue}";
    text += "x";
    for (int i = 0; closed && i < levels; ++i) text += "{$ENDIF}";
    return text;
  };
  TqrxModelProcessor processor;
  TDefines defines;
  EXPECT_EQ(processor.ProcessText(nested(4096, true), defines, true), "a\r\nx\r\n");
  for (const bool closed : {true, false}) {
    try {
      processor.ProcessText(nested(4097, closed), defines, true);
      ADD_FAILURE() << "no error, closed " << closed;
    } catch (const TPreprocessorError& error) {
      EXPECT_STREQ(error.what(), "line 2: blocks are nested deeper than 4096 levels") << closed;
    }
  }
}

// An outermost block is read through before its parts are resolved, so a constant set late in a
// block already counts for the blocks before it; inside the parts, settings count in order.
TEST(ModelProcessorTest, ConstantsSetInsideABlockCountAsTheBlockIsResolved) {
  const TextCase cases[] = {
      {"set after a nested block, in the same outer block",
       "{$IFDEF ddOn}{$IFDEF ddLate}a{$ENDIF}{$DEFINE ddLate}{$ENDIF}", "a{$DEFINE ddLate}\r\n"},
      {"set after the outer block counts only later",
       "{$IFDEF ddOn}{$IFDEF ddLate}a{$ENDIF}{$ENDIF}{$DEFINE ddLate}", "{$DEFINE ddLate}\r\n"},
      {"set earlier in the same part wins over the rest of the block",
       "{$IFDEF ddOn}{$UNDEF ddLate}{$IFNDEF ddLate}a{$ENDIF}{$DEFINE ddLate}{$ENDIF}",
       "{$UNDEF ddLate}a{$DEFINE ddLate}\r\n"},
      {"the else part sees what the then part set",
       "{$IFDEF ddOff}{$UNDEF ddOn}{$ELSE}{$IFDEF ddOn}a{$ELSE}b{$ENDIF}{$DEFINE ddOn}{$ENDIF}",
       "b{$DEFINE ddOn}\r\n"},
  };
  for (const TextCase& c : cases) {
    TqrxModelProcessor processor;
    TDefines defines = Table({{"ddOn", "1"}, {"ddOff", "0"}, {"ddLate", "0"}});
    EXPECT_EQ(processor.ProcessText(c.input, defines, true), c.expected) << c.name;
  }
}

TEST(ModelProcessorTest, NamesTheFirstSecondElseOfAnyBlockOnceItsOutermostBlockCloses) {
  TqrxModelProcessor processor;
  TDefines defines;
  const std::string nested_second_else =
      "{$IFDEF a}\n{$IFDEF b}\n{$ELSE}\n{$else}\n{$ENDIF}\n{$ELSE}\n{$ELSE}\n{$ENDIF}";
  try {
    processor.ProcessText(nested_second_else, defines, true);
    ADD_FAILURE() << "no error";
  } catch (const TPreprocessorError& error) {
    EXPECT_STREQ(error.what(), "line 3: \"{$ELSE}\" has no open {$IFDEF} or {$IFNDEF} block");
  }
  // Never closed, the block is never resolved: no error.
  EXPECT_EQ(processor.ProcessText("{$IFDEF a}{$ELSE}{$ELSE}z", defines, true), "z");
}

TEST(ModelProcessorTest, KeepsBlocksLeftOpenAndStartsEachTextAfresh) {
  TqrxModelProcessor processor;
  processor.Input = {"{$IFDEF ddTrue}a"};
  ASSERT_EQ(processor.Execute(), "");
  EXPECT_EQ(processor.Blocks.size(), 1u);
  processor.Input = {"b{$ENDIF}c"};
  ASSERT_EQ(processor.Execute(), "");
  EXPECT_EQ(processor.Output, std::vector<std::string>{"c"});
  EXPECT_EQ(processor.Blocks.size(), 1u);
}

}  // namespace
}  // namespace tsaw
