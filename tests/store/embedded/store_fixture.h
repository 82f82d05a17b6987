// A whole store in a temporary directory: the administrator "anna" and the user "bert".
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_layout.h"
#include "store/embedded/store_setup.h"
#include "store/errors.h"
#include "support/temp_dir.h"
#include "support/test_store.h"

namespace velmora::store::embedded {

class StoreFixture : public testing::Test {
 protected:
  StoreFixture() : location_{"BUERO", directory_.HostPath("store")}, layout_("BUERO") {
    velmora::test::CopyTestStore(velmora::test::BueroStore, location_.HostDirectory);
    fileSystem_ = platform::MakeHostFileSystem({MappingOf(location_)});
    bert_ = Site().FindUserByLogin("bert").value().value();
    anna_ = SignOn("anna");
  }

  UserRecord AddTestUser(const std::string& name, const std::string& login, std::uint32_t rights) {
    auto site = Site();
    ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
    auto user = AddUser(*fileSystem_, tree, layout_, site, {0, name, login, login + "@example.org", rights});
    if (!user) throw std::runtime_error(user.error().Text);
    return *user;
  }

  SiteDatabase Site() {
    auto site = SiteDatabase::Open(SiteDatabasePath(location_.HostDirectory));
    if (!site) throw std::runtime_error(site.error().Text);
    return std::move(*site);
  }

  Result<std::unique_ptr<DvAccount>> TrySignOn(const std::string& login, std::string_view server = "") {
    return OpenEmbeddedApi(*fileSystem_, platform::SystemClock(), {location_}, login)->Logon(server);
  }
  std::unique_ptr<DvAccount> SignOn(const std::string& login) {
    auto account = TrySignOn(login);
    if (!account) throw std::runtime_error(account.error().Text);
    return std::move(*account);
  }

  // What the administrator reaches under a path; the test fails when there is nothing.
  std::shared_ptr<DvArchive> Archive(std::string_view path) { return Archive(*anna_, path); }
  static std::shared_ptr<DvArchive> Archive(DvAccount& account, std::string_view path) {
    auto archive = account.GetArchive(path);
    if (!archive) throw std::runtime_error(std::string(path) + ": " + archive.error().Text);
    return *archive;
  }
  static std::shared_ptr<DvArchive> Create(DvArchive& parent, std::string_view name) {
    auto archive = parent.CreateSubArchive(name);
    if (!archive) throw std::runtime_error(archive.error().Text);
    return *archive;
  }
  // The error number of a result, 0 for none.
  template <typename R>
  static int ErrorOf(const R& result) {
    return result ? 0 : result.error().Number;
  }

  velmora::test::TempDir directory_;
  StoreLocation location_;
  StoreLayout layout_;
  std::unique_ptr<platform::FileSystem> fileSystem_;
  UserRecord bert_;
  std::unique_ptr<DvAccount> anna_;
};

inline constexpr std::string_view PlainMessage =
    "From: Carl <carl@example.net>\r\nTo: anna@example.org\r\nSubject: Angebot\r\n"
    "Date: Mon, 2 Nov 2026 10:00:00 +0100\r\n\r\nGuten Tag\r\n";

}  // namespace velmora::store::embedded
