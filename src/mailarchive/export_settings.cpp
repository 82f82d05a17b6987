#include "mailarchive/export_settings.h"

#include "addresses/address_target.h"

namespace velmora::mailarchive {

ExportOptions ExportOptionsOf(const settings::Options& options) {
  ExportOptions result;
  result.NoDuplicates = options.NoDuplicateFiles;
  result.MakeIndex = options.MakeIndex;
  result.DeleteArchives = options.DeleteArchive;
  result.DateIndexSortedUp = options.DateIndexSortedUp;
  result.CreateAutorunInf = options.CreateAutorunInf;
  result.ItemFilter = static_cast<std::uint32_t>(options.DvItemFilter);
  result.InhibitItems = options.DvInhibitItems;
  result.SeparateAttachmentsFolder = options.SeparateAttachmentsFolder;
  result.AttachmentFolder = options.AttachmentFolder;
  result.HtmlMailFolder = options.HTMLMailFolder;
  result.FaxFolder = options.FaxFolder;
  result.EmlFolder = options.EMLFolder;
  result.VcfFolder = options.VCFFolder;
  result.VoiceMailFolder = options.VoiceMailFolder;
  result.CommentFolder = options.CommentFolder;
  result.AddressFormat = addresses::FormatOfSetting(options.AddressExportFormat);
  result.AddressBookName = options.DefaultAddressbookName;
  result.AddressFiles.CsvSeparator = options.CSVSeparator;
  result.AddressFiles.NabSeparator = options.NABSeparator;
  return result;
}

}  // namespace velmora::mailarchive
