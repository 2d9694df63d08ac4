// ExpandVar against a plain rendering of its algorithm (every variable searched with FindVar,
// every replacement over the whole text) on random tables and texts. TSAW_DIFFERENTIAL_CASES
// sets how many cases of each kind run (the default keeps the suite quick).

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "model/expand.h"
#include "model/expand_index.h"
#include "model/expand_scan.h"
#include "model/variables.h"
#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  std::string out;
  size_t start = 0;
  for (size_t at = text.find(from); !from.empty() && at != std::string::npos; at = text.find(from, start)) {
    out += text.substr(start, at - start) + to;
    start = at + from.size();
  }
  return out + text.substr(start);
}

const TVariableItem& ItemOf(const TWizard& wizard, const TFindVarResult& found) {
  if (found.PluginIndex > 0) return *wizard.Variables[found.VarIdx].Pins[found.PluginIndex];
  return CurrentItem(wizard, found.VarIdx);
}

// Returns false when the text did not settle within generous limits (a cycle).
bool PlainExpand(const TWizard& wizard, std::string& s, bool one_pass, const std::vector<std::string>& pairs) {
  for (int pass = 0; pass < 40; ++pass) {
    for (uint16_t v = 1; v <= LastSearchedVar(wizard); ++v) {
      for (int round = 0;; ++round) {
        if (round > 100 || s.size() > 100000) return false;
        bool replaced = false;
        if (const TFindVarResult found = FindVar(wizard, s, TFindMode::Name, v); found.Found) {
          std::string value = ItemOf(wizard, found).Value;
          for (size_t i = 0; pairs.size() % 2 == 0 && i < pairs.size(); i += 2) {
            value = Replaced(Replaced(value, pairs[i], "[tEmP.sTr]"), "[tEmP.sTr]", pairs[i + 1]);
          }
          s = Replaced(s, found.Token, value);
          replaced = true;
        }
        if (const TFindVarResult found = FindVar(wizard, s, TFindMode::Identifier, v); found.Found) {
          s = Replaced(s, found.Token, ItemOf(wizard, found).IdfValue);
          replaced = true;
        }
        if (!replaced) break;
      }
    }
    if (one_pass) return true;
    if (!FindVar(wizard, s, TFindMode::Name).Found && !FindVar(wizard, s, TFindMode::Identifier).Found) return true;
  }
  return false;
}

class RandomCase {
 public:
  explicit RandomCase(unsigned seed) : random_(seed) {}

  TWizard MakeTable() {
    TWizard wizard = testing::MakeWizard(3);
    if (Chance(3)) {  // tokens written with the bracketed number
      for (TVariableItem& variable : wizard.Variables) {
        for (size_t n = 1; n < variable.Pins.size(); ++n) {
          variable.Pins[n]->Token = Replaced(variable.Token, "vrPlugin", "vrPlugin[" + std::to_string(n) + "]");
        }
      }
    }
    if (Chance(3)) wizard.Variables[viPluginAuthor].Pins.resize(3);  // fewer items than plug-ins
    wizard.RunData->PluginCount = static_cast<uint16_t>(Pick(5));
    wizard.PluginIndex = static_cast<uint16_t>(Pick(4));
    AddCustom(wizard, "Custom.A", "vrCustom_A");
    AddCustom(wizard, "Custom.AB", "vrCustom_AB");
    AddCustom(wizard, "Author", "vrAuthor");  // a second variable of the same name
    AddCustom(wizard, Chance(2) ? "Odd#Name" : "Odd\nName", "xOdd");
    if (Chance(4)) AddCustom(wizard, "Custom.Bare", "vr");  // a token that every "vr" begins
    // Half the cases stay with one plug-in variable, so that its tokens meet and merge often.
    const bool focused = Chance(2);
    if (focused) pieces_ = {"#", "#Plugin[", "Plugin[", "1", "2", "3", "].Version#", "\n", "vrPlugin", "_Version", "x"};
    const std::vector<TVariableItem*> items = focused ? Items(wizard, viPluginVersion) : Items(wizard, 0);
    for (const TVariableItem* item : items) pieces_.push_back("#" + item->Name + "#");
    for (const TVariableItem* item : items) pieces_.push_back(item->Token);
    for (const TVariableItem* item : items) pieces_.push_back(item->Name + "#");  // shares a '#' with the one before
    for (int i = 0; i < 14; ++i) {
      TVariableItem* item = items[Pick(items.size())];
      item->Value = Text(4);
      item->IdfValue = Text(2);
    }
    return wizard;
  }

  std::string Text(int max_pieces) {
    std::string text;
    for (int i = Pick(max_pieces + 1); i > 0; --i) text += pieces_[Pick(pieces_.size())];
    return text;
  }

  std::vector<std::string> Pairs() {
    const std::vector<std::vector<std::string>> choices = {{}, {"x", "yy"}, {"#", "%"}, {"vr"}, {"", "Z"}};
    return choices[Pick(choices.size())];
  }

  bool Chance(int one_in) { return Pick(one_in) == 0; }
  int Pick(size_t bound) { return static_cast<int>(random_() % bound); }

 private:
  static void AddCustom(TWizard& wizard, const std::string& name, const std::string& token) {
    TVariableItem& item = wizard.Variables.emplace_back();
    item.Name = name;
    item.Token = token;
    wizard.VarCount = static_cast<uint16_t>(wizard.Variables.size() - 1);
  }

  // The items of variable `only`, or of every variable when it is 0.
  static std::vector<TVariableItem*> Items(TWizard& wizard, uint16_t only) {
    std::vector<TVariableItem*> items;
    for (size_t v = 1; v < wizard.Variables.size(); ++v) {
      if (only != 0 && v != only) continue;
      items.push_back(&wizard.Variables[v]);
      for (auto& pin : wizard.Variables[v].Pins) {
        if (pin) items.push_back(pin.get());
      }
    }
    return items;
  }

  std::mt19937 random_;
  std::vector<std::string> pieces_ = {"#",       "##",   "vr",         "vrPlugin", "Plugin", "[2].", "#Plugin",
                                      "Version#", "\r\n", "\n",         "x",        " ",      "1",    "_Version",
                                      "Custom_A", "B",    "[tEmP.sTr]", "Name#"};
};

unsigned CaseCount(unsigned fallback) {
  const char* count = std::getenv("TSAW_DIFFERENTIAL_CASES");
  return count ? static_cast<unsigned>(std::strtoul(count, nullptr, 10)) : fallback;
}

// Tables and texts as templates have them: identifier-like values, Delphi code around the
// references, and now and then a value or a neighbour that could make up a new reference.
class TemplateLikeCase {
 public:
  explicit TemplateLikeCase(unsigned seed) : random_(seed) {}

  TWizard MakeTable() {
    TWizard wizard = testing::MakeWizard(static_cast<uint16_t>(1 + Pick(3)));
    wizard.PluginIndex = static_cast<uint16_t>(1 + Pick(3));
    for (const char* name : {"Custom.A", "Custom.AB", "Product"}) {
      TVariableItem& item = wizard.Variables.emplace_back();
      item.Name = name;
      item.Token = "vr" + Replaced(name, ".", "_");
    }
    wizard.VarCount = static_cast<uint16_t>(wizard.Variables.size() - 1);
    for (TVariableItem& variable : wizard.Variables) {
      SetValues(variable);
      for (auto& pin : variable.Pins) {
        if (pin) SetValues(*pin);
      }
    }
    for (size_t v = 1; v < wizard.Variables.size(); ++v) {
      const TVariableItem& variable = wizard.Variables[v];
      if (!variable.Name.empty()) references_.push_back("#" + variable.Name + "#");
      if (!variable.Token.empty()) references_.push_back(variable.Token);
      for (size_t n = 1; n < variable.Pins.size(); ++n) {
        references_.push_back("#" + variable.Pins[n]->Name + "#");
        references_.push_back(variable.Pins[n]->Token);
      }
    }
    return wizard;
  }

  std::string Text() {
    static const char* const kCode[] = {"begin\r\n", "  x := ", "'", " + #13#10 + ", "; // ", "\r\n", " ",
                                        "(", ")", "Unit", "_", ".", "v", "r", "#", "##", "Name", "[1]", "2"};
    std::string text;
    for (int i = Pick(30); i > 0; --i) {
      text += Chance(2) ? references_[Pick(references_.size())] : kCode[Pick(std::size(kCode))];
    }
    return text;
  }

  bool Chance(int one_in) { return Pick(one_in) == 0; }
  int Pick(size_t bound) { return static_cast<int>(random_() % bound); }

 private:
  std::string Value() {
    static const char* const kParts[] = {"Bench", " ", "Product", "2", ".", "_", "Co", "Name", "A", "ev",
                                         "rv",    "v", "r",       "#", "Plugin", "[1]", "vrProduct", "#Author#"};
    std::string value;
    for (int i = Pick(4); i > 0; --i) value += kParts[Pick(Chance(4) ? std::size(kParts) : 9)];
    return value;
  }

  void SetValues(TVariableItem& item) {
    item.Value = Value();
    item.IdfValue = Chance(3) ? Value() : Str2Idf(item.Value);
  }

  std::mt19937 random_;
  std::vector<std::string> references_;
};

// The single scan may decline a text, but what it gives must be what the passes give; on
// template-like text it must also take most cases, or the run would not gain from it.
TEST(ExpandVarDifferential, OneScanGivesWhatThePassesGive) {
  const unsigned cases = CaseCount(20000);
  unsigned taken = 0;
  for (unsigned seed = 1; seed <= cases; ++seed) {
    TemplateLikeCase random_case(seed);
    const TWizard wizard = random_case.MakeTable();
    const std::string text = random_case.Text();
    const std::vector<std::string> pairs =
        random_case.Chance(4) ? std::vector<std::string>{"'", "[q]", "[q]", "''"} : std::vector<std::string>{};
    std::string expected = text;
    if (!PlainExpand(wizard, expected, false, pairs)) continue;
    TTokenIndex index(wizard);
    index.PrepareScan();
    std::string actual = "untouched";
    if (!ExpandInOneScan(index, text, pairs, size_t{1} << 20, actual)) {
      ASSERT_EQ(actual, "untouched") << "seed " << seed;
      continue;
    }
    ++taken;
    ASSERT_EQ(actual, expected) << "seed " << seed << " text '" << text << "'";
    std::string whole;
    ExpandVar(TExpansionTable(wizard), text, false, whole, pairs);
    ASSERT_EQ(whole, expected) << "seed " << seed;
  }
  EXPECT_GT(taken, cases / 8);
}

TEST(ExpandVarDifferential, MatchesThePlainAlgorithmOnRandomInput) {
  int compared = 0;
  const unsigned kCases = CaseCount(1500);
  for (unsigned seed = 1; seed <= kCases; ++seed) {
    RandomCase random_case(seed);
    const TWizard wizard = random_case.MakeTable();
    const std::string text = random_case.Text(40);
    const std::vector<std::string> pairs = random_case.Pairs();
    const bool one_pass = random_case.Chance(3);
    std::string expected = text;
    if (!PlainExpand(wizard, expected, one_pass, pairs)) continue;
    std::string actual;
    EXPECT_EQ(ExpandVar(wizard, text, one_pass, actual, pairs), TExpandOutcome::Complete) << "seed " << seed;
    ASSERT_EQ(actual, expected) << "seed " << seed << " one pass " << one_pass << " text '" << text << "'";
    EXPECT_EQ(ExpandVar(TExpansionTable(wizard), text, one_pass, actual, pairs), TExpandOutcome::Complete);
    ASSERT_EQ(actual, expected) << "seed " << seed << " over a prepared table";
    ++compared;
  }
  EXPECT_GT(compared, static_cast<int>(kCases / 2));
}

}  // namespace
}  // namespace tsaw
