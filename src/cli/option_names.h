// The names of properties as options and as JSON keys.
#pragma once

#include <string>
#include <string_view>

namespace velmora::cli {

std::string KebabCase(std::string_view pascalCase);  // "SecondEMail": "second-e-mail"
std::string CamelCase(std::string_view pascalCase);  // "SecondEMail": "secondEMail"

}  // namespace velmora::cli
