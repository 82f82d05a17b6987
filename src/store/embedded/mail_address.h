// What may be handed on as a mail address.
#pragma once

#include <string_view>

namespace velmora::store::embedded {

// Whether an address can be an argument of a mail program: not empty, no leading "-", no control character,
// blank or special character of an address list.
bool IsPlainAddress(std::string_view address);

}  // namespace velmora::store::embedded
