#include "mailarchive/voice_export.h"

#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/links.h"

namespace velmora::mailarchive {

void VoiceExport::ReadValues() {
  to_ = TextField(store::tag::RecipientAddress);
  if (to_.empty()) to_ = TextField(store::tag::RecipientText);
  from_ = TextField(store::tag::SenderAddress);
  if (from_.empty()) from_ = "unbekannt";
  subject_ = std::string(Trim(Read(voice_.Subject()))) + "_Call-from-" + from_ + "-to-" + to_;
  base_ = EntryBaseName(subject_);
  SetDate(store::FieldDate(Field(store::tag::StatusTime)));
  sendStatus_ = static_cast<int>(NumberField(store::tag::SendStatus));
}

void VoiceExport::WriteEntry(bool, std::string_view) {
  if (!options_.OnlyAttachments && !options_.OnlyComments) return WritePage();
  if (options_.OnlyComments && WriteOnlyComment()) ++context_.run.counters.VoiceMails;
  if (options_.OnlyAttachments) WriteOnlyRecording();
}

void VoiceExport::WritePage() {
  const auto form = OpenForm(Form::Voice);
  if (!form) return;
  Page page;
  page.Base = base_;
  page.Descriptor.Kind = EntryKind::Voice;
  // The folder is there for every voice mail, with a recording or not.
  (void)place_.FolderPrefix(Component::VoiceMails);
  const std::string link = options_.SaveAttachments ? SaveRecording(page) : "";
  // Unlike other kinds, a page keeps its comment variable where comments are not asked for.
  if (options_.SaveComments) WriteComment(page, page.Base + ".txt");
  if (page.FileName.empty()) {
    // A voice mail has a page only beside its recording. That it has none is told once for each.
    files_.LogFailure("", {platform::file_error::BadName,
                           platform::FileErrorText(platform::file_error::BadName) +
                               ": Sprachnachrichten werden nur mit ihren Attachments gespeichert"});
    return;
  }
  std::vector<FormValue> values = {{"%VELMORA_VOICE%", link}};
  if (page.CommentLink) values.emplace_back("%VELMORA_MSGCOMMENT%", *page.CommentLink);
  page.Descriptor.Flags = DirectionFlag() | entry_flag::Voice;
  (void)WritePageFile(page, *form, values);  // logged there
}

std::string VoiceExport::SaveRecording(Page& page) {
  page.FileName = files_.FreePageName(base_ + ".htm");
  page.Base = page.FileName.substr(0, page.FileName.find('.'));
  const std::string fileName = page.Base + ".wav";
  const auto path = CopyStoreFile(Component::VoiceMails, fileName, voice_.WavePath());
  if (path) ++context_.run.counters.VoiceMails;
  page.Descriptor.Body = path.value_or(place_.FolderPrefix(Component::VoiceMails) + fileName);
  return FileLink(page.Descriptor.Body, "VoiceMail");
}

void VoiceExport::WriteOnlyRecording() {
  if (CopyStoreFile(std::nullopt, files_.FreeName("", base_ + ".wav"), voice_.WavePath())) {
    ++context_.run.counters.VoiceMails;
  }
  AskForDeletion();
}

}  // namespace velmora::mailarchive
