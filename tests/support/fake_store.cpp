#include "support/fake_store.h"

#include <algorithm>

#include "base/text.h"
#include "store/vocabulary.h"
#include "support/entry_rows.h"

namespace velmora::test {

namespace {

using store::FieldTag;
using store::FieldValue;

class FakeFields final : public store::DvFields {
 public:
  explicit FakeFields(FakeMail& mail) : mail_(mail) {}
  Result<FieldValue> Get(FieldTag tag) override {
    if (tag == mail_.FailingField) return Fail(store::store_error::Damaged, "Feld nicht lesbar");
    const auto found = mail_.Fields.find(tag);
    return found == mail_.Fields.end() ? FieldValue{} : found->second;
  }
  Result<FieldValue> Get(std::string_view) override { return FieldValue{}; }
  Status Set(FieldTag tag, FieldValue value) override {
    mail_.Fields[tag] = std::move(value);
    return {};
  }
  Status Set(std::string_view, FieldValue) override { return {}; }
  Result<int> Count() override { return static_cast<int>(mail_.Fields.size()); }
  Result<std::unique_ptr<store::DvField>> Item(int) override {
    return Fail(store::store_error::NotFound, "kein Feld");
  }

 private:
  FakeMail& mail_;
};

class FakeAttachmentItem final : public store::DvAttachment {
 public:
  FakeAttachmentItem(FakeStore& store, const FakeAttachment& data) : store_(store), data_(data) {}
  std::string Name() override { return data_.Name; }
  std::int64_t Size() override { return static_cast<std::int64_t>(data_.Content.size()); }
  DateTime Date() override { return {}; }
  std::uint32_t Flags() override { return 0; }
  Status SaveAs(std::string_view path, bool exclusive) override {
    store_.Events.emplace_back("save");
    if (data_.Fails) return Fail(platform::file_error::DiskFull, "Datenträger voll");
    platform::WriteOptions options;
    options.Mode = exclusive ? platform::Create::Exclusive : platform::Create::Overwrite;
    return store_.Files().WriteFile(path, data_.Content, options);
  }

 private:
  FakeStore& store_;
  const FakeAttachment& data_;
};

class FakeAttachments final : public store::DvAttachments {
 public:
  FakeAttachments(FakeStore& store, FakeMail& mail) : store_(store), mail_(mail) {}
  Result<int> Count() override { return static_cast<int>(mail_.Attachments.size()); }
  Result<std::unique_ptr<store::DvAttachment>> Item(int index) override {
    return std::make_unique<FakeAttachmentItem>(store_,
                                                mail_.Attachments.at(static_cast<std::size_t>(index)));
  }
  Status Add(std::string_view, std::uint32_t) override { return {}; }

 private:
  FakeStore& store_;
  FakeMail& mail_;
};

class FakeItem final : public store::DvItem {
 public:
  FakeItem(FakeStore& store, FakeArchiveData& archive, std::shared_ptr<FakeMail> mail)
      : store_(store),
        archive_(archive),
        mail_(std::move(mail)),
        fields_(*mail_),
        attachments_(store, *mail_) {}
  store::EntryKey Key() const override { return mail_->Key; }
  int Type() override { return mail_->Type; }
  store::DvFields& Fields() override { return fields_; }
  store::DvFields& UserFields() override { return fields_; }
  store::DvAttachments& Attachments() override { return attachments_; }
  Result<int> Pages() override { return 0; }
  Status SetPages(int) override { return {}; }
  Status CopyTo(store::DvArchive&, bool) override { return {}; }
  Status Update() override { return {}; }
  Status UpdateField(FieldTag) override { return {}; }
  Status Delete() override {
    store_.Events.emplace_back("delete");
    store_.Deletions.push_back("mail " + std::to_string(mail_->Key));
    std::erase(archive_.Mails, mail_);
    return {};
  }
  const FakeMail& Mail() const { return *mail_; }

 private:
  FakeStore& store_;
  FakeArchiveData& archive_;
  std::shared_ptr<FakeMail> mail_;
  FakeFields fields_;
  FakeAttachments attachments_;
};

// The view of an entry, whatever its kind.
template <typename Interface>
class FakeView : public Interface {
 public:
  FakeView(FakeStore& store, FakeArchiveData& archive, const std::shared_ptr<FakeMail>& mail)
      : mail_(*mail), item_(store, archive, mail) {}
  int Type() override { return mail_.Type; }
  store::DvItem& Item() override { return item_; }

 protected:
  FakeMail& mail_;
  FakeItem item_;
};

template <typename Interface>
class FakeMessageView : public FakeView<Interface> {
 public:
  using FakeView<Interface>::FakeView;
  Result<std::string> Subject() override { return this->mail_.Subject; }
  Result<store::DvRecipient> Sender() override { return store::DvRecipient{"", this->mail_.Sender, "Mail"}; }
  Result<std::string> RecipientText() override { return this->mail_.Recipients; }
  Result<std::string> OtherRecipientText() override { return this->mail_.OtherRecipients; }
  Result<DateTime> Date() override { return this->mail_.Date; }
  Result<int> SendStatus() override { return this->mail_.SendStatus; }
  Result<std::vector<store::DvRecipient>> To() override { return std::vector<store::DvRecipient>{}; }
  Result<std::vector<store::DvRecipient>> Cc() override { return std::vector<store::DvRecipient>{}; }
  Result<std::vector<store::DvRecipient>> Bcc() override { return std::vector<store::DvRecipient>{}; }
  Status AddTo(store::DvRecipient) override { return {}; }
  Status AddCc(store::DvRecipient) override { return {}; }
  Status AddBcc(store::DvRecipient) override { return {}; }
  Status SetSender(std::string_view) override { return {}; }
  Status SetSubject(std::string_view) override { return {}; }
};

class FakeMailView final : public FakeMessageView<store::DvMailItem> {
 public:
  using FakeMessageView::FakeMessageView;
  Result<std::string> Text() override { return mail_.Text; }
  Result<std::string> HtmlIndicator() override { return mail_.Html.empty() ? "" : "html"; }
  Status SetText(std::string_view) override { return {}; }
  Status SetTextFormat(int) override { return {}; }
  Status Submit(int) override { return {}; }
};

class FakeFaxView final : public FakeMessageView<store::DvFaxItem> {
 public:
  using FakeMessageView::FakeMessageView;
  std::string ImagePath() override { return mail_.ContentPath; }
  Status SetImage(std::string_view) override { return {}; }
};

class FakeVoiceView final : public FakeMessageView<store::DvVoiceItem> {
 public:
  using FakeMessageView::FakeMessageView;
  std::string WavePath() override { return mail_.ContentPath; }
  Status SetWave(std::string_view) override { return {}; }
};

class FakeAddressView final : public FakeView<store::DvAddressItem> {
 public:
  using FakeView::FakeView;
  Result<FieldValue> Get(store::AddressProperty property) override {
    if (mail_.FailingField != 0) return Fail(store::store_error::Damaged, "Adresse nicht lesbar");
    return mail_.Address[property];
  }
  Status Set(store::AddressProperty property, FieldValue value) override {
    mail_.Address[property] = std::move(value);
    return {};
  }
};

std::unique_ptr<store::DvItemView> MakeFakeView(FakeStore& store, FakeArchiveData& archive,
                                                const std::shared_ptr<FakeMail>& mail) {
  namespace item_type = store::item_type;
  switch (mail->Type) {
    case item_type::EMail:
    case item_type::SMS:
    case item_type::Video:
    case item_type::Audio:
      return std::make_unique<FakeMailView>(store, archive, mail);
    case item_type::Fax:
      return std::make_unique<FakeFaxView>(store, archive, mail);
    case item_type::Voice:
      return std::make_unique<FakeVoiceView>(store, archive, mail);
    case item_type::Address:
      return std::make_unique<FakeAddressView>(store, archive, mail);
    default:
      return std::make_unique<FakeView<store::DvItemView>>(store, archive, mail);
  }
}

class FakeEntries final : public store::DvEntries {
 public:
  FakeEntries(FakeStore& store, FakeArchiveData& archive)
      : store_(store), archive_(archive), mails_(archive.Mails) {}
  int Count() override { return static_cast<int>(mails_.size()); }
  store::EntryKey Key(int index) override { return mails_.at(static_cast<std::size_t>(index))->Key; }
  Result<std::unique_ptr<store::DvItem>> Item(int index) override {
    return std::make_unique<FakeItem>(store_, archive_, mails_.at(static_cast<std::size_t>(index)));
  }
  Status ReadRows(int first, int count, std::vector<store::DvEntryRow>& rows) override {
    for (int i = first; i < std::min(first + count, Count()); ++i) {
      FakeItem item(store_, archive_, mails_.at(static_cast<std::size_t>(i)));
      auto row = ReadEntryRow(item);
      if (!row) return Fail(row.error());
      row->Link = item.Mail().Link;
      rows.push_back(std::move(*row));
    }
    return {};
  }

 private:
  FakeStore& store_;
  FakeArchiveData& archive_;
  std::vector<std::shared_ptr<FakeMail>> mails_;
};

class FakeRule final : public store::DvRule {
 public:
  explicit FakeRule(store::DvRuleData data) : data_(std::move(data)) {}
  store::DvRuleData& Data() override { return data_; }
  Status Update() override { return {}; }
  Status Delete() override { return {}; }

 private:
  store::DvRuleData data_;
};

class FakeRules final : public store::DvRules {
 public:
  explicit FakeRules(std::shared_ptr<FakeArchiveData> archive) : archive_(std::move(archive)) {}
  Result<int> Count() override { return static_cast<int>(archive_->Rules.size()); }
  Result<std::unique_ptr<store::DvRule>> Item(int index) override {
    if (index == archive_->FailingRule) return Fail(store::store_error::Damaged, "Regel nicht lesbar");
    if (index < 0 || index >= static_cast<int>(archive_->Rules.size())) {
      return Fail(store::store_error::NotFound, "keine Regel");
    }
    return std::make_unique<FakeRule>(archive_->Rules[static_cast<std::size_t>(index)]);
  }
  Result<std::unique_ptr<store::DvRule>> Add(std::string_view) override {
    return Fail(store::store_error::Failed, "nur lesbar");
  }

 private:
  std::shared_ptr<FakeArchiveData> archive_;
};

class FakeArchive final : public store::DvArchive {
 public:
  FakeArchive(FakeStore& store, std::shared_ptr<FakeArchiveData> data)
      : store_(store), data_(std::move(data)), rules_(data_) {}
  std::string FullPath() const override { return data_->FullPath; }
  std::string ID() const override { return data_->ID; }
  bool IsShortCut() const override { return data_->IsLink; }
  Result<std::string> DisplayName() override {
    if (data_->NameFails) return Fail(store::store_error::Damaged, "Name nicht lesbar");
    return data_->DisplayName;
  }
  Status SetDisplayName(std::string_view) override { return {}; }
  Result<int> DisplayType() override { return data_->DisplayType; }
  Status SetDisplayType(int) override { return {}; }
  Result<bool> Hidden() override { return data_->IsHidden; }
  Status SetHidden(bool) override { return {}; }
  Result<bool> Packed() override { return false; }
  Result<bool> AdminOnly() override { return false; }
  Result<DateTime> LastModification() override { return DateTime{}; }
  Result<std::uint32_t> AccessRights() override { return 0; }
  Status Update() override { return {}; }
  Result<std::vector<std::shared_ptr<store::DvArchive>>> SubArchives() override {
    if (data_->SubArchivesFail) return Fail(store::store_error::Damaged, "Liste nicht lesbar");
    std::vector<std::shared_ptr<store::DvArchive>> subArchives;
    for (const auto& sub : data_->SubArchives)
      subArchives.push_back(std::make_shared<FakeArchive>(store_, sub));
    return subArchives;
  }
  Result<int> SubArchiveCount() override { return static_cast<int>(data_->SubArchives.size()); }
  Result<int> MessageCount() override { return static_cast<int>(data_->Mails.size()); }
  Result<std::unique_ptr<store::DvEntries>> GetEntries(std::uint32_t, store::EntryOrder) override {
    if (data_->EntriesFail) return Fail(store::store_error::Damaged, "Archiv beschädigt");
    return std::make_unique<FakeEntries>(store_, *data_);
  }
  Result<std::unique_ptr<store::DvItem>> GetEntry(store::EntryKey key) override {
    for (const auto& mail : data_->Mails) {
      if (mail->Key == key) return std::make_unique<FakeItem>(store_, *data_, mail);
    }
    return Fail(store::store_error::NotFound, "Eintrag nicht gefunden");
  }
  Result<std::unique_ptr<store::DvItemView>> ItemView(store::EntryKey key) override {
    for (const auto& mail : data_->Mails) {
      if (mail->Key != key) continue;
      if (mail->ViewFails) return Fail(store::store_error::Damaged, "Eintrag beschädigt");
      return MakeFakeView(store_, *data_, mail);
    }
    return Fail(store::store_error::NotFound, "Eintrag nicht gefunden");
  }
  store::DvRules& Rules() override { return rules_; }
  Result<std::shared_ptr<store::DvArchive>> CreateSubArchive(std::string_view) override {
    return Fail(store::store_error::Failed, "nur lesbar");
  }
  Result<std::unique_ptr<store::DvItemView>> CreateItem(int) override {
    return Fail(store::store_error::Failed, "nur lesbar");
  }
  Result<std::unique_ptr<store::DvItem>> CreateEntry(int) override {
    return Fail(store::store_error::Failed, "nur lesbar");
  }
  Status Delete() override {
    const bool refused = !data_->IsLink && (!data_->Mails.empty() || !data_->SubArchives.empty());
    store_.Deletions.push_back((refused ? "refused archive " : "archive ") + data_->FullPath);
    if (refused) return Fail(store::store_error::NotEmpty, "Archiv nicht leer");
    store_.Remove(*data_);
    return {};
  }
  Status Move(store::DvArchive&) override { return {}; }

 private:
  FakeStore& store_;
  std::shared_ptr<FakeArchiveData> data_;
  FakeRules rules_;
};

class FakeUser final : public store::DvUser {
 public:
  std::string Name() override { return "Admin"; }
  int UserID() override { return 1; }
  std::string LoginName() override { return "admin"; }
  std::uint32_t Trustees() override { return store::trustee::Administrator; }
  std::string Mailaddress() override { return "admin@example.com"; }
};

class FakeResources final : public store::DvResources {
 public:
  Result<std::vector<store::DvResourceFile>> CoverPages() override {
    return std::vector<store::DvResourceFile>{};
  }
  Result<std::vector<store::DvResourceFile>> FaxTemplates() override {
    return std::vector<store::DvResourceFile>{};
  }
  Result<std::vector<store::DvResourceFile>> Graphics() override {
    return std::vector<store::DvResourceFile>{};
  }
  Result<std::vector<store::DvBroadcastList>> BroadcastLists() override {
    return std::vector<store::DvBroadcastList>{};
  }
  std::string BroadcastListDirectory() override { return ""; }
};

class FakeAccount final : public store::DvAccount {
 public:
  explicit FakeAccount(FakeStore& store) : store_(store) {}
  store::DvUser& User() override { return user_; }
  Result<std::vector<std::unique_ptr<store::DvUser>>> Users() override {
    return std::vector<std::unique_ptr<store::DvUser>>{};
  }
  std::string Description() override { return "SERVER"; }
  std::string DavidRoot() override { return R"(\\SERVER\DAVID)"; }
  std::string ProductName() override { return ""; }
  std::string BackendDescription() override { return ""; }
  int Product() override { return 0; }
  int BackendType() override { return 0; }
  Result<store::DvSite> Site() override { return store::DvSite{}; }
  store::DvResources& Resources() override { return resources_; }
  Result<std::shared_ptr<store::DvArchive>> GetArchive(std::string_view path) override {
    auto archive = store_.Open(path);
    if (!archive) return Fail(store::store_error::NotFound, "Archiv nicht gefunden");
    if (store_.Find(path)->NoAccess) return Fail(store::store_error::NoAccess, "Keine Zugriffsrechte");
    return archive;
  }
  Result<std::shared_ptr<store::DvArchive>> GetSpecialArchive(int kind) override {
    const auto special = store_.SpecialArchives.find(kind);
    if (special != store_.SpecialArchives.end()) return GetArchive(special->second);
    return Fail(store::store_error::NotFound, "Archiv nicht gefunden");
  }
  Result<std::string> DVEmlFromMailItem(store::DvItem& item, std::string_view temporaryDirectory) override {
    store_.Events.emplace_back("original");
    const std::string& source = dynamic_cast<FakeItem&>(item).Mail().Source;
    if (source.empty()) return Fail(store::store_error::Failed, "Umwandlung fehlgeschlagen");
    const std::string path = std::string(temporaryDirectory) + "original.eml";
    if (Status written = store_.Files().WriteFile(path, source); !written) return Fail(written.error());
    return path;
  }
  Result<std::unique_ptr<store::DvItem>> DVMailItemFromEml(std::string_view, store::DvArchive&) override {
    return Fail(store::store_error::Failed, "nur lesbar");
  }
  void SetPatience(store::Patience patience) override {
    store_.Events.emplace_back(patience == store::Patience::None ? "no patience" : "patience");
  }
  Status Commit() override {
    store_.Events.emplace_back("commit");
    return {};
  }
  void Logoff() override {}

 private:
  FakeStore& store_;
  FakeUser user_;
  FakeResources resources_;
};

}  // namespace

FakeArchiveData& FakeStore::AddArchive(FakeArchiveData* parent, std::string name, std::string id) {
  auto archive = std::make_shared<FakeArchiveData>();
  archive->FullPath = (parent != nullptr ? parent->FullPath : "") + "/" + name;
  archive->DisplayName = std::move(name);
  archive->ID = std::move(id);
  archives_.push_back(archive);
  if (parent != nullptr) parent->SubArchives.push_back(archive);
  return *archive;
}

FakeArchiveData& FakeStore::AddLink(FakeArchiveData& parent, const FakeArchiveData& target) {
  auto link = std::make_shared<FakeArchiveData>(target);
  link->FullPath = parent.FullPath + "/" + target.DisplayName;
  link->IsLink = true;
  parent.SubArchives.push_back(link);
  return *link;
}

FakeMail& FakeStore::AddMail(FakeArchiveData& archive, std::string subject) {
  auto mail = std::make_shared<FakeMail>();
  mail->Key = nextKey_++;
  mail->Subject = std::move(subject);
  mail->Date = *DateTime::FromCivil({2024, 2, 29, 13, 14, 15});
  archive.Mails.push_back(mail);
  return *mail;
}

FakeMail& FakeStore::AddEntry(FakeArchiveData& archive, int type, std::string subject) {
  FakeMail& entry = AddMail(archive, std::move(subject));
  entry.Type = type;
  entry.Fields[store::tag::Subject] = entry.Subject;
  entry.Fields[store::tag::StatusTime] = entry.Date;
  return entry;
}

std::shared_ptr<FakeArchiveData> FakeStore::Find(std::string_view path) {
  const auto found = std::ranges::find_if(archives_, [&](const auto& archive) {
    return EqualsFold(archive->FullPath, path) || EqualsFold(archive->ID, path);
  });
  return found == archives_.end() ? nullptr : *found;
}

std::shared_ptr<store::DvArchive> FakeStore::Open(std::string_view path) {
  auto data = Find(path);
  return data ? std::make_shared<FakeArchive>(*this, std::move(data)) : nullptr;
}

void FakeStore::Remove(const FakeArchiveData& archive) {
  const auto isArchive = [&](const auto& other) { return other.get() == &archive; };
  for (const auto& parent : archives_) std::erase_if(parent->SubArchives, isArchive);
  std::erase_if(archives_, isArchive);
}

std::unique_ptr<store::DvAccount> FakeStore::MakeAccount() { return std::make_unique<FakeAccount>(*this); }

}  // namespace velmora::test
