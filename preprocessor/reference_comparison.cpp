#include "preprocessor/reference_comparison.h"

#include <memory>
#include <vector>

#include "preprocessor/directive_list.h"
#include "preprocessor/model_processor.h"
#include "preprocessor/reference_preprocessor.h"

namespace tsaw::reference {
namespace {

using BlockList = std::vector<std::unique_ptr<TDirBlock>>;

struct Outcome {
  std::string text;  // the result, or "error: " and the message
  bool failed = false;
  TDefines defines;
  BlockList blocks;
};

template <typename Process>
Outcome Run(const TDefines& defines, Process&& process) {
  Outcome outcome;
  outcome.defines = defines;
  try {
    outcome.text = process(outcome.defines, outcome.blocks);
  } catch (const TPreprocessorError& error) {
    outcome.text = std::string("error: ") + error.what();
    outcome.failed = true;
  }
  return outcome;
}

std::string Describe(const TDefines& defines) {
  std::string lines;
  for (const TDefines::Entry& entry : defines.Entries())
    lines += entry.Name + "=" + entry.Value + "\n";
  return lines;
}

std::string Describe(const BlockList& blocks) {
  std::string lines;
  for (const auto& block : blocks) {
    std::size_t parent = 0;
    while (parent < blocks.size() && blocks[parent].get() != block->Parent) ++parent;
    lines += std::to_string(static_cast<int>(block->Kind)) + " " + block->Name + " " +
             block->IfText + " " + block->ElseText + " " + block->EndifText + " " +
             std::to_string(block->IfStart) + " " + std::to_string(block->IfClose) + " " +
             std::to_string(block->ElseStart) + " " + std::to_string(block->ElseClose) + " " +
             std::to_string(block->EndifStart) + " " + std::to_string(block->EndifClose) +
             " level " + std::to_string(block->Level) + " parent " + std::to_string(parent) +
             " cond " + std::to_string(block->Cond) + " dd " + std::to_string(block->IsDd) + "\n";
  }
  return lines;
}

std::string Mismatch(const char* what, const std::string& processor, const std::string& reference) {
  return std::string(what) + " differ:\nprocessor: [" + processor + "]\nreference: [" + reference +
         "]";
}

}  // namespace

std::string DifferenceFromReference(std::string_view text, const TDefines& defines,
                                    bool remove_markers) {
  const Outcome processor = Run(defines, [&](TDefines& table, BlockList& blocks) {
    TqrxModelProcessor fresh;
    std::string out = fresh.ProcessText(text, table, remove_markers);
    blocks = std::move(fresh.Blocks);
    return out;
  });
  if (processor.failed && processor.text.find("blocks are nested deeper than") != std::string::npos)
    return {};
  const Outcome reference = Run(defines, [&](TDefines& table, BlockList& blocks) {
    return ProcessText(text, table, remove_markers, blocks, static_cast<int>(kMaxNesting));
  });
  if (processor.text != reference.text) return Mismatch("results", processor.text, reference.text);
  if (processor.failed) return {};
  const std::string processor_defines = Describe(processor.defines);
  const std::string reference_defines = Describe(reference.defines);
  if (processor_defines != reference_defines) {
    return Mismatch("constants", processor_defines, reference_defines);
  }
  const std::string processor_blocks = Describe(processor.blocks);
  const std::string reference_blocks = Describe(reference.blocks);
  if (processor_blocks != reference_blocks)
    return Mismatch("open blocks", processor_blocks, reference_blocks);
  return {};
}

}  // namespace tsaw::reference
