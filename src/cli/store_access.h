// A velmoractl command's way into a store.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/account.h"
#include "store/embedded/store_location.h"

namespace velmora::cli {

// An account of the operating system's user on the store that a command works on.
struct SignedOnStore {
  store::embedded::StoreLocation Location;
  std::unique_ptr<platform::FileSystem> FileSystem;
  std::shared_ptr<store::DvISEAPI> Api;
  std::unique_ptr<store::DvAccount> Account;

  bool IsAdministrator() const { return (Account->User().Trustees() & store::trustee::Administrator) != 0; }
};

// `storeOption`: the directory that the command line names, "" for none. On a first start a store is made,
// and the user told. LogonFailed also for a user without rights.
Result<SignedOnStore> SignOn(const std::string& storeOption);

// The same for a command that is an administrator's alone. Otherwise the exit status, once it has been told
// why; `refusal` is for a user with fewer rights.
tl::expected<SignedOnStore, int> SignOnAsAdministrator(const std::string& storeOption,
                                                       std::string_view refusal);

// The Windows path of a file that the user named on the command line.
std::string WindowsPath(platform::FileSystem& fileSystem, const std::string& hostPath);

}  // namespace velmora::cli
