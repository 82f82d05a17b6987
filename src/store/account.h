// The session with a server: signing on, special archives, users, site.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/address_item.h"
#include "store/archive.h"
#include "store/errors.h"
#include "store/patience.h"

namespace velmora::store {

// Arguments of GetSpecialArchive. Those without a name of their own only serve the icon table.
namespace special {
inline constexpr int ArchiveRoot = 0;  // administrators only
inline constexpr int UserRoots = 1;    // root of all user archives
inline constexpr int Common = 2;
inline constexpr int PublicAddresses = 4;
inline constexpr int OwnRoot = 100;
inline constexpr int Inbox = 101;
inline constexpr int Outgoing = 102;  // send jobs
inline constexpr int PersonalAddresses = 106;
}  // namespace special

// Bits of a user's rights that the program tests.
namespace trustee {
inline constexpr std::uint32_t Administrator = 0x10;
inline constexpr std::uint32_t MoveArchives = 0x200;
inline constexpr std::uint32_t DeleteArchives = 0x1000;
inline constexpr std::uint32_t Expert = 0x2000;
}  // namespace trustee

inline constexpr int DvProductDavidMobile = 9;

class DvUser {
 public:
  virtual ~DvUser() = default;
  virtual std::string Name() = 0;
  virtual int UserID() = 0;
  virtual std::string LoginName() = 0;
  virtual std::uint32_t Trustees() = 0;
  virtual std::string Mailaddress() = 0;
  // The user's own address, without values where none was given. It stands in no archive: to be read only.
  virtual Result<std::unique_ptr<DvAddressItem>> VCard() {
    return Fail(store_error::NotFound, "Der Benutzer hat keine Adresse");
  }
};

struct DvBroadcastList {
  std::string Name;
  std::string FilePath;
};

// Each a list of files: name and Windows path.
struct DvResourceFile {
  std::string Name;
  std::string FilePath;
};

class DvResources {
 public:
  virtual ~DvResources() = default;
  virtual Result<std::vector<DvResourceFile>> CoverPages() = 0;
  virtual Result<std::vector<DvResourceFile>> FaxTemplates() = 0;
  virtual Result<std::vector<DvResourceFile>> Graphics() = 0;
  virtual Result<std::vector<DvBroadcastList>> BroadcastLists() = 0;
  virtual std::string BroadcastListDirectory() = 0;  // Windows path, without "\\" at the end
};

struct DvSite {
  std::string Company, SiteID, SiteEnvironment, SiteIDChg, SiteReg, Account;
};

class DvAccount {
 public:
  virtual ~DvAccount() = default;
  virtual DvUser& User() = 0;
  virtual Result<std::vector<std::unique_ptr<DvUser>>> Users() = 0;
  virtual std::string Description() = 0;  // the server's name
  virtual std::string DavidRoot() = 0;    // Windows path of the David installation
  virtual std::string ProductName() = 0;
  virtual std::string BackendDescription() = 0;
  virtual int Product() = 0;
  virtual int BackendType() = 0;
  virtual Result<DvSite> Site() = 0;
  virtual DvResources& Resources() = 0;

  // A FullPath with "/" or "\", from the root or relative to it, or a physical directory in each of its
  // forms; without regard to case. NotFound, or NoAccess when the user lacks the right.
  virtual Result<std::shared_ptr<DvArchive>> GetArchive(std::string_view path) = 0;
  Result<std::shared_ptr<DvArchive>> GetArchiveByVariant(std::string_view path) { return GetArchive(path); }
  virtual Result<std::shared_ptr<DvArchive>> GetSpecialArchive(int kind) = 0;

  // --- Mail files. ---
  // Writes a mail item as an EML file and returns its Windows path: the path of the entry's own source where
  // it has one (do not change it), else of one temporary file in `temporaryDirectory` that the next call
  // reuses.
  virtual Result<std::string> DVEmlFromMailItem(DvItem& item, std::string_view temporaryDirectory) = 0;
  // Makes an entry of an EML file in the target archive; the file's bytes are kept as the entry's source.
  virtual Result<std::unique_ptr<DvItem>> DVMailItemFromEml(std::string_view path, DvArchive& target) = 0;

  // How long reading waits for other processes from now on (store_error::Busy when it is over); what is being
  // written has the usual patience always. The usual one at first.
  virtual void SetPatience(Patience) {}
  // Commits what is pending in every archive; cheap when nothing is.
  virtual Status Commit() = 0;
  // What went wrong since the last call without costing more than an entry in the server's own logs; nothing
  // mostly.
  virtual std::optional<Error> TakeWarning() { return std::nullopt; }
  virtual void Logoff() = 0;
};

// While it lives, reading waits for nobody. A null account is none of its business.
class ImpatientReading {
 public:
  explicit ImpatientReading(DvAccount* account) : account_(account) {
    if (account_ != nullptr) account_->SetPatience(Patience::None);
  }
  ~ImpatientReading() {
    if (account_ != nullptr) account_->SetPatience(Patience::Usual);
  }
  ImpatientReading(const ImpatientReading&) = delete;
  ImpatientReading& operator=(const ImpatientReading&) = delete;

 private:
  DvAccount* account_;
};

// The root object of a backend.
class DvISEAPI {
 public:
  virtual ~DvISEAPI() = default;
  virtual int MajorVersion() = 0;
  virtual int MinorVersion() = 0;
  virtual int Revision() = 0;
  virtual std::string Description() = 0;
  // `server`: the server's name, "" for the default one. The user is the operating system's.
  virtual Result<std::unique_ptr<DvAccount>> Logon(std::string_view server) = 0;
};

}  // namespace velmora::store
