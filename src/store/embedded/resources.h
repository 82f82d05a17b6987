// The resources of a site: cover pages, fax templates, graphics and broadcast lists. Each kind is a
// directory; its files are the resources. A broadcast list (`.rnd`, Windows-1252) bears the name that its
// first line gives behind ";", otherwise that of its file.
#pragma once

#include "base/result.h"
#include "platform/file_system.h"
#include "store/account.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_layout.h"

namespace velmora::store::embedded {

class Resources final : public DvResources {
 public:
  Resources(platform::FileSystem& fileSystem, const StoreLayout& layout, SiteDatabase& site);

  Result<std::vector<DvResourceFile>> CoverPages() override;
  Result<std::vector<DvResourceFile>> FaxTemplates() override;
  Result<std::vector<DvResourceFile>> Graphics() override;
  Result<std::vector<DvBroadcastList>> BroadcastLists() override;
  std::string BroadcastListDirectory() override;

 private:
  // The directory that the site names, else the store's own.
  std::string DirectoryOfKind(std::string_view siteValue);
  Result<std::vector<DvResourceFile>> Files(std::string_view siteValue, std::string_view mask);

  platform::FileSystem& fileSystem_;
  const StoreLayout& layout_;
  SiteDatabase& site_;
};

// Makes the store's own directories of all kinds.
Status MakeResourceDirectories(platform::FileSystem& fileSystem, const StoreLayout& layout);

}  // namespace velmora::store::embedded
