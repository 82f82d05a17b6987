#include "mailarchive/fax_export.h"

#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/links.h"

namespace velmora::mailarchive {

void FaxExport::ReadValues() {
  subject_ = Trim(Read(fax_.Subject()));
  to_ = TextField(store::tag::RecipientAddress);
  if (to_.empty()) to_ = TextField(store::tag::RecipientText);
  from_ = TextField(store::tag::SenderAddress);
  if (from_.empty()) from_ = userNames_.NameOf(static_cast<int>(NumberField(store::tag::Creator)));
  if (subject_.empty()) subject_ = to_;
  if (subject_.empty()) subject_ = from_;
  base_ = EntryBaseName(subject_);
  SetDate(store::FieldDate(Field(store::tag::StatusTime)));
  sendStatus_ = static_cast<int>(NumberField(store::tag::SendStatus));
}

void FaxExport::WriteEntry(bool, std::string_view) {
  if (!options_.OnlyOriginals && !options_.OnlyComments) return WritePage();
  if (options_.OnlyComments && WriteOnlyComment()) {
    ++context_.run.counters.Faxes;
    AskForDeletion();
  }
  if (options_.OnlyOriginals) WriteOnlyImage();
}

void FaxExport::WritePage() {
  const auto form = OpenForm(Form::Fax);
  if (!form) return;
  Page page;
  page.Descriptor.Kind = EntryKind::Fax;
  page.FileName = files_.FreePageName("Fax_" + base_ + ".htm");
  page.Base = page.FileName.substr(0, page.FileName.find('.'));
  page.Descriptor.Body = CopyImage(page.Base + ".tif");
  const std::string imageLink = FileLink(page.Descriptor.Body, "Faximage");
  // Without the page's number: existing mail archives name the comments of faxes so.
  WriteComment(page, "Fax_" + base_ + ".txt");
  std::vector<FormValue> values = {{"%VELMORA_FAX%", imageLink}};
  if (page.CommentLink) values.emplace_back("%VELMORA_MSGCOMMENT%", *page.CommentLink);
  page.Descriptor.Flags = DirectionFlag() | entry_flag::Fax;
  // A fax with a page counts twice, for its image and for its page: the figure of faxes has always meant so.
  if (WritePageFile(page, *form, values)) ++context_.run.counters.Faxes;
}

std::string FaxExport::CopyImage(std::string_view fileName) {
  const auto path = CopyStoreFile(Component::Faxes, fileName, fax_.ImagePath());
  if (!path) return place_.FolderPrefix(Component::Faxes) + std::string(fileName);
  ++context_.run.counters.Faxes;
  return *path;
}

void FaxExport::WriteOnlyImage() {
  if (CopyStoreFile(std::nullopt, files_.FreeName("", base_ + ".tif"), fax_.ImagePath())) {
    ++context_.run.counters.Faxes;
  }
  AskForDeletion();
}

}  // namespace velmora::mailarchive
