// The export of one mail (also SMS, video and audio entries): its page with descriptor and components, or
// only the parts that were asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mailarchive/entry_files.h"
#include "mailarchive/export_place.h"
#include "mailarchive/format/descriptor.h"
#include "store/item.h"

namespace velmora::mailarchive {

// The copyright and the comment of the run as HTML, made once.
struct FormUserTexts {
  std::string CopyRight, Comment;
};

class MailExport {
 public:
  MailExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
             store::DvMailItem& mail);

  // Reads what every branch needs; before anything else.
  void ReadValues();
  const std::string& Subject() const { return subject_; }  // as shown, never the raw one
  int SendStatus() const { return sendStatus_; }

  // Writes what the options ask for, then, on a move, deletes the entry if all of it was written. `failed`:
  // the send status is an error, and `statusText` its German name.
  void Export(bool failed, std::string_view statusText);

 private:
  void WritePage();
  void WriteOnlyOriginal(bool failed, std::string_view statusText);
  void WriteOnlyAttachments();
  void WriteOnlyComment();
  void DeleteIfMoved();

  // What a page gathers while its components are written.
  struct Page {
    bool IsHtml = false;
    std::string Base;      // of the component files
    std::string FileName;  // of the page
    std::string BodyFile;  // of an HTML mail
    std::string Body;
    std::optional<std::string> CommentLink;
    std::string Content, OriginalLink, AttachmentLinks;
    EntryDescriptor Descriptor;
  };
  void NamePage(Page& page);
  void WriteComment(Page& page);
  void WriteOriginal(Page& page);
  // The relative paths of the attachments in the message's order, "" for one that could not be saved.
  std::vector<std::string> WriteAttachments(Page& page);
  void WriteHtmlBody(Page& page, const std::vector<std::string>& attachments);
  void WritePageFile(Page& page, std::string_view form);
  int DescriptorFlags();

  std::optional<std::string> CopyOriginal(std::optional<Component> component, std::string_view fileName,
                                          const std::string& source);
  std::optional<std::string> WriteSmtpHeader(std::optional<Component> component, std::string_view fileName);
  std::optional<std::string> SaveAttachment(std::optional<Component> component, std::string_view fileName,
                                            store::DvAttachment& attachment);

  // Reading: a failure gives an empty value, makes the entry incomplete and is logged once per entry.
  void NoteReadFailure(const Error& error);
  template <typename T>
  T Read(Result<T> value) {
    if (value) return std::move(*value);
    NoteReadFailure(value.error());
    return T{};
  }
  store::FieldValue Field(store::FieldTag tag) { return Read(mail_.Item().Fields().Get(tag)); }
  std::string TextField(store::FieldTag tag) { return store::FieldText(Field(tag)); }
  std::int64_t NumberField(store::FieldTag tag) { return store::FieldNumber(Field(tag)); }
  bool IsAdministrator() const { return context_.session.IsAdministrator(); }
  // How the log names the entry.
  std::string LogName() const { return place_.ArchivePath() + "/" + subject_; }

  const ExportContext& context_;
  const ExportOptions& options_;
  const FormUserTexts& userTexts_;
  ExportPlace& place_;
  store::DvMailItem& mail_;
  EntryFiles files_;
  std::string subject_, from_, to_, base_;
  DateTime date_;
  int sendStatus_ = 0;
  bool readFailureLogged_ = false;
  bool deleteAsked_ = false;
};

}  // namespace velmora::mailarchive
