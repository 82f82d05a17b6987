#include "mailarchive/entry_export.h"

#include "base/date_time.h"
#include "mailarchive/format/page_text.h"
#include "mailarchive/links.h"

namespace velmora::mailarchive {

EntryExport::EntryExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
                         store::DvItem& item)
    : context_(context),
      options_(context.options),
      place_(place),
      item_(item),
      files_(context, place),
      userTexts_(userTexts) {}

void EntryExport::SetDate(DateTime date) {
  date_ = date;
  files_.SetDate(date);
}

void EntryExport::Export(bool failed, std::string_view statusText) {
  if (LeavesDescriptor()) BeginNotes();
  WriteEntry(failed, statusText);
  DeleteIfMoved();
}

std::optional<std::string_view> EntryExport::OpenForm(Form form) {
  place_.LoadForm(form);
  const auto text = context_.designs.FormText(form);
  if (text) return *text;
  files_.SetIncomplete();
  context_.run.LogError(context_.designs.FormPath(form), text.error());
  return std::nullopt;
}

void EntryExport::WriteComment(Page& page, std::string_view fileName) {
  const std::string comment = options_.SaveComments ? TextField(store::tag::Comment) : "";
  if (comment.empty()) {
    page.CommentLink = "";
    return;
  }
  const auto path = files_.WriteText(Component::Comments, fileName, comment, Unmappable::QuestionMark);
  if (!path) return;
  page.Descriptor.Comment = *path;
  page.CommentLink = PlainLink(*path, "Kommentar");
}

bool EntryExport::WriteOnlyComment() {
  const std::string comment = TextField(store::tag::Comment);
  if (comment.empty()) return false;
  return files_
      .WriteText(std::nullopt, files_.FreeName("", base_ + ".txt"), comment, Unmappable::QuestionMark)
      .has_value();
}

std::optional<std::string> EntryExport::CopyStoreFile(std::optional<Component> component,
                                                      std::string_view fileName, const std::string& source) {
  return files_.Write(component, fileName, [&](const std::string& target, platform::Create mode) {
    return context_.run.fileSystem().CopyFile(source, target, files_.DatedOptions(mode));
  });
}

bool EntryExport::WritePageFile(Page& page, std::string_view form, const std::vector<FormValue>& ownValues) {
  const std::string subject = NeutralizeHeadTags(subject_);
  const std::string from = NeutralizeHeadTags(from_);
  const std::string to = NeutralizeHeadTags(to_);
  const std::string time = FormatDateTime(date_);
  const std::string now = FormatDateTime(context_.run.clock().Now());
  std::vector<FormValue> values = {
      {"%VELMORA_TITLE%", subject},
      {"%VELMORA_SUBJECT%", subject},
      {"%VELMORA_FROM%", from},
      {"%VELMORA_TO%", to},
      {"%VELMORA_TIME%", time},
      {"%VELMORA_ARCDATE%", now},
      {"%VELMORA_COPYRIGHT%", userTexts_.CopyRight},
      {"%VELMORA_COMMENT%", userTexts_.Comment},
  };
  values.insert(values.end(), ownValues.begin(), ownValues.end());
  const auto path = files_.WriteText(std::nullopt, files_.FreePageName(page.FileName), FillForm(form, values),
                                     Unmappable::Reference);
  if (!path) return false;

  EntryDescriptor& descriptor = page.Descriptor;
  Describe(descriptor);
  descriptor.MailArcEntry = *path;
  descriptor.MailArcAdd = DescriptorName(*path);
  files_.WriteDescriptor(descriptor.MailArcAdd, FormatDescriptor(descriptor));
  AskForDeletion();
  return true;
}

void EntryExport::BeginNotes() {
  MoveNotes* const notes = place_.Notes();
  if (notes == nullptr) return;
  EntryDescriptor descriptor;
  Describe(descriptor);
  notes->BeginEntry(item_.Key(), ParseIndexFields(FormatDescriptor(descriptor)));  // as it is read back
  files_.SetNotes(notes);
}

void EntryExport::Describe(EntryDescriptor& descriptor) const {
  descriptor.Sortaddr = place_.IsOutBox() ? to_ : from_;
  descriptor.Subject = subject_;
  descriptor.Date = date_;
  descriptor.From = from_;
  descriptor.To = to_;
}

void EntryExport::DeleteIfMoved() {
  if (options_.Mode != CopyMode::Move || !deleteAsked_ || !files_.IsComplete()) return;
  if (context_.run.CancelRequested()) return;
  (void)item_.Delete();  // an entry that stays is there twice, which loses nothing
}

void EntryExport::NoteReadFailure(const Error& error) {
  files_.SetIncomplete();
  if (readFailureLogged_) return;
  readFailureLogged_ = true;
  context_.run.LogError(LogName(), error.Number, "DvISE-Error " + error.Text, run::Severity::Error);
}

}  // namespace velmora::mailarchive
