// The typed views of the entries that are no mail.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "base/text.h"
#include "message_fixture.h"
#include "platform/file_system.h"
#include "store/address_item.h"
#include "store/calendar_item.h"
#include "store/errors.h"
#include "store/link_item.h"
#include "store/task_item.h"
#include "store/tv_program_item.h"
#include "store/vocabulary.h"
#include "target_archive.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view Tiff{"II*\0\xFF\x80 TIFF", 11};

class ItemViewTest : public MessageFixture {
 protected:
  std::unique_ptr<DvItemView> Create(int type, const std::string& archive = In) {
    auto view = store->CreateItem(archive, type);
    EXPECT_TRUE(view) << view.error().Text;
    return view ? std::move(*view) : nullptr;
  }
  std::unique_ptr<DvItemView> View(EntryKey key, const std::string& archive = In) {
    auto view = store->ItemView(archive, key);
    EXPECT_TRUE(view) << view.error().Text;
    return view ? std::move(*view) : nullptr;
  }
  EntryKey StoreFax(const std::string& subject = "Fax") {
    directory.WriteHostFile("bild.tif", std::string(Tiff));
    const auto view = Create(item_type::Fax);
    auto& fax = *view->AsFax();
    EXPECT_TRUE(fax.SetSubject(subject));
    EXPECT_TRUE(fax.SetImage(directory.Path("bild.tif")));
    EXPECT_TRUE(fax.Item().Update());
    return fax.Item().Key();
  }
  EntryKey StoreAddress(const std::string& name) {
    const auto view = Create(item_type::Address);
    EXPECT_TRUE(view->AsAddress()->Set(AddressProperty::DisplayName, name));
    EXPECT_TRUE(view->Item().Update());
    return view->Item().Key();
  }
  std::vector<std::string> SubjectsBySubject(std::uint32_t filter = filter_preset::None) {
    const auto entries = store->GetEntries(In, filter, EntryOrder::BySubject);
    EXPECT_TRUE(entries);
    std::vector<std::string> subjects;
    for (int i = 0; i < (*entries)->Count(); ++i) {
      subjects.push_back(FieldText(Field((*entries)->Key(i), tag::Subject)));
    }
    return subjects;
  }

  TargetArchive target{Out};
};

TEST_F(ItemViewTest, TheTypeAloneDecidesWhichViewThereIs) {
  for (const int type :
       {item_type::EMail, item_type::SMS, item_type::TMail, item_type::Video, item_type::Audio}) {
    const auto view = Create(type);
    EXPECT_EQ(view->Type(), type);
    EXPECT_NE(view->AsMessage(), nullptr);
    EXPECT_NE(view->AsMail(), nullptr);
    EXPECT_EQ(view->AsFax(), nullptr);
    EXPECT_EQ(view->AsVoice(), nullptr);
    EXPECT_EQ(view->AsAddress(), nullptr);
  }
  const auto fax = Create(item_type::Fax);
  EXPECT_NE(fax->AsFax(), nullptr);
  EXPECT_NE(fax->AsMessage(), nullptr);
  EXPECT_EQ(fax->AsMail(), nullptr);
  EXPECT_EQ(fax->AsVoice(), nullptr);
  const auto voice = Create(item_type::Voice);
  EXPECT_NE(voice->AsVoice(), nullptr);
  EXPECT_NE(voice->AsMessage(), nullptr);
  EXPECT_EQ(voice->AsFax(), nullptr);
  const auto address = Create(item_type::Address);
  EXPECT_NE(address->AsAddress(), nullptr);
  EXPECT_EQ(address->AsMessage(), nullptr);
  const auto unknown = Create(99);
  EXPECT_EQ(unknown->Type(), 99);
  EXPECT_EQ(unknown->AsMessage(), nullptr);
}

TEST_F(ItemViewTest, AFaxKeepsItsImageByteForByteBesideItsEntry) {
  directory.WriteHostFile("bild.tif", std::string(Tiff));
  const auto view = Create(item_type::Fax);
  auto& fax = *view->AsFax();
  EXPECT_EQ(fax.ImagePath(), "") << "a draft has no place yet";
  ASSERT_TRUE(fax.SetImage(directory.Path("bild.tif")));
  std::filesystem::remove(directory.HostPath("bild.tif"));
  ASSERT_TRUE(fax.Item().Fields().Set(tag::SenderAddress, std::string("0221 4711")));
  ASSERT_TRUE(fax.Item().SetPages(2));
  EXPECT_EQ(Count(), 0);
  ASSERT_TRUE(fax.Item().Update());
  EXPECT_EQ(fax.ImagePath(), In + "\\00000001.001");
  EXPECT_EQ(files->ReadFile(fax.ImagePath()).value_or(""), Tiff);
  const auto read = View(1);
  EXPECT_EQ(read->AsFax()->ImagePath(), In + "\\00000001.001");
  EXPECT_EQ(read->AsFax()->Sender().value_or(DvRecipient{}).Address, "0221 4711");
  EXPECT_EQ(read->Item().Pages().value_or(0), 2);
  EXPECT_TRUE(store->Check(In).empty());
}

TEST_F(ItemViewTest, AFaxTakesItsImageAlongAndLeavesNoneBehind) {
  const auto key = StoreFax();
  ASSERT_TRUE(View(key)->Item().CopyTo(target, false));
  ASSERT_TRUE(View(key)->Item().CopyTo(target, true));
  ASSERT_TRUE(store->Commit());
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("archive/in/00000001.001")));
  for (const EntryKey copy : {1U, 2U}) {
    EXPECT_EQ(files->ReadFile(View(copy, Out)->AsFax()->ImagePath()).value_or(""), Tiff);
  }
  ASSERT_TRUE(View(1, Out)->Item().Delete());
  ASSERT_TRUE(store->Commit());
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("archive/out/00000001.001")));
  EXPECT_TRUE(store->Check(In).empty());
  EXPECT_TRUE(store->Check(Out).empty());
}

TEST_F(ItemViewTest, AFaxWithoutItsImageIsReportedAndStaysReadable) {
  const auto key = StoreFax("Angebot");
  ASSERT_TRUE(store->Commit());
  std::filesystem::remove(directory.HostPath("archive/in/00000001.001"));
  const auto findings = store->Check(In);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].Key, key);
  EXPECT_EQ(findings[0].Text, "Eintrag ohne Inhaltsdatei: " + In + "\\00000001.001");
  EXPECT_FALSE(findings[0].IsNote);
  const auto view = View(key);
  EXPECT_EQ(view->AsFax()->Subject().value_or(""), "Angebot");
  EXPECT_EQ(view->AsFax()->ImagePath(), In + "\\00000001.001") << "where it would be";
  ASSERT_TRUE(view->Item().CopyTo(target, true));
  EXPECT_EQ(Count(Out), 1);
}

TEST_F(ItemViewTest, AnEntryThatNeverGotItsFileIsReportedToo) {
  ASSERT_TRUE(store->CreateEntry(In, item_type::Voice));
  ASSERT_TRUE(store->CreateEntry(In, item_type::Address));
  ASSERT_TRUE(store->CreateEntry(In, item_type::SMS));
  const auto findings = store->Check(In);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].Key, 1U);
}

TEST_F(ItemViewTest, AFileCopiedToItsPlaceLaterIsTheFax) {
  const auto entry = store->CreateEntry(In, item_type::Fax);
  ASSERT_TRUE(entry);
  const auto location = FieldText(*(*entry)->Fields().Get(tag::Location));
  ASSERT_TRUE(files->WriteFile(location + ".001", Tiff));
  EXPECT_EQ(View((*entry)->Key())->AsFax()->ImagePath(), location + ".001");
  EXPECT_TRUE(store->Check(In).empty());
  ASSERT_TRUE((*entry)->CopyTo(target, true));
  EXPECT_EQ(files->ReadFile(View(1, Out)->AsFax()->ImagePath()).value_or(""), Tiff);
  EXPECT_TRUE(store->Check(In).empty());
}

TEST_F(ItemViewTest, TheImageOfAFaxIsNoMailAndNoAttachment) {
  directory.WriteHostFile("bild.tif", "From: a@b.c\nSubject: no mail\n\nx");
  directory.WriteHostFile("notiz.txt", "Notiz");
  const auto view = Create(item_type::Fax);
  ASSERT_TRUE(view->AsFax()->SetImage(directory.Path("bild.tif")));
  ASSERT_TRUE(view->Item().Attachments().Add(directory.Path("notiz.txt"), 0));
  ASSERT_TRUE(view->Item().Update());
  const auto read = View(1);
  EXPECT_EQ(read->AsFax()->Subject().value_or("?"), "");
  EXPECT_EQ(store->SourcePath(In, 1), "");
  ASSERT_EQ(read->Item().Attachments().Count().value_or(-1), 1) << "the note alone";
  ASSERT_TRUE((*read->Item().Attachments().Item(0))->SaveAs(directory.Path("gelesen"), false));
  EXPECT_EQ(directory.ReadHostFile("gelesen"), "Notiz");
}

TEST_F(ItemViewTest, AFileThatIsNotThereLeavesTheDraftAsItWas) {
  const auto view = Create(item_type::Voice);
  EXPECT_EQ(view->AsVoice()->SetWave(directory.Path("fehlt.wav")).error().Number,
            platform::file_error::FileNotFound);
  directory.WriteHostFile("ton.wav", "RIFF");
  ASSERT_TRUE(view->AsVoice()->SetWave(directory.Path("ton.wav")));
  ASSERT_TRUE(view->Item().Update());
  EXPECT_EQ(files->ReadFile(view->AsVoice()->WavePath()).value_or(""), "RIFF");
  directory.WriteHostFile("anderer.wav", "RIFX");
  EXPECT_EQ(view->AsVoice()->SetWave(directory.Path("anderer.wav")).error().Number, store_error::WrongKind);
  EXPECT_EQ(View(1)->AsVoice()->SetWave(directory.Path("anderer.wav")).error().Number,
            store_error::WrongKind);
}

// A value of each kind, given as text where a text says it, and what is to be read of it.
template <typename Property>
std::pair<FieldValue, FieldValue> SampleOf(const PropertyInfo<Property>& info) {
  const std::string text = "Wert von " + std::string(info.Name);
  const auto date = *DateTime::FromCivil({2026, 12, 31, 23, 59, 0});
  switch (info.Kind) {
    case PropertyKind::Text:
      return {text, text};
    case PropertyKind::Number:
      return {std::string("7"), std::int64_t{7}};
    case PropertyKind::Flag:
      return {std::int64_t{1}, true};
    case PropertyKind::Date:
      return {std::string("31.12.2026 23:59"), date};
  }
  return {};
}

// Every property is empty at first, takes its value, and is the field of its name.
template <typename View, typename Table>
void ExpectPropertiesAreFields(MessageStore& store, int type, View* (DvItemView::*as)(), const Table& table) {
  const auto draft = store.CreateItem("\\\\ZEB\\DAVID\\archive\\in", type);
  ASSERT_TRUE(draft);
  auto* const view = ((**draft).*as)();
  ASSERT_NE(view, nullptr) << type;
  EXPECT_EQ((*draft)->AsMessage(), nullptr);
  for (const auto& info : table) {
    EXPECT_EQ(view->Get(info.Which).value_or(true), FieldValue{}) << info.Name;
    ASSERT_TRUE(view->Set(info.Which, SampleOf(info).first)) << info.Name;
  }
  ASSERT_TRUE(view->Item().Update());
  const auto stored = store.ItemView("\\\\ZEB\\DAVID\\archive\\in", view->Item().Key());
  ASSERT_TRUE(stored);
  auto* const read = ((**stored).*as)();
  for (const auto& info : table) {
    EXPECT_EQ(read->Get(info.Which).value_or(FieldValue{}), SampleOf(info).second) << info.Name;
    EXPECT_EQ((*stored)->Item().Fields().Get(info.Name).value_or(FieldValue{}), SampleOf(info).second)
        << info.Name;
  }
}

TEST_F(ItemViewTest, PropertiesAreFieldsOfTheirNames) {
  ExpectPropertiesAreFields(*store, item_type::Address, &DvItemView::AsAddress, AddressProperties);
  ExpectPropertiesAreFields(*store, item_type::Calendar, &DvItemView::AsCalendar, CalendarProperties);
  ExpectPropertiesAreFields(*store, item_type::Task, &DvItemView::AsTask, TaskProperties);
  ExpectPropertiesAreFields(*store, item_type::Link, &DvItemView::AsLink, LinkProperties);
  ExpectPropertiesAreFields(*store, item_type::TVProgram, &DvItemView::AsTvProgram, TvProgramProperties);
}

TEST_F(ItemViewTest, APropertyThatIsAKnownFieldStandsThere) {
  const auto link = Create(item_type::Link);
  ASSERT_TRUE(link->AsLink()->Set(LinkProperty::Name, std::string("Preise\nneu")));
  const auto task = Create(item_type::Task);
  ASSERT_TRUE(task->AsTask()->Set(TaskProperty::Priority, std::string("2")));
  ASSERT_TRUE(task->AsTask()->Set(TaskProperty::Content, std::string("Zeile 1\nZeile 2")));
  ASSERT_TRUE(task->AsTask()->Set(TaskProperty::DueTime, std::string("31.2.2026")));
  ASSERT_TRUE(link->Item().Update());
  ASSERT_TRUE(task->Item().Update());
  EXPECT_EQ(FieldText(Field(1, tag::Subject)), "Preise  neu") << "a subject is one line";
  EXPECT_EQ(FieldNumber(Field(2, tag::Priority)), 2);
  EXPECT_EQ(FieldText(Field(2, tag::PlainText)), "Zeile 1\r\nZeile 2");
  EXPECT_EQ(View(2)->AsTask()->Get(TaskProperty::DueTime).value_or(true), FieldValue{}) << "no such day";
}

TEST_F(ItemViewTest, MessagesShowTheirFieldsWithoutANumber) {
  const auto key =
      Deliver("From: Anna <a@b.c>\nTo: d@e.f\nCc: g@h.i, j@k.l\nContent-Type: image/gif; name=a.gif\n\nx");
  const auto item = store->GetEntry(In, key);
  auto& fields = (*item)->Fields();
  const auto text = [&](std::string_view name) { return FieldText(fields.Get(name).value_or(FieldValue{})); };
  EXPECT_EQ(text(field_name::SenderDisplayName), "Anna");
  EXPECT_EQ(text(field_name::Cc), "g@h.i; j@k.l");
  EXPECT_EQ(text(field_name::Bcc), "");
  EXPECT_EQ(text(field_name::AttachmentCount), "1");
  EXPECT_EQ(text("To"), "d@e.f");
  ASSERT_TRUE(fields.Set(field_name::Bcc, std::vector<std::string>{"m@n.o"}));
  ASSERT_TRUE(fields.Set(field_name::Pages, std::int64_t{3}));
  ASSERT_TRUE(fields.Set(field_name::DistributionID, std::string("V7")));
  EXPECT_EQ(fields.Set(field_name::AttachmentCount, std::int64_t{3}).error().Number,
            store_error::ReadOnlyField);
  ASSERT_TRUE((*item)->Update());
  const auto view = View(key);
  EXPECT_EQ(view->AsMail()->Bcc()->size(), 1U);
  EXPECT_EQ(view->AsMail()->Cc()->size(), 2U);
  EXPECT_EQ(view->Item().Pages().value_or(0), 3);
  EXPECT_EQ(FieldText(*view->Item().Fields().Get("distributionid")), "V7");
}

TEST_F(ItemViewTest, AnAddressWithoutAnArchiveCannotBeStored) {
  const auto address =
      store->MakeAddress({{AddressProperty::DisplayName, "Anna"}, {AddressProperty::DefaultAddress, "2"}});
  EXPECT_EQ(address->Text(AddressProperty::DisplayName).value_or(""), "Anna");
  EXPECT_EQ(address->Get(AddressProperty::DefaultAddress).value_or(true), FieldValue(std::int64_t{2}));
  EXPECT_EQ(address->Text(AddressProperty::City).value_or("?"), "");
  EXPECT_FALSE(address->Item().Update());
}

TEST_F(ItemViewTest, PropertiesTakeNoBadText) {
  const auto view = Create(item_type::Address);
  auto& address = *view->AsAddress();
  ASSERT_TRUE(address.Set(AddressProperty::Notes, std::string("a\nb\r\nc\rd\0\x1B[2J\xFF", 14)));
  ASSERT_TRUE(address.Set(AddressProperty::Categories, std::string("zwei")));
  ASSERT_TRUE(address.Set(AddressProperty::DefaultAddress, std::string(" 12 ")));
  ASSERT_TRUE(address.Set(AddressProperty::City, std::string()));
  ASSERT_TRUE(address.Set(AddressProperty::Street, std::int64_t{17}));
  ASSERT_TRUE(address.Item().Update());
  const auto read = View(1);
  const auto text = [&](AddressProperty property) { return read->AsAddress()->Text(property).value_or("?"); };
  EXPECT_TRUE(text(AddressProperty::Notes).starts_with("a\r\nb\r\nc\r\nd  [2J\xEF\xBF\xBD"));
  EXPECT_TRUE(IsValidUtf8(text(AddressProperty::Notes)));
  EXPECT_EQ(text(AddressProperty::Categories), "");
  EXPECT_EQ(read->AsAddress()->Get(AddressProperty::DefaultAddress).value_or(true),
            FieldValue(std::int64_t{12}));
  EXPECT_EQ(read->AsAddress()->Get(AddressProperty::City).value_or(true), FieldValue{});
  EXPECT_EQ(text(AddressProperty::Street), "17");
}

TEST_F(ItemViewTest, TheRowOfAnAddressShowsItsDisplayName) {
  const auto key = StoreAddress("Anna Ähre");
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "Anna Ähre");
  const auto view = View(key);
  ASSERT_TRUE(view->AsAddress()->Set(AddressProperty::DisplayName, std::string("Anna Berg")));
  ASSERT_TRUE(view->Item().Update());
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "Anna Berg") << "still no subject of its own";
  const auto named = View(key);
  ASSERT_TRUE(named->Item().Fields().Set(tag::Subject, std::string("Chefin")));
  ASSERT_TRUE(named->AsAddress()->Set(AddressProperty::DisplayName, std::string("Anna Carl")));
  ASSERT_TRUE(named->Item().Update());
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "Chefin");
  EXPECT_EQ(View(key)->AsAddress()->Text(AddressProperty::DisplayName).value_or(""), "Anna Carl");
}

TEST_F(ItemViewTest, SubjectsAreOrderedWithoutRegardToCaseAndEqualOnesByKey) {
  for (const auto* const name : {"zebra", "Äpfel", "anna", "ANNA", "", "äPFEL", "Berta"}) StoreAddress(name);
  EXPECT_EQ(SubjectsBySubject(),
            (std::vector<std::string>{"", "anna", "ANNA", "Berta", "zebra", "Äpfel", "äPFEL"}));
  StoreFax("anna");
  EXPECT_EQ(SubjectsBySubject(filter_preset::OnlyAddress).size(), 7U);
}

TEST_F(ItemViewTest, TenThousandAddressesAreInOrderAtOnce) {
  constexpr int count = 10'000;
  for (int i = 0; i < count; ++i) {
    // A prime above half of the count visits every number once.
    const auto number = std::to_string(count + i * 7919 % count);
    StoreAddress((i % 2 == 0 ? "NAME " : "name ") + number);
  }
  const auto begin = std::chrono::steady_clock::now();
  const auto entries = store->GetEntries(In, filter_preset::OnlyAddress, EntryOrder::BySubject);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
  ASSERT_TRUE(entries);
  ASSERT_EQ((*entries)->Count(), count);
  for (const int i : {0, 1, 5'000, count - 1}) {
    EXPECT_EQ(FoldCase(FieldText(Field((*entries)->Key(i), tag::Subject))),
              FoldCase("name " + std::to_string(count + i)));
  }
}

TEST_F(ItemViewTest, TheOrderIsFixedAtTheCall) {
  const auto first = StoreAddress("a");
  const auto second = StoreAddress("b");
  const auto entries = store->GetEntries(In, filter_preset::None, EntryOrder::BySubject);
  const auto view = View(first);
  ASSERT_TRUE(view->AsAddress()->Set(AddressProperty::DisplayName, std::string("z")));
  ASSERT_TRUE(view->Item().Update());
  StoreAddress("0");
  ASSERT_EQ((*entries)->Count(), 2);
  EXPECT_EQ((*entries)->Key(0), first);
  EXPECT_EQ((*entries)->Key(1), second);
}

}  // namespace
}  // namespace velmora::store::embedded
