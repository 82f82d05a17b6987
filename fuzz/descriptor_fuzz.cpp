// Descriptors of foreign mail archives: no path that a parser gives leaves the directory, and what is read
// can be written and read again.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/text.h"
#include "mailarchive/format/descriptor.h"
#include "require.h"

namespace {

namespace mailarchive = velmora::mailarchive;

using velmora::fuzz::Require;

void RequireContained(std::string_view path) {
  Require(path.find_first_of(":*?") == std::string_view::npos && !path.starts_with('\\') &&
          !path.starts_with('/'));
  for (const auto& piece : velmora::Split(velmora::ReplaceAll(path, "/", "\\"), "\\")) Require(piece != "..");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto index = mailarchive::ParseIndexFields(bytes);
  const auto entry = mailarchive::ParseEntryFields(bytes);
  const auto attachments = mailarchive::SplitAttachments(entry.Attachments);
  for (const auto* path : {&entry.Body, &entry.Eml, &entry.Smtp, &entry.Comment, &entry.MailArcEntry,
                           &entry.MailArcAdd, &index.Comment}) {
    RequireContained(*path);
  }
  for (const auto& path : attachments) RequireContained(path);

  const auto write = [&](const mailarchive::IndexFields& fields) {
    return mailarchive::FormatDescriptor({.Sortaddr = fields.Sortaddr,
                                          .Subject = fields.Subject,
                                          .Date = fields.Date,
                                          .From = fields.From,
                                          .To = fields.To,
                                          .Flags = fields.Flags,
                                          .MailArcEntry = entry.MailArcEntry,
                                          .MailArcAdd = entry.MailArcAdd,
                                          .Body = entry.Body,
                                          .Eml = entry.Eml,
                                          .Smtp = entry.Smtp,
                                          .Comment = entry.Comment,
                                          .Attachments = attachments,
                                          .HasAttachments = true});
  };
  const auto written = write(index);
  const auto indexAgain = mailarchive::ParseIndexFields(written);
  const auto entryAgain = mailarchive::ParseEntryFields(written);
  Require(indexAgain.Date == index.Date && indexAgain.Flags == index.Flags);
  Require(entryAgain.Body == entry.Body && entryAgain.Eml == entry.Eml && entryAgain.Smtp == entry.Smtp);
  Require(mailarchive::SplitAttachments(entryAgain.Attachments).size() <= attachments.size());
  // The first writing makes blanks of control characters; from then on a text stays as it is.
  const auto indexThird = mailarchive::ParseIndexFields(write(indexAgain));
  Require(indexThird.Subject == indexAgain.Subject && indexThird.Sortaddr == indexAgain.Sortaddr);
  return 0;
}
