#include "support/test_store.h"

#include <filesystem>

namespace velmora::test {

void CopyTestStore(const StoreTemplate& store, const std::string& directory) {
  std::filesystem::copy(std::filesystem::path(VELMORA_TEST_STORES) / store.Server, directory,
                        std::filesystem::copy_options::recursive);
}

}  // namespace velmora::test
