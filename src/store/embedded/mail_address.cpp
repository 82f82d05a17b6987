#include "store/embedded/mail_address.h"

#include "base/text.h"

namespace velmora::store::embedded {

bool IsPlainAddress(std::string_view address) {
  static constexpr std::string_view Special = " <>()[],;:\\\"";
  return !address.empty() && address.front() != '-' && IsValidUtf8(address) &&
         BlankControlCharacters(address) == address &&
         address.find_first_of(Special) == std::string_view::npos;
}

}  // namespace velmora::store::embedded
