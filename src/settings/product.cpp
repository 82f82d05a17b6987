#include "settings/product.h"

namespace velmora::settings {

ProductVersion RunningVersion() {
  return {VELMORA_VERSION_MAJOR, VELMORA_VERSION_MINOR, VELMORA_VERSION_PATCH};
}

}  // namespace velmora::settings
