// The checks of one file's text: its template directives, and its references to variables.

#include <algorithm>
#include <cctype>
#include <vector>

#include "lint/checks.h"
#include "platform/runtime_text.h"
#include "preprocessor/directive_scanner.h"

namespace tsaw::lint {
namespace {

// 1-based line numbers of 1-based positions; a line ends at CR, LF or CR LF.
class TLineIndex {
 public:
  explicit TLineIndex(std::string_view text) {
    starts_.push_back(0);
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      if (text[i] == '\r' || text[i] == '\n') starts_.push_back(i + 1);
    }
  }
  int LineOf(std::int64_t position) const {
    const auto it = std::upper_bound(starts_.begin(), starts_.end(), static_cast<size_t>(position - 1));
    return static_cast<int>(it - starts_.begin());
  }

 private:
  std::vector<size_t> starts_;
};

struct TOpenBlock {
  std::string Text;
  int Line = 0;
  int ElseLine = 0;
};

const char* KindName(TDirKind kind) {
  switch (kind) {
    case TDirKind::Define: return "{$DEFINE";
    case TDirKind::Undef: return "{$UNDEF";
    case TDirKind::Ifdef: return "{$IFDEF";
    case TDirKind::Ifndef: return "{$IFNDEF";
    case TDirKind::Else: return "{$ELSE";
    case TDirKind::Endif: return "{$ENDIF";
    case TDirKind::None: break;
  }
  return "";
}

// What a name that no run defines does to its directive.
const char* EffectOfUndefined(TDirKind kind) {
  switch (kind) {
    case TDirKind::Ifdef:
    case TDirKind::Ifndef: return "the condition is always false";
    default: return "it changes nothing";
  }
}

void CheckName(TLintContext& context, const std::string& file, int line, const TNextDirResult& dir) {
  const bool is_dd = dir.Name.starts_with("dd");
  const std::string lowered = platform::LowerAscii(dir.Name);
  if (!is_dd && lowered.starts_with("dd") && context.directives.contains(lowered)) {
    context.Add(file, line, TSeverity::Warning,
                dir.Text + " is not a wizard directive (only names that begin with a lower-case \"dd\" are): "
                "it stays in the generated file as written");
    return;
  }
  if (!is_dd || context.directives.contains(lowered) || lowered.starts_with("ddpluginextension_")) return;
  context.Add(file, line, TSeverity::Warning,
              "\"" + dir.Name + "\" is defined by no run: " + EffectOfUndefined(dir.Kind));
}

}  // namespace

// The preprocessor keeps one stack of open blocks for every IFDEF and IFNDEF, wizard directives
// and ordinary ones alike, so the balance is checked over all of them.
void CheckDirectives(TLintContext& context, const std::string& file, std::string_view text) {
  const TLineIndex lines(text);
  TDirScanner scanner(text);
  std::vector<TOpenBlock> open;
  for (TNextDirResult dir = scanner.Next(1); dir.Kind != TDirKind::None && !context.Full();
       dir = scanner.Next(dir.NextPos)) {
    const int line = lines.LineOf(dir.StartPos);
    if (dir.Text.empty()) {
      context.Add(file, line, TSeverity::Error,
                  std::string(KindName(dir.Kind)) + " has no closing \"}\": its name is read as empty");
    }
    switch (dir.Kind) {
      case TDirKind::Ifdef:
      case TDirKind::Ifndef:
        open.push_back({dir.Text.empty() ? std::string(KindName(dir.Kind)) : dir.Text, line, 0});
        [[fallthrough]];
      case TDirKind::Define:
      case TDirKind::Undef:
        if (!dir.Text.empty()) CheckName(context, file, line, dir);
        break;
      case TDirKind::Else:
        if (open.empty()) {
          context.Add(file, line, TSeverity::Error, "{$ELSE} without an open {$IFDEF} or {$IFNDEF}: a run fails on this file");
        } else if (open.back().ElseLine != 0) {
          context.Add(file, line, TSeverity::Error,
                      "a second {$ELSE} in the block opened on line " + std::to_string(open.back().Line));
        } else {
          open.back().ElseLine = line;
        }
        break;
      case TDirKind::Endif:
        if (open.empty()) {
          context.Add(file, line, TSeverity::Error,
                      "{$ENDIF} without an open {$IFDEF} or {$IFNDEF}: the text since the directive before it is dropped");
        } else {
          open.pop_back();
        }
        break;
      case TDirKind::None: break;
    }
  }
  for (const TOpenBlock& block : open) {
    context.Add(file, block.Line, TSeverity::Error,
                block.Text + " is never closed by {$ENDIF}: the directive is dropped and the rest of the file kept whole");
  }
}

namespace {

bool IsIdentifierChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }
bool IsNameChar(char c) { return IsIdentifierChar(c) || c == '.' || c == '[' || c == ']'; }

// True when some token is `identifier` or begins it: the expansion replaces tokens wherever they
// stand, so "vrProjects_Prefix_Shared" is "vrProjects_Prefix" followed by "_Shared".
bool StartsWithToken(const std::set<std::string>& tokens, std::string_view identifier) {
  for (size_t length = identifier.size(); length > 2; --length) {
    if (tokens.contains(std::string(identifier.substr(0, length)))) return true;
  }
  return false;
}

}  // namespace

// A name reference is "#" + a name that begins with a letter + "#" ("#13#10" is a character
// code, not a reference); an identifier token is an identifier that begins with "vr" and a
// capital letter, as every variable's token does.
void CheckReferences(TLintContext& context, const std::string& file, std::string_view text) {
  const TLineIndex lines(text);
  for (size_t i = 0; i < text.size() && !context.Full(); ++i) {
    if (text[i] == '#' && i + 1 < text.size() && std::isalpha(static_cast<unsigned char>(text[i + 1]))) {
      size_t end = i + 1;
      while (end < text.size() && IsNameChar(text[end])) ++end;
      if (end < text.size() && text[end] == '#') {
        const std::string name(text.substr(i + 1, end - i - 1));
        if (!context.names.contains(name)) {
          context.Add(file, lines.LineOf(static_cast<std::int64_t>(i + 1)), TSeverity::Warning,
                      "#" + name + "# names no variable of the wizard, the template or the configuration: "
                      "it is written as it stands");
        }
        i = end;
      }
      continue;
    }
    if (text[i] == 'v' && (i == 0 || !IsIdentifierChar(text[i - 1])) && text.substr(i, 2) == "vr" &&
        i + 2 < text.size() && std::isupper(static_cast<unsigned char>(text[i + 2]))) {
      size_t end = i + 2;
      while (end < text.size() && IsIdentifierChar(text[end])) ++end;
      const std::string_view identifier = text.substr(i, end - i);
      if (!StartsWithToken(context.tokens, identifier)) {
        context.Add(file, lines.LineOf(static_cast<std::int64_t>(i + 1)), TSeverity::Warning,
                    std::string(identifier) + " begins with no variable's identifier token: it is written as it stands");
      }
      i = end - 1;
    }
  }
}

}  // namespace tsaw::lint
