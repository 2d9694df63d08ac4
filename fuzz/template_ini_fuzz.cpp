// Template.ini validation and the template's default values, over any file: the catalogue finds
// the template, validates it and, when it is valid, selects it with its values.

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_root.h"
#include "templates/catalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const tsaw::fuzz::FuzzRoot root;
  tsaw::fuzz::FuzzRoot::Write(root.TemplateFile("Template.ini"), tsaw::fuzz::AsText(data, size));
  tsaw::TWizard wizard = root.MakeWizard();
  tsaw::TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  tsaw::TCatalogueNode* node = catalogue.Find_Node(root.TemplatesFolder() + "Apps/Tiny");
  try {
    if (node) catalogue.Select(node);
  } catch (const std::length_error&) {
    // More declared variables than the table holds: refused with a message.
  }
  return 0;
}
