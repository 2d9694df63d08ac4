// Job loading with its default-value layers over any file, then what a run does with the answers
// before it writes: the circular-reference check and the answers' bounds.

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_root.h"
#include "jobs/job_loader.h"
#include "model/answer_check.h"
#include "model/expand.h"
#include "templates/catalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const tsaw::fuzz::FuzzRoot root;
  const std::filesystem::path job = root.path() / "TSA/Wizard/Jobs/Job.ini";
  tsaw::fuzz::FuzzRoot::Write(job, tsaw::fuzz::AsText(data, size));
  tsaw::TWizard wizard = root.MakeWizard();
  if (!tsaw::Load_Job(wizard, job).empty()) return 0;
  tsaw::TCatalogue catalogue(wizard);
  try {
    catalogue.Open();
  } catch (const std::length_error&) {
    return 0;
  }
  tsaw::AnyCvrError(wizard, nullptr);
  tsaw::FirstAnswerBeyondBounds(wizard);
  return 0;
}
