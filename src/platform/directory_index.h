// The names of one host directory in folded order: answers look-ups without regard to case without reading
// the directory again each time.
//
// The index knows of our own changes because it is told, and of other programs' changes by the directory's
// change time. Two changes in quick succession may bear one stamp, so what was read while the stamp was
// younger than a second is read again before it is believed. While we ourselves fill the directory its stamp
// is always young, and reading it again for every file would cost the square of their number; then it is
// read again only as often as pays: when as many own changes have come as a fixed share of its names, always
// while it is small, and once when the stamp has grown old. Until then another program's new name may go
// unseen if it appeared in the very moment of an own change; exclusive creation and exact names do not
// depend on the index.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/descriptor.h"
#include "platform/free_numbers.h"

namespace velmora::platform {

// What a directory tells of a name without looking at the file itself.
enum class NameKind : unsigned char { Unknown, File, Folder };

class DirectoryIndex {
 public:
  struct Name {
    std::string HostName;
    NameKind Kind;
  };
  using Names = std::multimap<std::string, Name, std::less<>>;  // by folded Windows name

  // Which directory `hostPath` leads to now: cheap (one system call), before every use. Opens it again when
  // it is another one. An errno, or ENOTDIR for what is no directory; 0 when all is well.
  int Visit(const std::string& hostPath);

  // For calls relative to the directory.
  int Get() const { return descriptor_.Get(); }
  const struct stat& State() const { return seen_; }

  // How much a caller relies on the index.
  enum class Trust {
    LookUp,  // a single name: may rely on own changes
    List,    // costs as much as reading the directory anyway: anything unsure is read again
  };
  // Brings the names up to date with what Visit saw. Fails with AccessDenied where the directory cannot be
  // read; look-ups then find exact names only.
  Status Refresh(Trust trust);

  const Names& All() const { return names_; }
  // The host name that stands for `hostName`: itself if it exists, else the one that differs in case only
  // and comes first. Null without one. After Refresh.
  const Name* Find(const std::string& hostName, std::string_view folded) const;

  // Own changes, after they were made. A rename is a removal and a creation.
  void NoteCreated(const std::string& hostName, NameKind kind);
  void NoteRemoved(const std::string& hostName);
  // A change of the directory that left its names as they are.
  void NoteTouched();
  // The file system contradicted the index: read again at the next use.
  void MarkStale() { isRead_ = false; }

  FreeNumbers& Numbers() { return numbers_; }

 private:
  Status Read();
  bool IsWorthReading(Trust trust) const;

  Descriptor descriptor_;
  struct stat seen_ {};       // by Visit
  struct timespec stamp_ {};  // the change time that names_ is right for
  bool isRead_ = false;
  bool isSettled_ = false;    // the stamp was old enough when the names were read
  bool isOwnChange_ = false;  // the stamp is of an own change
  std::size_t credit_ = 0;    // how many names own changes have paid for reading
  Names names_;
  FreeNumbers numbers_;
};

}  // namespace velmora::platform
