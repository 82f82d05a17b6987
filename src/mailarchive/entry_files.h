// The files of one entry: written, numbered where a name is taken, logged when they fail.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/code_page.h"
#include "base/date_time.h"
#include "mailarchive/export_place.h"

namespace velmora::mailarchive {

class EntryFiles {
 public:
  // Makes the file at the path, in the mode given.
  using Writer = std::function<Status(const std::string& path, platform::Create mode)>;

  EntryFiles(const ExportContext& context, ExportPlace& place);

  // The message's date, which files bear that are written with it. The null date leaves their times alone.
  void SetDate(DateTime date) { date_ = date; }
  platform::WriteOptions DatedOptions(platform::Create mode) const;

  // A name that is free in a folder of the directory ("" for the directory itself), by the numbering of
  // UniqueFileName; the name as it is while numbering is off.
  std::string FreeName(std::string_view folder, std::string_view fileName);
  // The same for a page, free for its descriptor too.
  std::string FreePageName(std::string_view pageFile);

  // A file in the folder of a component, or in the directory itself. While numbering is on no file is
  // overwritten: the new one takes the next number. The file's relative path; nothing, and a log entry, when
  // it could not be written.
  std::optional<std::string> Write(std::optional<Component> component, std::string_view fileName,
                                   const Writer& writer);
  // A text in the program's code page, with the message's date.
  std::optional<std::string> WriteText(std::optional<Component> component, std::string_view fileName,
                                       std::string_view text, Unmappable unmappable);

  // Notes what is made from here on, until the move is committed. Null for no notes.
  void SetNotes(MoveNotes* notes) { notes_ = notes; }
  // The entry's descriptor, in the directory itself. Logs its failure.
  void WriteDescriptor(const std::string& fileName, std::string_view bytes);

  void LogFailure(std::string_view relativePath, const Error& error);
  // Something that was asked for is missing: a move must keep the entry.
  void SetIncomplete() { complete_ = false; }
  bool IsComplete() const { return complete_; }

 private:
  // What the writer does, with a note of the file.
  Status WriteNoted(const std::string& relativePath, platform::Create mode, const Writer& writer);
  platform::FileSystem& Files() { return context_.run.fileSystem(); }

  const ExportContext& context_;
  ExportPlace& place_;
  MoveNotes* notes_ = nullptr;
  DateTime date_;
  bool complete_ = true;
};

}  // namespace velmora::mailarchive
