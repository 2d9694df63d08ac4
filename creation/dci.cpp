#include "creation/dci.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <random>

#include "model/text_file.h"
#include "platform/find_bytes.h"

namespace tsaw::creation {
namespace {

constexpr int kDciGroups = 8;
constexpr std::size_t kDciPieceLength = 64;

std::string HexGroups(const uint64_t (&words)[kDciGroups / 2]) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (int group = 0; group < kDciGroups; ++group) {
    if (group > 0) out += '-';
    const uint64_t word = words[group / 2];
    const uint32_t half = static_cast<uint32_t>(group % 2 == 0 ? word >> 32 : word);
    for (int shift = 28; shift >= 0; shift -= 4) out += kHex[(half >> shift) & 15];
  }
  return out;
}

uint64_t SplitMix64(uint64_t& state) {
  uint64_t z = (state += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

class RandomDciGenerator : public TDciGenerator {
 public:
  RandomDciGenerator() : engine_(Seed()) {}
  std::string NewDci(const TDciRequest&) override {
    uint64_t words[kDciGroups / 2];
    for (auto& word : words) word = engine_();
    words[0] ^= ++calls_;
    return HexGroups(words);
  }

 private:
  static uint64_t Seed() {
    std::random_device device;
    return (static_cast<uint64_t>(device()) << 32) ^ device();
  }
  std::mt19937_64 engine_;
  uint64_t calls_ = 0;
};

class ReproducibleDciGenerator : public TDciGenerator {
 public:
  explicit ReproducibleDciGenerator(std::string epoch) : epoch_(std::move(epoch)) {}
  std::string NewDci(const TDciRequest& request) override {
    uint64_t state = 0xCBF29CE484222325ull;  // FNV-1a over every input, separated by NULs
    for (const std::string* part : std::initializer_list<const std::string*>{&epoch_, &request.ObjectName, &request.Version,
                                    &request.DeepName, &request.RelativePath}) {
      for (const char c : *part) state = (state ^ static_cast<unsigned char>(c)) * 0x100000001B3ull;
      state = state * 0x100000001B3ull;
    }
    state ^= ++calls_;
    uint64_t words[kDciGroups / 2];
    for (auto& word : words) word = SplitMix64(state);
    return HexGroups(words);
  }

 private:
  std::string epoch_;
  uint64_t calls_ = 0;
};

std::size_t Indent(std::string_view line) {
  const auto first = line.find_first_not_of(' ');
  return first == std::string::npos ? line.size() : first;
}

// A view into `line`: forms are scanned line by line, and most lines are only looked at.
std::string_view Trimmed(std::string_view line) {
  const auto first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

bool IsObjectLine(std::string_view trimmed) {
  return trimmed.starts_with("object ") || trimmed.starts_with("inline ") ||
         trimmed.starts_with("inherited ");
}

// The header of a manager or plug-in object.
struct FormObject {
  std::size_t line = 0;
  std::string kind;  // "Manager" or "Plugin"
  std::string name;
};

bool ParseObjectLine(std::string_view trimmed, FormObject& object) {
  if (!trimmed.starts_with("object ") && !trimmed.starts_with("inline ")) return false;
  const auto colon = trimmed.find(':');
  if (colon == std::string::npos) return false;
  const std::string_view rest = Trimmed(trimmed.substr(colon + 1));
  // The class test is a prefix test, as ": Ttsa" found in the line is: TtsaPlugin is a plug-in.
  if (rest.starts_with("TqrxTsaMan")) {
    object.kind = "Manager";
  } else if (rest.starts_with("Ttsa")) {
    object.kind = "Plugin";
  } else {
    return false;
  }
  object.name = std::string(Trimmed(trimmed.substr(7, colon - 7)));
  return true;
}

// The text of a form string value: quoted pieces ('' is a quote), #nn characters, "+" joins.
std::string DecodeFormString(const std::string& value) {
  if (value.empty() || (value[0] != '\'' && value[0] != '#')) return value;
  std::string out;
  for (std::size_t i = 0; i < value.size();) {
    if (value[i] == '\'') {
      for (++i; i < value.size(); ++i) {
        if (value[i] != '\'') {
          out += value[i];
        } else if (i + 1 < value.size() && value[i + 1] == '\'') {
          out += '\'';
          ++i;
        } else {
          ++i;
          break;
        }
      }
    } else if (value[i] == '#') {
      std::size_t end = i + 1;
      while (end < value.size() && std::isdigit(static_cast<unsigned char>(value[end]))) ++end;
      if (end > i + 1 && std::atoi(value.substr(i + 1, end - i - 1).c_str()) < 128) {
        out += static_cast<char>(std::atoi(value.substr(i + 1, end - i - 1).c_str()));
      }
      i = end;
    } else {
      ++i;
    }
  }
  return out;
}

// Where the object's own properties are: the old identity (if any) and the end of the list.
struct PropertyScan {
  std::size_t property_indent = 0;
  std::size_t old_dci = std::string::npos;
  std::size_t old_dci_end = std::string::npos;  // one past its last continuation line
  std::size_t end = 0;                          // first child object or the object's "end"
  std::string version;
  std::string deep_name;
};

std::string PropertyValue(const std::vector<std::string>& lines, std::size_t at, std::size_t stop) {
  std::string value(Trimmed(std::string_view(lines[at]).substr(lines[at].find('=') + 1)));
  for (std::size_t next = at + 1; next < stop && !value.empty() && value.back() == '+'; ++next) {
    value += Trimmed(lines[next]);
  }
  return DecodeFormString(value);
}

PropertyScan ScanProperties(const std::vector<std::string>& lines, const FormObject& object) {
  PropertyScan scan;
  const std::size_t object_indent = Indent(lines[object.line]);
  scan.property_indent = object_indent + 2;
  std::size_t i = object.line + 1;
  for (; i < lines.size(); ++i) {
    const std::string_view trimmed = Trimmed(lines[i]);
    const std::size_t indent = Indent(lines[i]);
    if (indent <= object_indent && !trimmed.empty()) break;
    if (indent == scan.property_indent && IsObjectLine(trimmed)) break;
    if (indent != scan.property_indent) continue;
    if (trimmed.starts_with("DCI.UniqueID =")) {
      scan.old_dci = i;
      scan.old_dci_end = i + 1;
      while (scan.old_dci_end < lines.size() && Indent(lines[scan.old_dci_end]) > scan.property_indent &&
             !Trimmed(lines[scan.old_dci_end]).empty()) {
        ++scan.old_dci_end;
      }
    } else if (trimmed.starts_with("Version =")) {
      scan.version = PropertyValue(lines, i, lines.size());
    } else if (trimmed.starts_with("DeepName =")) {
      scan.deep_name = PropertyValue(lines, i, lines.size());
    }
  }
  scan.end = i;
  return scan;
}

}  // namespace

std::unique_ptr<TDciGenerator> MakeRandomDciGenerator() { return std::make_unique<RandomDciGenerator>(); }

std::unique_ptr<TDciGenerator> MakeReproducibleDciGenerator(const std::string& epoch) {
  return std::make_unique<ReproducibleDciGenerator>(epoch);
}

std::unique_ptr<TDciGenerator> MakeDciGeneratorFromEnvironment() {
  const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
  if (epoch && *epoch) return MakeReproducibleDciGenerator(epoch);
  return MakeRandomDciGenerator();
}

std::string FormatDci(const std::string& dci, int left_margin) {
  const std::string margin(static_cast<std::size_t>(std::max(left_margin, 0)), ' ');
  std::string out;
  for (std::size_t at = 0; at < dci.size(); at += kDciPieceLength) {
    if (at > 0) out += " +\r\n";
    out += margin + "'" + dci.substr(at, kDciPieceLength) + "'";
  }
  return out;
}

bool MayHoldDciObject(std::string_view form) {
  return platform::FindBytes(form, "Ttsa") != std::string_view::npos ||
         platform::FindBytes(form, "TqrxTsaMan") != std::string_view::npos;
}

void RenewDci(std::vector<std::string>& lines, const std::string& relative_path,
              TDciGenerator& generator, const std::function<void(const std::string&)>& report) {
  FormObject object;
  bool found = false;
  for (std::size_t i = 0; i < lines.size() && !found; ++i) {
    found = ParseObjectLine(Trimmed(lines[i]), object);
    object.line = i;
  }
  if (!found) return;
  const PropertyScan scan = ScanProperties(lines, object);
  report("    Data extracted from " + object.kind + " object:   Name: '" + object.name +
         "'  Version: '" + scan.version + "'  DeepName: '" + scan.deep_name + "'");
  report("    Looking for the old DCI...");
  std::size_t insert_at = scan.end;
  if (scan.old_dci != std::string::npos) {
    report("    Removing old DCI...");
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(scan.old_dci),
                lines.begin() + static_cast<std::ptrdiff_t>(scan.old_dci_end));
    insert_at = scan.old_dci;
  }
  report("      Inserting the new DCI...");
  const std::string dci = generator.NewDci({object.name, scan.version, scan.deep_name, relative_path});
  const int margin = static_cast<int>(scan.property_indent) + 2;
  report("    Formating DCI - left margin: " + std::to_string(margin));
  std::vector<std::string> property = SplitLines(FormatDci(dci, margin));
  property.insert(property.begin(), std::string(scan.property_indent, ' ') + "DCI.UniqueID =");
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(insert_at), property.begin(), property.end());
}

}  // namespace tsaw::creation
