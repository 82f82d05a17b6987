// Cards of many programs, and what is no card.
#include "addresses/vcard_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

#include "addresses/vcard.h"
#include "base/code_page.h"
#include "base/text.h"

namespace velmora::addresses {
namespace {

using store::AddressProperty;
using store::AddressValues;

std::vector<AddressValues> ReadAll(std::string_view bytes) {
  VCardReader reader(bytes);
  std::vector<AddressValues> cards;
  while (auto card = reader.Next()) cards.push_back(std::move(card->Values));
  return cards;
}

// The only card made of these lines; a failure when there are more.
AddressValues ReadLines(std::string_view version, std::string_view lines) {
  const auto bytes =
      "BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + std::string(lines) + "END:VCARD\r\n";
  const auto cards = ReadAll(bytes);
  EXPECT_EQ(cards.size(), 1U);
  return cards.empty() ? AddressValues{} : cards.front();
}

std::string Value(const AddressValues& card, AddressProperty property) {
  const auto found = card.find(property);
  return found == card.end() ? "" : found->second;
}

std::string ReadOne(std::string_view version, std::string_view lines, AddressProperty property) {
  return Value(ReadLines(version, lines), property);
}

TEST(VCardReaderTest, ReadsTheCardThatThisProgramWrites) {
  const auto card = ReadAll(
      "BEGIN:VCard\r\nVERSION:2.1\r\nFN:Dr. Anna \xC4hre\r\nN:\xC4hre;Anna;M.;Frau\r\nORG:C:\\neu GmbH\r\n"
      "TITLE:Dr.\r\nTEL;WORK;VOICE:0221 1\r\nTEL;HOME;VOICE:0221 2\r\nTEL;CELL;VOICE:0171 3\r\n"
      "TEL;PAGER;VOICE:4\r\nTEL;WORK;FAX:0221 5\r\nTEL;HOME;FAX:0221 6\r\nX-DAVID-VoiceBox:7\r\n"
      "X-DAVID-CATEGORY:32769\r\nX-DAVID-2EMAIL:zwei@example.org\r\nX-DAVID-DEFAULTADDR:2\r\n"
      "X-DAVID-PDACategory:Gesch\xE4"
      "ft\r\nEMAIL;PREF;INTERNET:eins@example.org\r\n"
      "URL;WORK:https://example.org/a;b\r\n"
      "ADR;WORK;ENCODING=QUOTED-PRINTABLE:;;Am Ring 1;K\xF6ln;NRW;50667;Deutschland\r\n"
      "LABEL;WORK;ENCODING=QUOTED-PRINTABLE:Am Ring 1=0D=0A, K\xF6ln 50667=0D=0A\r\n"
      "BDAY:19700805\r\nX-DAVID-BDAY:5.8.70\r\nNOTE;ENCODING=QUOTED-PRINTABLE:Eins=0D=0AZwei = 2\r\n"
      "REV:20261121T081500Z\r\nEnd:VCard\r\n");
  const AddressValues expected{
      {AddressProperty::DisplayName, "Dr. Anna Ähre"},
      {AddressProperty::LastName, "Ähre"},
      {AddressProperty::FirstName, "Anna"},
      {AddressProperty::MiddleInitial, "M."},
      {AddressProperty::Salutation, "Frau"},
      {AddressProperty::Company, "C:\\neu GmbH"},
      {AddressProperty::Title, "Dr."},
      {AddressProperty::BusinessPhone, "0221 1"},
      {AddressProperty::HomePhone, "0221 2"},
      {AddressProperty::MobilePhone, "0171 3"},
      {AddressProperty::Pager, "4"},
      {AddressProperty::FaxNumber, "0221 5"},
      {AddressProperty::SecondFax, "0221 6"},
      {AddressProperty::VoiceBox, "7"},
      {AddressProperty::Categories, "32769"},
      {AddressProperty::SecondEMail, "zwei@example.org"},
      {AddressProperty::DefaultAddress, "2"},
      {AddressProperty::PdaCategory, "Geschäft"},
      {AddressProperty::EMail, "eins@example.org"},
      {AddressProperty::WebAddress, "https://example.org/a;b"},
      {AddressProperty::Street, "Am Ring 1"},
      {AddressProperty::City, "Köln"},
      {AddressProperty::State, "NRW"},
      {AddressProperty::PostalCode, "50667"},
      {AddressProperty::Country, "Deutschland"},
      {AddressProperty::Birthday, "5.8.70"},
      {AddressProperty::Notes, "Eins\r\nZwei = 2"},
  };
  ASSERT_EQ(card.size(), 1U);
  for (const auto& [property, text] : expected) {
    EXPECT_EQ(Value(card.front(), property), text) << static_cast<int>(property);
  }
  EXPECT_EQ(card.front().size(), expected.size());
}

TEST(VCardReaderTest, AWrittenCardComesBack) {
  AddressRecord address;
  for (std::size_t i = 0; i < FieldCount; ++i)
    address.Fields[i] = "Wert " + std::string(ColumnNames[i]) + " = € \\n";
  for (const auto column : {field::Street, field::PostalCode, field::Country}) address.Fields[column] += "=";
  address.Notes = "Eins =3\r\nZwei =";
  address.Categories = 0x8001;
  address.DefaultAddress = 4;
  const auto written = FormatVCard(address, *DateTime::FromCivil({2026, 11, 21, 8, 0, 0}));
  constexpr std::array columns{std::pair(field::DisplayName, AddressProperty::DisplayName),
                               std::pair(field::Fax, AddressProperty::FaxNumber),
                               std::pair(field::LastName, AddressProperty::LastName),
                               std::pair(field::FirstName, AddressProperty::FirstName),
                               std::pair(field::Initials, AddressProperty::MiddleInitial),
                               std::pair(field::Salutation, AddressProperty::Salutation),
                               std::pair(field::Title, AddressProperty::Title),
                               std::pair(field::Birthday, AddressProperty::Birthday),
                               std::pair(field::Company, AddressProperty::Company),
                               std::pair(field::Street, AddressProperty::Street),
                               std::pair(field::PostalCode, AddressProperty::PostalCode),
                               std::pair(field::City, AddressProperty::City),
                               std::pair(field::Country, AddressProperty::Country),
                               std::pair(field::State, AddressProperty::State),
                               std::pair(field::WebSite, AddressProperty::WebAddress),
                               std::pair(field::BusinessPhone, AddressProperty::BusinessPhone),
                               std::pair(field::HomePhone, AddressProperty::HomePhone),
                               std::pair(field::MobilePhone, AddressProperty::MobilePhone),
                               std::pair(field::SecondFax, AddressProperty::SecondFax),
                               std::pair(field::EMail, AddressProperty::EMail),
                               std::pair(field::VoiceBox, AddressProperty::VoiceBox),
                               std::pair(field::Pager, AddressProperty::Pager),
                               std::pair(field::SecondEMail, AddressProperty::SecondEMail),
                               std::pair(field::PdaCategory, AddressProperty::PdaCategory)};
  for (const auto& bytes : {written, ToCodePage(written)}) {
    const auto cards = ReadAll(bytes);
    ASSERT_EQ(cards.size(), 1U);
    for (const auto& [column, property] : columns) {
      EXPECT_EQ(Value(cards[0], property), address.Fields[column]) << ColumnNames[column];
    }
    EXPECT_EQ(Value(cards[0], AddressProperty::Notes), address.Notes);
    EXPECT_EQ(Value(cards[0], AddressProperty::Categories), "32769");
    EXPECT_EQ(Value(cards[0], AddressProperty::DefaultAddress), "4");
  }
}

TEST(VCardReaderTest, ABirthdayThatIsNoneGivesNone) {
  EXPECT_EQ(ReadOne("2.1", "BDAY:19000000\r\nX-DAVID-BDAY:\r\n", AddressProperty::Birthday), "");
  EXPECT_EQ(ReadOne("2.1", "BDAY:19000000\r\nX-DAVID-BDAY:im Mai\r\n", AddressProperty::Birthday), "im Mai");
  EXPECT_EQ(ReadOne("3.0", "BDAY:1970-08-05\r\n", AddressProperty::Birthday), "05.08.1970");
  EXPECT_EQ(ReadOne("3.0", "BDAY:1970-08-05T00:00:00Z\r\n", AddressProperty::Birthday), "05.08.1970");
  EXPECT_EQ(ReadOne("4.0", "BDAY:--0229\r\n", AddressProperty::Birthday), "29.02.");
  EXPECT_EQ(ReadOne("4.0", "BDAY:1970-02-30\r\n", AddressProperty::Birthday), "");
  EXPECT_EQ(ReadOne("4.0", "BDAY;VALUE=text:um 1800\r\n", AddressProperty::Birthday), "um 1800");
}

TEST(VCardReaderTest, LinesAreUnfoldedAsTheirVersionFoldsThem) {
  EXPECT_EQ(ReadOne("3.0", "FN:An\r\n na Be\r\n\trg\r\n", AddressProperty::DisplayName), "Anna Berg");
  EXPECT_EQ(ReadOne("2.1", "FN:Anna\r\n Berg\r\n", AddressProperty::DisplayName), "Anna Berg");
  EXPECT_EQ(ReadOne("4.0", "FN:Anna\n  Berg\n", AddressProperty::DisplayName), "Anna Berg");
  EXPECT_EQ(ReadOne("3.0", "FN:An\xC3\r\n \xA4\r\n", AddressProperty::DisplayName), "Anä")
      << "a fold within a character";
}

TEST(VCardReaderTest, LineEndsOfAllKindsAreRead) {
  for (const std::string_view end : {"\r\n", "\n", "\r"}) {
    const auto cards = ReadAll(ReplaceAll("BEGIN:VCARD\nVERSION:3.0\nFN:A\nTITLE:B\nEND:VCARD\n", "\n", end));
    ASSERT_EQ(cards.size(), 1U);
    EXPECT_EQ(Value(cards[0], AddressProperty::DisplayName), "A");
    EXPECT_EQ(Value(cards[0], AddressProperty::Title), "B");
  }
}

TEST(VCardReaderTest, QuotedPrintableGoesOnBehindASoftBreak) {
  EXPECT_EQ(
      ReadOne("2.1",
              "NOTE;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:Gr=C3=BC=C3=9F=\r\n e, =\r\nTEL:1=0D=0AZwei\r\n",
              AddressProperty::Notes),
      "Grüß e, TEL:1\r\nZwei");
  EXPECT_EQ(ReadOne("2.1", "FN;QUOTED-PRINTABLE:J=F6rg\r\n", AddressProperty::DisplayName), "Jörg");
  EXPECT_EQ(ReadOne("2.1", "FN;ENCODING=QUOTED-PRINTABLE:a=b=4\r\n", AddressProperty::DisplayName), "a=b=4")
      << "what is no code stays";
  EXPECT_EQ(ReadOne("2.1", "FN;ENCODING=QUOTED-PRINTABLE:a=\r\n", AddressProperty::DisplayName), "a=")
      << "the end of the card is no continuation";
  EXPECT_EQ(ReadOne("2.1", "FN:a=\r\nTITLE:b\r\n", AddressProperty::Title), "b") << "no quoted-printable";
}

TEST(VCardReaderTest, CharsetsAreRead) {
  EXPECT_EQ(ReadOne("2.1", "FN;CHARSET=ISO-8859-1:J\xF6rg\r\n", AddressProperty::DisplayName), "Jörg");
  EXPECT_EQ(ReadOne("2.1", "FN;CHARSET=Windows-1252:10 \x80\r\n", AddressProperty::DisplayName), "10 €");
  EXPECT_EQ(ReadOne("2.1", "FN;charset=utf-8:J\xC3\xB6rg\r\n", AddressProperty::DisplayName), "Jörg");
  EXPECT_EQ(ReadOne("3.0", "FN:J\xC3\xB6rg\r\n", AddressProperty::DisplayName), "Jörg");
  EXPECT_EQ(ReadOne("3.0", "FN:J\xF6rg\r\n", AddressProperty::DisplayName), "Jörg");
  EXPECT_EQ(ReadOne("2.1", "FN;CHARSET=ISO-8859-1:\xC3\xB6\r\n", AddressProperty::DisplayName), "Ã¶");
  EXPECT_EQ(ReadOne("2.1", "FN;CHARSET=UTF-8:J\xF6rg\r\n", AddressProperty::DisplayName), "J\xEF\xBF\xBDrg");
  EXPECT_EQ(ReadAll("\xEF\xBB\xBF"
                    "BEGIN:VCARD\nFN:A\nEND:VCARD")
                .size(),
            1U)
      << "a byte order mark";
}

TEST(VCardReaderTest, EscapesAreThoseOfTheVersion) {
  EXPECT_EQ(ReadOne("3.0", "NOTE:a\\nb\\Nc\\, d\\; e\\\\f\\x\r\n", AddressProperty::Notes),
            "a\r\nb\r\nc, d; e\\f\\x");
  EXPECT_EQ(ReadOne("2.1", "NOTE:\\\\server\\neu\\, a\\;b\r\n", AddressProperty::Notes),
            "\\\\server\\neu\\, a;b");
  const auto card = ReadLines("3.0", "N:Berg\\; Tal;Anna;M\\,N;Dr.;Jr.\r\nORG:A\\;B;Einkauf;;\r\n");
  EXPECT_EQ(Value(card, AddressProperty::LastName), "Berg; Tal");
  EXPECT_EQ(Value(card, AddressProperty::MiddleInitial), "M,N");
  EXPECT_EQ(Value(card, AddressProperty::Salutation), "Dr.");
  EXPECT_EQ(Value(card, AddressProperty::Company), "A;B; Einkauf");
  EXPECT_EQ(ReadOne("3.0", "FN:Anna\\nBerg\r\n", AddressProperty::DisplayName), "Anna Berg")
      << "only notes have lines";
}

TEST(VCardReaderTest, NamesGroupsAndTypesAreReadInEveryForm) {
  const auto card =
      ReadLines("3.0",
                "item1.tel;type=\"cell,voice\":1\r\nTEL;TYPE=work;TYPE=fax:2\r\nitem2.x-ablabel:x\r\n"
                "Tel;Type=HOME,VOICE;X=\"a:b;c\":3\r\nTEL;WORK:4\r\nTEL;TYPE=pager:5\r\n"
                "TEL;FAX;HOME:6\r\nemail:a@b.c\r\n");
  EXPECT_EQ(Value(card, AddressProperty::MobilePhone), "1");
  EXPECT_EQ(Value(card, AddressProperty::FaxNumber), "2");
  EXPECT_EQ(Value(card, AddressProperty::HomePhone), "3");
  EXPECT_EQ(Value(card, AddressProperty::BusinessPhone), "4");
  EXPECT_EQ(Value(card, AddressProperty::Pager), "5");
  EXPECT_EQ(Value(card, AddressProperty::SecondFax), "6");
  EXPECT_EQ(Value(card, AddressProperty::EMail), "a@b.c");
}

TEST(VCardReaderTest, NumbersWithoutATypeTakeTheFreePlaces) {
  const auto card =
      ReadLines("4.0",
                "TEL;TYPE=work:1\r\nTEL;VALUE=uri;TYPE=voice:tel:+49-221-2;ext=7\r\nTEL:3\r\nTEL:4\r\n"
                "TEL;TYPE=fax:5\r\nTEL;TYPE=fax:6\r\nTEL;TYPE=fax:7\r\nTEL;TYPE=work:8\r\n");
  EXPECT_EQ(Value(card, AddressProperty::BusinessPhone), "1");
  EXPECT_EQ(Value(card, AddressProperty::HomePhone), "+49-221-2");
  EXPECT_EQ(Value(card, AddressProperty::MobilePhone), "3");
  EXPECT_EQ(Value(card, AddressProperty::FaxNumber), "5");
  EXPECT_EQ(Value(card, AddressProperty::SecondFax), "6");
}

TEST(VCardReaderTest, ThePreferredMailAddressComesFirst) {
  const auto card = ReadLines("4.0", "EMAIL:a@x\r\nEMAIL;PREF=1:mailto:b@x\r\nEMAIL:c@x\r\n");
  EXPECT_EQ(Value(card, AddressProperty::EMail), "b@x");
  EXPECT_EQ(Value(card, AddressProperty::SecondEMail), "a@x");
  EXPECT_EQ(Value(card, AddressProperty::DisplayName), "b@x") << "nothing else names the card";
}

TEST(VCardReaderTest, TheBusinessAddressGoesBeforeThePrivateOne) {
  const auto card = ReadLines("3.0",
                              "ADR;TYPE=home:;;Gasse 1;Bonn;;53111;\r\nADR;TYPE=work:;;;Köln;;;\r\n"
                              "ADR;TYPE=work:;;Ring 2;Mainz;;;\r\n");
  EXPECT_EQ(Value(card, AddressProperty::City), "Köln");
  EXPECT_EQ(Value(card, AddressProperty::Street), "") << "nothing of the other address is left";
  EXPECT_EQ(Value(card, AddressProperty::PostalCode), "");
  EXPECT_EQ(ReadOne("3.0", "ADR;TYPE=work:;;;;;;\r\nADR:;;;Bonn\r\n", AddressProperty::City), "Bonn");
  EXPECT_EQ(ReadOne("3.0", "ADR:Postfach 1;Haus 2;;Bonn\r\n", AddressProperty::Street), "Postfach 1");
}

TEST(VCardReaderTest, CategoriesOfTheStoreAreBits) {
  const auto card = ReadLines("3.0", "CATEGORIES:presse,Golf\\, Tennis,PLZ Bereich 9,\r\n");
  EXPECT_EQ(Value(card, AddressProperty::Categories), "32769");
  EXPECT_EQ(Value(card, AddressProperty::AddressCategories), "Golf, Tennis");
  EXPECT_EQ(ReadOne("3.0", "CATEGORIES:a,b\r\nCATEGORIES:c\r\n", AddressProperty::AddressCategories),
            "a; b; c");
  for (const auto* const bad : {"65536", "-1", "x", "99999999999999999999", "0"}) {
    const auto line = std::string("X-DAVID-CATEGORY:") + bad + "\r\n";
    EXPECT_EQ(ReadOne("2.1", line, AddressProperty::Categories), "") << bad;
  }
}

TEST(VCardReaderTest, PicturesGiveTheirNamesOnly) {
  EXPECT_EQ(ReadOne("2.1", "PHOTO;ENCODING=BASE64;TYPE=GIF:\r\n R0lGODdh\r\n FN:x\r\n\r\nTITLE:a\r\n",
                    AddressProperty::Title),
            "a");
  EXPECT_EQ(ReadOne("3.0", "PHOTO;ENCODING=b;X-FILENAME=\"C:\\\\Bilder\\\\anna.jpg\":AAAA\r\n",
                    AddressProperty::Photo),
            "anna.jpg");
  EXPECT_EQ(ReadOne("3.0", "PHOTO;VALUE=uri:https://x/y/anna.png?a=/b\r\n", AddressProperty::Photo),
            "anna.png");
  EXPECT_EQ(ReadOne("4.0", "PHOTO:data:image/gif;base64,R0lG/abc\r\n", AddressProperty::Photo), "");
  EXPECT_EQ(ReadOne("2.1", "NOTE;ENCODING=BASE64:QUJD\r\n", AddressProperty::Notes), "") << "no text";
}

TEST(VCardReaderTest, CardsWithoutAnEndAndTextBetweenThemAreRead) {
  const auto cards = ReadAll(
      "Guten Tag\r\nFN:keine Karte\r\nBEGIN:VCARD\r\nFN:A\r\nBEGIN:VCARD\r\nFN:B\r\nEND:VCARD\r\nFN:C\r\n"
      "END:VCARD\r\n\r\nbegin:vcard\r\nFN:D");
  ASSERT_EQ(cards.size(), 3U);
  EXPECT_EQ(Value(cards[0], AddressProperty::DisplayName), "A");
  EXPECT_EQ(Value(cards[1], AddressProperty::DisplayName), "B");
  EXPECT_EQ(Value(cards[2], AddressProperty::DisplayName), "D");
}

TEST(VCardReaderTest, TheCardOfAnAgentIsNotThatOfThePerson) {
  const auto cards = ReadAll(
      "BEGIN:VCARD\nVERSION:2.1\nFN:A\nAGENT:\nBEGIN:VCARD\nVERSION:2.1\nFN:B\nTITLE:T\nEND:VCARD\nNOTE:N\n"
      "END:VCARD\n");
  ASSERT_EQ(cards.size(), 1U);
  EXPECT_EQ(Value(cards[0], AddressProperty::DisplayName), "A");
  EXPECT_EQ(Value(cards[0], AddressProperty::Title), "");
  EXPECT_EQ(Value(cards[0], AddressProperty::Notes), "N");
}

TEST(VCardReaderTest, CardsTellTheLineWhereTheyBegin) {
  VCardReader reader("x\nBEGIN:VCARD\nFN:A\n B\nBEGIN:VCARD\nEND:VCARD\n");
  EXPECT_EQ(reader.Next()->Line, 2U);
  const auto second = reader.Next();
  EXPECT_EQ(second->Line, 5U);
  EXPECT_TRUE(second->Values.empty());
  EXPECT_FALSE(reader.Next());
  EXPECT_FALSE(reader.Next());
}

TEST(VCardReaderTest, WhatIsNoCardGivesNone) {
  for (const std::string_view bytes :
       {std::string_view(), std::string_view("\0\0\0\0", 4), std::string_view("\n\n:"),
        std::string_view("BEGIN:VCALENDAR\nEND:VCALENDAR"), std::string_view(":BEGIN"),
        std::string_view("BEGIN")}) {
    EXPECT_TRUE(ReadAll(bytes).empty()) << bytes;
  }
}

TEST(VCardReaderTest, DamagedLinesCostOnlyThemselves) {
  const auto card =
      ReadLines("3.0",
                "ohne Doppelpunkt\r\n:ohne Namen\r\n;;;:x\r\n.:x\r\nTEL;TYPE=\"work:1\r\nN\r\nN:\r\nADR:\r\n"
                "ORG:;;;\r\n\xFF\xFE;\xFF=\xFE:\xFF\r\nTITLE:T\x01\x1B[2J\x7F\r\n");
  EXPECT_EQ(Value(card, AddressProperty::Title), "T  [2J");
  EXPECT_EQ(Value(card, AddressProperty::BusinessPhone), "1") << "a quote without its end is none";
  EXPECT_EQ(card.size(), 2U);
}

TEST(VCardReaderTest, OverlongLinesAreCut) {
  const auto card = ReadLines("3.0", "FN:" + std::string(3 * LongestVCardLine, 'x') + "\r\nTITLE:T\r\n");
  EXPECT_EQ(Value(card, AddressProperty::DisplayName).size(), LongestVCardLine - 3);
  EXPECT_EQ(Value(card, AddressProperty::Title), "T");
  std::string folded = "NOTE:";
  for (int i = 0; i < 3000; ++i) folded += std::string(1000, 'y') + "\r\n ";
  const auto notes = ReadOne("3.0", folded + "\r\nTITLE:T\r\n", AddressProperty::Notes);
  EXPECT_EQ(notes.size(), LongestVCardLine - 5);
  std::string many;
  for (int i = 0; i < 3000; ++i) many += "NOTE:" + std::string(1000, 'z') + "\r\n";
  EXPECT_LE(ReadOne("3.0", many, AddressProperty::Notes).size(), LongestVCardLine);
}

// What grows with the square of the input would take hours here.
TEST(VCardReaderTest, HostileFilesOfAMillionPiecesAreRead) {
  constexpr std::size_t count = 1'000'000;
  const auto repeat = [](std::string_view piece) {
    std::string text = "BEGIN:VCARD\n";
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
  };
  EXPECT_EQ(ReadAll(repeat("BEGIN:VCARD\n")).size(), count + 1);
  for (const auto* const piece : {" \n", "NOTE;QUOTED-PRINTABLE:=\n", "AGENT:\nBEGIN:VCARD\n", ";", "\"",
                                  "\\n", "=", "EMAIL:a@b\n", "CATEGORIES:a,b\n", "TEL:1\n", "\r", "item."}) {
    EXPECT_EQ(ReadAll(repeat(piece)).size(), 1U) << piece;
  }
}

}  // namespace
}  // namespace velmora::addresses
