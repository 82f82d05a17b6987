#include "support/test_store.h"

#include <filesystem>

#include "support/stores_lock.h"

namespace velmora::test {

void CopyTestStore(const StoreTemplate& store, const std::string& directory) {
  const StoresLock lock(VELMORA_TEST_STORES, StoresUse::Copy);
  std::filesystem::copy(std::filesystem::path(VELMORA_TEST_STORES) / store.Server, directory,
                        std::filesystem::copy_options::recursive);
}

}  // namespace velmora::test
