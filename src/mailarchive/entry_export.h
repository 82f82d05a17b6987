// What the export of every kind of entry has in common: its values, page, comment and descriptor, and the
// deletion of what a move has written.
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

class EntryExport {
 public:
  virtual ~EntryExport() = default;

  // Reads what every branch needs; before anything else.
  virtual void ReadValues() = 0;
  // Whether an entry whose send status is an error is left out while such entries are not asked for.
  virtual bool ObeysSendStatus() const { return true; }
  // Writes what the options ask for, then, on a move, deletes the entry if all of it was written. `failed`:
  // the send status is an error, and `statusText` its German name.
  void Export(bool failed, std::string_view statusText);

  const std::string& Subject() const { return subject_; }  // as shown, never the raw one
  int SendStatus() const { return sendStatus_; }
  // How the log names the entry.
  std::string LogName() const { return place_.ArchivePath() + "/" + subject_; }

 protected:
  EntryExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
              store::DvItem& item);

  virtual void WriteEntry(bool failed, std::string_view statusText) = 0;
  // Whether a descriptor is the last file of an entry that was written whole.
  virtual bool LeavesDescriptor() const { return true; }

  // What a page gathers while its components are written.
  struct Page {
    std::string Base;                        // of the component files
    std::string FileName;                    // of the page
    std::optional<std::string> CommentLink;  // none: the variable stays in the page
    EntryDescriptor Descriptor;
  };
  // The text of a form, its pictures copied; nothing, and a log entry, when it cannot be read.
  std::optional<std::string_view> OpenForm(Form form);
  // The comment as a file of that name, if comments are asked for and the entry has one.
  void WriteComment(Page& page, std::string_view fileName);
  // Fills the form: the variables of all kinds, then those of the kind. Then writes page and descriptor and
  // asks for the deletion. False, and a log entry, when the page could not be written.
  bool WritePageFile(Page& page, std::string_view form, const std::vector<FormValue>& ownValues);
  // What only-comments asks for: true when a comment was there and was written.
  bool WriteOnlyComment();
  // A copy of a file of the store, with the entry's date.
  std::optional<std::string> CopyStoreFile(std::optional<Component> component, std::string_view fileName,
                                           const std::string& source);

  // Reading: a failure gives an empty value, makes the entry incomplete and is logged once per entry.
  void NoteReadFailure(const Error& error);
  template <typename T>
  T Read(Result<T> value) {
    if (value) return std::move(*value);
    NoteReadFailure(value.error());
    return T{};
  }
  store::FieldValue Field(store::FieldTag tag) { return Read(item_.Fields().Get(tag)); }
  std::string TextField(store::FieldTag tag) { return store::FieldText(Field(tag)); }
  std::int64_t NumberField(store::FieldTag tag) { return store::FieldNumber(Field(tag)); }
  bool IsAdministrator() const { return context_.session.IsAdministrator(); }

  // The bit of a descriptor's flags that tells the direction.
  int DirectionFlag() const { return place_.IsOutBox() ? entry_flag::Outgoing : 0; }
  // On a move the entry goes, once everything of it stands.
  void AskForDeletion() { deleteAsked_ = true; }
  void SetDate(DateTime date);

  const ExportContext& context_;
  const ExportOptions& options_;
  ExportPlace& place_;
  store::DvItem& item_;
  EntryFiles files_;
  std::string subject_, from_, to_, base_;
  DateTime date_;
  int sendStatus_ = 0;

 private:
  // Takes back what a killed move has written of the entry, and notes what is written now.
  void BeginNotes();
  // What the index shows of the entry.
  void Describe(EntryDescriptor& descriptor) const;
  void DeleteIfMoved();

  const FormUserTexts& userTexts_;
  bool readFailureLogged_ = false;
  bool deleteAsked_ = false;
};

}  // namespace velmora::mailarchive
