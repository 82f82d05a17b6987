// The site data of a store, one SQLite file `code\site.db`: users, and values by name.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/address_item.h"
#include "store/embedded/users.h"

namespace velmora::store::embedded {

// Names of the site's values; each is a text, "" while not set.
namespace site_value {
inline constexpr std::string_view Server = "server";  // the server's name, part of every path; set once
inline constexpr std::string_view Company = "company";
inline constexpr std::string_view SiteID = "site-id";
inline constexpr std::string_view SiteEnvironment = "site-environment";
inline constexpr std::string_view SiteIDChg = "site-id-chg";
inline constexpr std::string_view SiteReg = "site-reg";
inline constexpr std::string_view Account = "account";
inline constexpr std::string_view Sendmail = "sendmail";  // host path of the program that takes outgoing mail
// Directories of the resources as Windows paths; unset: the one below `code\`.
inline constexpr std::string_view CoverPages = "cover-pages";
inline constexpr std::string_view FaxTemplates = "fax-templates";
inline constexpr std::string_view Graphics = "graphics";
inline constexpr std::string_view BroadcastLists = "broadcast-lists";
}  // namespace site_value

class SiteDatabase {
 public:
  SiteDatabase(SiteDatabase&&) noexcept;
  SiteDatabase& operator=(SiteDatabase&&) noexcept;
  ~SiteDatabase();

  // Host paths. Create fails when the file holds site data already; Open when it does not (Damaged,
  // NotFound).
  static Result<SiteDatabase> Create(const std::string& hostPath, std::string_view serverName,
                                     const UserRecord& administrator);
  static Result<SiteDatabase> Open(const std::string& hostPath);

  Result<std::vector<UserRecord>> Users();  // by id
  Result<std::optional<UserRecord>> FindUserByLogin(std::string_view loginName);
  // The record with its new id. Failed when the login name is taken.
  Result<UserRecord> AddUser(UserRecord user);

  // The user's own address; empty where none was given. Set replaces it as a whole.
  Result<AddressValues> Card(int userId);
  Status SetCard(int userId, const AddressValues& values);

  Result<std::string> Value(std::string_view name);
  Status SetValue(std::string_view name, std::string_view value);

 private:
  struct State;
  explicit SiteDatabase(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace velmora::store::embedded
