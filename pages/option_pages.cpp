#include "pages/option_pages.h"

#include <algorithm>
#include <array>

#include "model/ini_file.h"
#include "pages/variable_edit.h"
#include "platform/debug_log.h"

namespace tsaw {

namespace {

constexpr std::array<TOption, 5> kLoggingOptions{{
    {"labUseTLG", "Use TesseraLogger", "cbxUseTLG", " Enable logging capabilities via TesseraLogger ",
     viLoggingUseTLG},
    {"labLogComments", "Log comments", "cbxLogComments",
     " Keep the existing comments dumping in the template ", viLoggingLogComments},
    {"labLogInitFinit", "Log init/finaliz sections", "cbxLogInitFinit",
     " Log units Initialization and Finalization sections ", viLoggingLogInitFinit},
    {"labLogPinCreation", "Log plugin object creation", "cbxLogPinCreation", " Log plugin object creation ",
     viLoggingLogPinCreation},
    {"labLogFunctionResults", "Log function results", "cbxLogFunctionResults", " Log function results ",
     viLoggingLogFunctionResults},
}};

constexpr std::array<TOption, 1> kCosmeticOptions{{
    {"labCommentedHeaders", "Use commented headers", "cbxCommentedHeaders",
     " Use commend version of the methods/routines headers ", viCosmeticCommentedHeaders},
}};

constexpr std::string_view kMasterBox = "cbxUseTLG";

const std::array<TAdvice, 5> kLoggingAdvice{{
    {"cbxUseTLG",
     "\"Use TesseraLogger \" is required for all other items in this page to be enabled. If it's deselected, "
     "any other item currently selected is deselected as well."},
    {"cbxLogComments",
     "\"Log comments\" keeps those source lines responsible for dumping sensitive comments all through the "
     "projects.\r\n\r\nExample:\r\n\r\n"
     "      if debOn then Log('now loading plugin: %s', [PinName]);"},
    {"cbxLogInitFinit",
     "\"Log init/finaliz sections\" keeps those source lines that dump the \"ins\" and \"outs\" the "
     "initialization and finalization sections.\r\n\r\nExample:\r\n\r\n"
     "      initialization\r\n"
     "        if debOn then Log (debUnit+'initialization');\r\n"
     "      finalization\r\n"
     "        if debOn then Log (debUnit+'finalization');\r\n"
     "      end."},
    {"cbxLogPinCreation",
     "\"Log plugin object creation\" keeps those source lines that dump info about the plugin object "
     "creation in the RegisterTessera() statical routine."},
    {"cbxLogFunctionResults",
     "\"Log function results\" keeps those source lines that dump the result of all function "
     "routines/methods.\r\n\r\nExample:\r\n\r\n"
     "      function Sum (A,B:Integer) :Integer;\r\n"
     "      begin\r\n"
     "        try\r\n"
     "          Result := A + B;\r\n"
     "        finally\r\n"
     "          if debOn then RLog(Result);\r\n"
     "        end;\r\n"
     "      end;"},
}};

const std::array<TAdvice, 1> kCosmeticAdvice{{
    {"cbxCommentedHeaders",
     "\"Use commented headers\" causes the header of the methods and routines (in the implementation "
     "section) to be more informative, holding remarks.\r\n\r\nExample:\r\n\r\n"
     "      {==========================)\r\n"
     "      function Sum (A,B:Integer) :Integer;\r\n"
     "      {==========================)\r\n"
     "\r\n"
     "      Returns the result of the calc.\r\n"
     "      Notes: none.\r\n"
     "      {==========================}"},
}};

}  // namespace

TOptionsPage::TOptionsPage(TWizard& wizard, TPageRecall& recall, std::span<const TOption> options)
    : TPageModel(wizard, recall), checked_(options.size(), false), options_(options) {}

int TOptionsPage::IndexOf(std::string_view box) const {
  for (std::size_t i = 0; i < options_.size(); ++i) {
    if (options_[i].Box == box) return static_cast<int>(i);
  }
  return -1;
}

bool TOptionsPage::Checked(std::string_view box) const {
  const int i = IndexOf(box);
  return i >= 0 && checked_[i];
}

void TOptionsPage::Load_Controls() {
  for (std::size_t i = 0; i < options_.size(); ++i) {
    const uint16_t var = options_[i].VarIdx;
    checked_[i] = var < wizard_.Variables.size() && IniBool(wizard_.Variables[var].Value);
  }
  SettleLoadedBoxes();
}

void TOptionsPage::cbx_OnClick(std::string_view box, bool checked) {
  const int i = IndexOf(box);
  if (i < 0) return;
  checked_[i] = checked;
  WriteVariables();
}

void TOptionsPage::lab_OnClick(std::string_view label) {
  for (std::size_t i = 0; i < options_.size(); ++i) {
    if (options_[i].Label == label) {
      cbx_OnClick(options_[i].Box, !checked_[i]);
      return;
    }
  }
}

void TOptionsPage::WriteVariables() {
  for (std::size_t i = 0; i < options_.size(); ++i) {
    const uint16_t var = options_[i].VarIdx;
    if (var < wizard_.Variables.size()) Assign_Value(wizard_.Variables[var], checked_[i] ? "True" : "False");
  }
}

TLoggingPage::TLoggingPage(TWizard& wizard, TPageRecall& recall)
    : TOptionsPage(wizard, recall, kLoggingOptions) {}

std::string_view TLoggingPage::Introduction() const {
  return "TesseraLogger is the built-in mechanism for dumping entries to a text-based log file. The Tessera "
         "Engine uses it and your projects should do it as well.\r\n\r\nHere you determine whether to use it "
         "and which level of logging features you wish from those supported by the template.";
}

void TLoggingPage::cbx_OnClick(std::string_view box, bool checked) {
  platform::ScopedRoutine log("TSaW_frmLogging.TfrmLogging.cbx_OnClick");
  const int i = IndexOf(box);
  if (i < 0) return;
  checked_[i] = checked;
  if (box == kMasterBox) {
    master_on_ = checked;
    if (!checked) std::fill(checked_.begin(), checked_.end(), false);
  } else if (!master_on_) {
    checked_[i] = false;
  }
  WriteVariables();
}

void TLoggingPage::SettleLoadedBoxes() { cbx_OnClick(kMasterBox, Checked(kMasterBox)); }

std::optional<std::string> TLoggingPage::AdviceFor(std::string_view control) const {
  return FindAdvice(kLoggingAdvice, control);
}

TCosmeticsPage::TCosmeticsPage(TWizard& wizard, TPageRecall& recall)
    : TOptionsPage(wizard, recall, kCosmeticOptions) {}

std::string_view TCosmeticsPage::Introduction() const {
  return "As the tittle suggests, the cosmetic options do not interfere with the logic in the projects.";
}

std::optional<std::string> TCosmeticsPage::AdviceFor(std::string_view control) const {
  return FindAdvice(kCosmeticAdvice, control);
}

}  // namespace tsaw
