// The export of one fax: its TIFF image with page, descriptor and comment, or only image or comment.
#pragma once

#include <string>
#include <string_view>

#include "mailarchive/entry_export.h"
#include "mailarchive/user_names.h"

namespace velmora::mailarchive {

class FaxExport final : public EntryExport {
 public:
  FaxExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
            store::DvFaxItem& fax, UserNames& userNames)
      : EntryExport(context, userTexts, place, fax.Item()), fax_(fax), userNames_(userNames) {}

  void ReadValues() override;

 private:
  void WriteEntry(bool failed, std::string_view statusText) override;
  void WritePage();
  // Copies the image and counts the fax. The image's path by the name asked for where the copy failed.
  std::string CopyImage(std::string_view fileName);
  void WriteOnlyImage();

  store::DvFaxItem& fax_;
  UserNames& userNames_;
};

}  // namespace velmora::mailarchive
