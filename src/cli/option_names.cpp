#include "cli/option_names.h"

#include "base/text.h"

namespace velmora::cli {
namespace {

bool IsCapital(char c) { return c >= 'A' && c <= 'Z'; }

}  // namespace

std::string KebabCase(std::string_view pascalCase) {
  std::string name;
  for (const char c : pascalCase) {
    if (IsCapital(c) && !name.empty()) name += '-';
    name += c;
  }
  return ToLower(name);
}

std::string CamelCase(std::string_view pascalCase) {
  return ToLower(pascalCase.substr(0, 1)) + std::string(pascalCase.substr(pascalCase.empty() ? 0 : 1));
}

}  // namespace velmora::cli
