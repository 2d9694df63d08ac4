// The processor against the reference preprocessor (the block-by-block resolution it replaced) on
// many generated texts: directive soup with every odd case, and well-formed nesting with constants
// set inside taken and excluded branches.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/runtime_text.h"
#include "preprocessor/model_processor.h"
#include "preprocessor/reference_comparison.h"

namespace tsaw {
namespace {

// Pieces of template text, the broken ones included: directives without "}", second ELSEs, stray
// ENDIFs, names in other letter cases, markers written by hand, every kind of line end.
const std::vector<std::string> kSoupPieces = {
    "{$IFDEF ddA}",
    "{$IFNDEF ddB}",
    "{$ifdef DDa}",
    "{$IFDEF ddTrue}",
    "{$IFNDEF ddTrue}",
    "{$IFDEF DEBUG}",
    "{$IFDEF ddNone}",
    "{$IFNDEF ddC}",
    "{$IFDEFddA}",
    "{$IFDEF}",
    "{$ELSE}",
    "{$else}",
    "{$ELSEIF}",
    "{$ENDIF}",
    "{$endif}",
    "{$ENDIF ddA}",
    "{$DEFINE ddA}",
    "{$UNDEF ddA}",
    "{$DEFINE ddB}",
    "{$undef ddb}",
    "{$DEFINE DDC}",
    "{$DEFINE ddNew}",
    "{$R *.res}",
    "{$I-}",
    "{$",
    "}",
    "{",
    "{$IFDEF ddA",
    "{$ENDIF",
    "{$ELSE",
    "{$DEFINE ddB",
    "\r\n",
    "\r\n",
    "\r\n",
    "\n",
    "\r",
    "\r\n\r\n",
    "  ",
    "\t",
    "x",
    "code;",
    "{remove_me_a}",
    "{remove_me_b}",
    "{remove_me_",
};

const std::vector<std::string> kNames = {"ddA",    "ddB",    "ddC",   "DDa",
                                         "ddTrue", "ddNone", "DEBUG", "ddNew"};

class TextMaker {
 public:
  explicit TextMaker(unsigned seed) : random_(seed) {}

  std::string Soup() {
    std::string text;
    for (int pieces = Below(40); pieces > 0; --pieces)
      text += kSoupPieces[Below(kSoupPieces.size())];
    return text;
  }

  // Blocks nested up to `depth` deep, most of them closed; constants set anywhere.
  std::string Nested(int depth) {
    std::string text;
    for (int items = Below(5); items > 0; --items) {
      switch (Below(6)) {
        case 0:
          text += Below(2) ? "{$DEFINE " : "{$UNDEF ";
          text += kNames[Below(kNames.size())] + "}";
          break;
        case 1:
        case 2:
          if (depth > 0) {
            text += Block(depth);
            break;
          }
          [[fallthrough]];
        default:
          text += Below(3) ? "line;\r\n" : Below(2) ? "\r\n" : " x ";
      }
    }
    return text;
  }

  TDefines Table() {
    TDefines table;
    const char* values[] = {"0", "1", "1", "0", "yes", ""};
    for (int entries = Below(6); entries > 0; --entries) {
      table.Add(kNames[Below(kNames.size())], values[Below(6)]);
    }
    return table;
  }

  bool Coin() { return Below(2) == 1; }

 private:
  std::string Block(int depth) {
    std::string text = Below(2) ? "{$IFDEF " : "{$IFNDEF ";
    text += kNames[Below(kNames.size())] + "}" + (Below(2) ? "\r\n" : "") + Nested(depth - 1);
    if (Below(3) == 0) text += "{$ELSE}" + Nested(depth - 1);
    if (Below(40) == 0) text += "{$ELSE}" + Nested(depth - 1);
    if (Below(30) != 0) text += "{$ENDIF}" + std::string(Below(2) ? "\r\n" : "");
    return text;
  }

  int Below(std::size_t bound) { return static_cast<int>(random_() % bound); }

  std::mt19937 random_;
};

TEST(ModelProcessorDifferentialTest, AgreesWithTheReferenceOnDirectiveSoup) {
  TextMaker maker(20261125);
  for (int i = 0; i < 60000; ++i) {
    const std::string text = maker.Soup();
    const std::string difference =
        reference::DifferenceFromReference(text, maker.Table(), maker.Coin());
    ASSERT_EQ(difference, "") << "text: [" << text << "]";
  }
}

TEST(ModelProcessorDifferentialTest, AgreesWithTheReferenceOnNestedBlocks) {
  TextMaker maker(7);
  for (int i = 0; i < 40000; ++i) {
    const std::string text = maker.Nested(1 + i % 6);
    const std::string difference =
        reference::DifferenceFromReference(text, maker.Table(), maker.Coin());
    ASSERT_EQ(difference, "") << "text: [" << text << "]";
  }
}

// The creation run writes what ProcessText returns for a text whose lines all end in CR LF without
// checking the line ends again: every line of the result must end in CR LF too, also where no
// marker was cleaned up.
TEST(ModelProcessorDifferentialTest, KeepsTheCrLfLinesOfACrLfText) {
  TextMaker maker(424242);
  for (int i = 0; i < 30000; ++i) {
    const std::string text = platform::WithCrLfLines(i % 2 ? maker.Soup() : maker.Nested(1 + i % 5));
    TqrxModelProcessor processor;
    TDefines defines = maker.Table();
    const bool remove_markers = maker.Coin();
    std::string processed;
    try {
      processed = processor.ProcessText(text, defines, remove_markers);
    } catch (const TPreprocessorError&) {
      continue;
    }
    ASSERT_TRUE(platform::HasCrLfLines(processed))
        << "text: [" << text << "] result: [" << processed << "] " << remove_markers;
  }
}

TEST(ModelProcessorDifferentialTest, AgreesWithTheReferenceOnDeepNesting) {
  TextMaker maker(99);
  for (int depth : {300, 1000}) {
    std::string text;
    for (int level = 0; level < depth; ++level) {
      text += level % 3 ? "{$IFDEF ddA}\r\n" : "{$IFNDEF ddB}{$DEFINE ddB}\r\n";
      if (level % 7 == 0) text += "{$UNDEF ddA}";
    }
    text += "x\r\n";
    for (int level = 0; level < depth; ++level)
      text += level % 5 ? "{$ENDIF}\r\n" : "{$ELSE}{$DEFINE ddA}{$ENDIF}";
    TDefines table;
    table.Add("ddA", "1");
    table.Add("ddB", "0");
    EXPECT_EQ(reference::DifferenceFromReference(text, table, true), "") << depth;
  }
}

}  // namespace
}  // namespace tsaw
