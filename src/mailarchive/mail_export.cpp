#include "mailarchive/mail_export.h"

#include "base/text.h"
#include "mailarchive/attachment_names.h"
#include "mailarchive/format/file_names.h"

namespace velmora::mailarchive {

void MailExport::ReadValues() {
  subject_ = Trim(Read(mail_.Subject()));
  from_ = Read(mail_.Sender()).Address;
  to_ = Read(mail_.RecipientText());
  if (to_.empty()) to_ = TextField(store::tag::RecipientText);
  if (to_.empty()) to_ = Read(mail_.OtherRecipientText());
  if (subject_.empty()) subject_ = from_;
  if (subject_.empty()) subject_ = to_;
  base_ = EntryBaseName(subject_);
  SetDate(Read(mail_.Date()));
  sendStatus_ = Read(mail_.SendStatus());
}

void MailExport::WriteEntry(bool failed, std::string_view statusText) {
  if (!options_.AnyOnly()) return WritePage();
  if (options_.OnlyOriginals) WriteOnlyOriginal(failed, statusText);
  if (options_.OnlyAttachments) WriteOnlyAttachments();
  if (options_.OnlyComments) (void)WriteOnlyComment();  // logged there
}

void MailExport::WriteOnlyOriginal(bool failed, std::string_view statusText) {
  const auto source = context_.session.Account->DVEmlFromMailItem(mail_.Item(), context_.TempDir);
  if (source) {
    (void)CopyOriginal(std::nullopt, files_.FreeName("", base_ + ".eml"), *source);  // logged there
  } else {
    files_.SetIncomplete();
    if (IsAdministrator()) {
      context_.run.LogError(place_.ArchivePath() + " vID falsch", source.error().Number,
                            "DvISE-Error " + source.error().Text, run::Severity::Error);
    }
  }
  if (failed && IsAdministrator()) {
    context_.run.LogError(LogName(), std::string(statusText), "DvISE-Error (trotzdem archiviert)",
                          run::Severity::Warning);
  }
  if (options_.SaveSmtpHeader) (void)WriteSmtpHeader(std::nullopt, base_ + ".smtp");  // logged there
  AskForDeletion();
}

void MailExport::WriteOnlyAttachments() {
  store::DvAttachments& attachments = mail_.Item().Attachments();
  const int count = Read(attachments.Count());
  for (int i = 0; i < count; ++i) {
    const auto attachment = attachments.Item(i);
    if (!attachment) {
      NoteReadFailure(attachment.error());
      continue;
    }
    const std::string name = AvoidReservedName(PlainAttachmentFileName((*attachment)->Name()), true);
    (void)SaveAttachment(std::nullopt, files_.FreeName("", name), **attachment);  // logged there
  }
  if (count > 0) AskForDeletion();
}

std::optional<std::string> MailExport::CopyOriginal(std::optional<Component> component,
                                                    std::string_view fileName, const std::string& source) {
  auto path = CopyStoreFile(component, fileName, source);
  if (path) ++context_.run.counters.EmlFiles;
  return path;
}

std::optional<std::string> MailExport::WriteSmtpHeader(std::optional<Component> component,
                                                       std::string_view fileName) {
  const std::string header = TextField(store::tag::SmtpHeader);
  if (header.empty()) return std::nullopt;
  return files_.WriteText(component, fileName, header, Unmappable::QuestionMark);
}

std::optional<std::string> MailExport::SaveAttachment(std::optional<Component> component,
                                                      std::string_view fileName,
                                                      store::DvAttachment& attachment) {
  auto path = files_.Write(component, fileName, [&](const std::string& target, platform::Create mode) {
    return attachment.SaveAs(target, mode == platform::Create::Exclusive);
  });
  if (path) ++context_.run.counters.Attachments;
  return path;
}

}  // namespace velmora::mailarchive
