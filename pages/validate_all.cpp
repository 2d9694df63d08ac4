#include "pages/validate_all.h"

#include <memory>

#include "pages/common_page.h"
#include "pages/languages_page.h"
#include "pages/manager_page.h"
#include "pages/output_page.h"
#include "pages/plugin_page.h"
#include "platform/debug_log.h"

namespace tsaw {

namespace {

template <typename Page>
void CheckPage(TWizard& wizard, TPageMemory& memory, TPageKind kind, const char* title,
               std::vector<TPageFailure>& failures) {
  Page page(wizard, memory.For(kind));
  TPageErrors errors = page.CheckAnswers();
  if (!errors.Empty()) failures.push_back({title, std::move(errors)});
}

}  // namespace

std::vector<TPageFailure> ValidateAllAnswers(TWizard& wizard) {
  platform::ScopedRoutine log("TSaW_Pages.ValidateAllAnswers");
  TPageMemory memory;
  std::vector<TPageFailure> failures;
  CheckPage<TLanguagesPage>(wizard, memory, TPageKind::Languages, "Platforms & Languages", failures);
  CheckPage<TCommonPage>(wizard, memory, TPageKind::Common, "Common Properties", failures);
  CheckPage<TManagerPage>(wizard, memory, TPageKind::Manager, "Manager Properties", failures);
  CheckPage<TPluginPage>(wizard, memory, TPageKind::Plugin, "Plugin Properties", failures);
  CheckPage<TOutputPage>(wizard, memory, TPageKind::Output, "Output Settings", failures);
  return failures;
}

std::string FormatFailures(const std::vector<TPageFailure>& failures) {
  std::string text;
  for (const TPageFailure& failure : failures) {
    if (!text.empty()) text += "\r\n";
    text += failure.Title + " - " + ValidationCaption(failure.Errors.Count()) + "\r\n";
    text += failure.Errors.Text() + "\r\n";
  }
  return text;
}

}  // namespace tsaw
