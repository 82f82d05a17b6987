// An object layer in memory, for tests of what stands above it: archives and mails are plain structs, every
// deletion is logged, and failures are switched on in the structs.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "store/account.h"
#include "store/address_item.h"
#include "store/errors.h"
#include "store/session.h"

namespace velmora::test {

struct FakeAttachment {
  std::string Name, Content;
  bool Fails = false;  // SaveAs answers with an error
};

struct FakeMail {
  store::EntryKey Key = 0;
  int Type = 2;
  std::string Subject, Sender, Recipients, OtherRecipients;
  DateTime Date;
  int SendStatus = 0;
  std::string Text;
  std::string Html;    // of an HTML mail
  std::string Source;  // of the original; without one the conversion fails
  std::map<store::FieldTag, store::FieldValue> Fields;
  std::vector<FakeAttachment> Attachments;
  std::string Link;         // of a link
  std::string ContentPath;  // of the image of a fax, of the recording of a voice mail
  std::map<store::AddressProperty, store::FieldValue> Address;
  bool ViewFails = false;            // the typed view cannot be fetched
  store::FieldTag FailingField = 0;  // this field cannot be read
};

struct FakeArchiveData {
  std::string DisplayName, FullPath, ID;
  int DisplayType = 0;
  bool IsLink = false;
  bool IsHidden = false;
  bool NoAccess = false;         // cannot be opened
  bool SubArchivesFail = false;  // its sub-archives cannot be read
  bool EntriesFail = false;
  bool NameFails = false;
  std::vector<std::shared_ptr<FakeMail>> Mails;
  std::vector<std::shared_ptr<FakeArchiveData>> SubArchives;
  std::vector<store::DvRuleData> Rules;
  int FailingRule = -1;  // the rule with this index cannot be read
};

// Archives by path, and what was done to them.
class FakeStore {
 public:
  explicit FakeStore(platform::FileSystem& fileSystem) : fileSystem_(fileSystem) {}
  FakeStore(const FakeStore&) = delete;
  FakeStore& operator=(const FakeStore&) = delete;
  // Links may lead in circles.
  ~FakeStore() {
    for (const auto& archive : archives_) archive->SubArchives.clear();
  }

  FakeArchiveData& AddArchive(FakeArchiveData* parent, std::string name, std::string id);
  FakeArchiveData& AddLink(FakeArchiveData& parent, const FakeArchiveData& target);
  FakeMail& AddMail(FakeArchiveData& archive, std::string subject);
  // An entry of another type, with the fields of a message that was sent well.
  FakeMail& AddEntry(FakeArchiveData& archive, int type, std::string subject);

  std::shared_ptr<store::DvArchive> Open(std::string_view path);
  std::unique_ptr<store::DvAccount> MakeAccount();

  std::vector<std::string>
      Deletions;  // "mail <key>", "archive <FullPath>", refused ones with "refused " ahead
  std::map<int, std::string> SpecialArchives;  // the IDs of what GetSpecialArchive gives
  // "save", "original", "delete", "commit", "patience", "no patience" in their order
  std::vector<std::string> Events;
  platform::FileSystem& Files() { return fileSystem_; }
  std::shared_ptr<FakeArchiveData> Find(std::string_view path);
  void Remove(const FakeArchiveData& archive);

 private:
  platform::FileSystem& fileSystem_;
  std::vector<std::shared_ptr<FakeArchiveData>> archives_;
  store::EntryKey nextKey_ = 1;
};

}  // namespace velmora::test
