// One record of archive.dir and archive.add: 430 bytes, made of a head, a tagged text area and a tail. The
// head and the tail belong to the server; whoever handles records carries them unchanged. The files are plain
// sequences of such records, without a header, numbered from 1.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

namespace velmora::store {

// An item of a text area: where its tag stands, and its text in the code page.
struct TextItem {
  std::size_t TagPosition = 0;
  std::string_view Text;
  std::size_t End() const { return TagPosition + 1 + Text.size() + 1; }  // behind its NUL
};
// The first byte of the tag's value is the tag, wherever it stands. Nothing when it is missing or its text
// runs past the area.
std::optional<TextItem> FindItem(std::string_view area, char tag);

class DirRecord {
 public:
  static constexpr std::size_t HeadSize = 113;
  static constexpr std::size_t TextSize = 273;
  static constexpr std::size_t TailSize = 44;
  static constexpr std::size_t Size = HeadSize + TextSize + TailSize;

  // Tags of the text area: each is followed by text in the code page and a NUL.
  static constexpr char PathTag = 3;  // the directory; of a link the target's
  static constexpr char NameTag = 4;  // the name under which the parent lists it

  DirRecord() { bytes_.fill('\0'); }
  // Nothing unless there are exactly 430 bytes. Any content is taken.
  static std::optional<DirRecord> FromBytes(std::string_view bytes);
  // A record with a head and a tail of zeros. The name is cut to fit; store_error::BadName when the path does
  // not fit or holds a character that a record cannot.
  static Result<DirRecord> Make(std::string_view path, std::string_view name);

  std::string_view Bytes() const { return {bytes_.data(), Size}; }
  std::string_view Head() const { return Bytes().substr(0, HeadSize); }
  std::string_view TextArea() const { return Bytes().substr(HeadSize, TextSize); }
  std::string_view Tail() const { return Bytes().substr(HeadSize + TextSize); }
  // Each takes as many bytes as the block has; a shorter text leaves zeros behind it.
  void SetHead(std::string_view head);
  void SetTextArea(std::string_view text);
  void SetTail(std::string_view tail);

  // The texts in UTF-8. Nothing when the tag is missing or its text runs past the area. The first byte of the
  // tag's value counts, wherever it stands.
  std::optional<std::string> Path() const;
  std::optional<std::string> Name() const;
  // Puts another name in the place of the old one; items behind it move. The name is cut so that all items
  // fit. store_error::BadName when not one character is left.
  Status SetName(std::string_view name);

  bool operator==(const DirRecord&) const = default;

 private:
  std::array<char, Size> bytes_;
};

// A name as a record can hold it: "/", "\" and control characters become "-", what the code page lacks "_".
// The length is not touched.
std::string CleanArchiveName(std::string_view name);

// The records of a file's content. A torn record at its end is none.
std::size_t CountRecords(std::string_view content);
// The record of a number from 1; nothing beyond the last.
std::optional<DirRecord> RecordAt(std::string_view content, std::size_t number);

}  // namespace velmora::store
