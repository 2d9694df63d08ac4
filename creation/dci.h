#pragma once
// The component identity block (DCI) of manager and plug-in forms: its generator, its layout as a
// form property, and its renewal in the lines of a text form file.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tsaw::creation {

// What an identity is made from.
struct TDciRequest {
  std::string ObjectName;
  std::string Version;
  std::string DeepName;
  std::string RelativePath;  // the destination file's path relative to the Project Set folder
};

// Makes identity texts: 8 groups of 8 hexadecimal digits joined by "-".
class TDciGenerator {
 public:
  virtual ~TDciGenerator() = default;
  virtual std::string NewDci(const TDciRequest& request) = 0;
};

// Unique on every call: random bits from std::random_device mixed with a call counter.
std::unique_ptr<TDciGenerator> MakeRandomDciGenerator();
// A fixed function of `epoch`, the request and a per-generator call counter, so that two runs
// with the same answers write the same identities.
std::unique_ptr<TDciGenerator> MakeReproducibleDciGenerator(const std::string& epoch);
// The reproducible generator when SOURCE_DATE_EPOCH is set, else the random one.
std::unique_ptr<TDciGenerator> MakeDciGeneratorFromEnvironment();

// The property value of an identity: pieces of 64 characters, each on its own line as
// `left_margin` blanks + "'" + piece + "'", lines joined by " +" and CR LF.
std::string FormatDci(const std::string& dci, int left_margin);

// Renews the identity of the first manager (class ": TqrxTsaMan...") or plug-in (": Ttsa...") object in the
// form `lines`: the old "DCI.UniqueID =" property and its continuation lines go, the new one takes
// its place (or, without an old one, follows the object's last property before its first child
// object or its "end"), at the object's property indentation. A form without such an object is
// left unchanged. Progress lines go to `report`.
void RenewDci(std::vector<std::string>& lines, const std::string& relative_path,
              TDciGenerator& generator, const std::function<void(const std::string&)>& report);

// False when no line of the form text can open such an object (neither class name is in it), so
// RenewDci would leave it unchanged and say nothing: most forms need not be split into lines.
bool MayHoldDciObject(std::string_view form);

}  // namespace tsaw::creation
