// vCards, and the birthdays in them.
#include "addresses/vcard.h"

#include "addresses/address_fixture.h"
#include "addresses/birthday.h"

namespace velmora::addresses {
namespace {

const DateTime Now = DateTime::FromCivil({2026, 3, 4, 5, 6, 7}).value();

// The value of a line of the card.
std::string Line(const AddressRecord& record, const std::string& name) {
  const std::string card = FormatVCard(record, Now);
  const auto start = card.find("\r\n" + name + ":");
  if (start == std::string::npos) return "no line";
  const auto begin = start + name.size() + 3;
  return card.substr(begin, card.find("\r\n", begin) - begin);
}

// "VCard" and "End" in this case: readers of these cards may compare them so.
TEST(VCardFormat, EveryLineInItsOrder) {
  EXPECT_EQ(FormatVCard(FullRecord(), Now),
            "BEGIN:VCard\r\nVERSION:2.1\r\nFN:v0\r\nN:v2;v3;v4;v5\r\nORG:v8\r\nTITLE:v6\r\n"
            "TEL;WORK;VOICE:v15\r\nTEL;HOME;VOICE:v16\r\nTEL;CELL;VOICE:v17\r\nTEL;PAGER;VOICE:v21\r\n"
            "TEL;WORK;FAX:v1\r\nTEL;HOME;FAX:v18\r\nX-DAVID-VoiceBox:v20\r\nX-DAVID-CATEGORY:32769\r\n"
            "X-DAVID-2EMAIL:v24\r\nX-DAVID-DEFAULTADDR:3\r\nX-DAVID-PDACategory:v25\r\n"
            "EMAIL;PREF;INTERNET:v19\r\nURL;WORK:v14\r\n"
            "ADR;WORK;ENCODING=QUOTED-PRINTABLE:;;v9;v11;v13;v10;v12\r\n"
            "LABEL;WORK;ENCODING=QUOTED-PRINTABLE:v9=0D=0A, v11 v10=0D=0Av12\r\n"
            "BDAY:19700805\r\nX-DAVID-BDAY:05.08.1970\r\nNOTE;ENCODING=QUOTED-PRINTABLE:v22\r\n"
            "REV:20260304T050607Z\r\nEnd:VCard\r\n");
}

TEST(VCardFormat, ABirthdayThatIsNoDateStaysAsText) {
  AddressRecord record;
  EXPECT_EQ(Line(record, "BDAY"), "19000000");
  EXPECT_EQ(Line(record, "X-DAVID-BDAY"), "");
  record.Fields[field::Birthday] = "im Mai";
  EXPECT_EQ(Line(record, "BDAY"), "19000000");
  EXPECT_EQ(Line(record, "X-DAVID-BDAY"), "im Mai");
}

constexpr const char* Note = "NOTE;ENCODING=QUOTED-PRINTABLE";

TEST(VCardFormat, ALineBreakOfTheNotesIsEncodedWhateverItsForm) {
  AddressRecord record;
  record.Notes = "a\r\nb\nc\rd\r\n\r\ne\tf";
  EXPECT_EQ(Line(record, Note), "a=0D=0Ab=0D=0Ac=0D=0Ad=0D=0A=0D=0Ae f");
}

TEST(VCardFormat, TheNotesComeFromTheEntryAndNotFromTheField) {
  AddressRecord record;
  record.Fields[field::Notes] = "eins zwei";
  record.Notes = "eins\r\nzwei";
  EXPECT_EQ(Line(record, Note), "eins=0D=0Azwei");
}

// The lines promise an encoding that nobody makes: these cards have always been so, and readers know it.
TEST(VCardFormat, ValuesStandAsTheyAreWhereTheLinePromisesAnEncoding) {
  AddressRecord record;
  record.Notes = "ä = ü; x=";
  record.Fields[field::Country] = "Land=";
  record.Fields[field::Street] = "Straße=";
  EXPECT_EQ(Line(record, Note), "ä = ü; x=");
  EXPECT_EQ(Line(record, "ADR;WORK;ENCODING=QUOTED-PRINTABLE"), ";;Straße=;;;;Land=");
  EXPECT_EQ(Line(record, "LABEL;WORK;ENCODING=QUOTED-PRINTABLE"), "Straße==0D=0A,  =0D=0ALand=");
}

TEST(Birthday, GermanAndIsoDatesAlsoWithATime) {
  const auto day = DateTime::FromCivil({1970, 8, 5, 0, 0, 0});
  for (const char* text : {"05.08.1970", "5.8.1970", "5.8.70", "1970-08-05", " 05.08.1970 "}) {
    EXPECT_EQ(ParseBirthday(text), day) << text;
  }
  const auto withTime = DateTime::FromCivil({1970, 8, 5, 8, 30, 0});
  for (const char* text : {"05.08.1970 08:30:00", "5.8.70 8:30", "1970-08-05 08:30", "1970-08-05T08:30:00",
                           "1970-08-05T08:30:00Z"}) {
    EXPECT_EQ(ParseBirthday(text), withTime) << text;
  }
}

TEST(Birthday, YearsOfTwoDigitsLieAroundTheTurnOfTheCentury) {
  EXPECT_EQ(ParseBirthday("1.1.30").value().Civil().Year, 1930);
  EXPECT_EQ(ParseBirthday("1.1.99").value().Civil().Year, 1999);
  EXPECT_EQ(ParseBirthday("1.1.00").value().Civil().Year, 2000);
  EXPECT_EQ(ParseBirthday("1.1.29").value().Civil().Year, 2029);
}

TEST(Birthday, EverythingElseIsNone) {
  for (const char* text :
       {"",          " ",        "heute",          "31.2.1970", "29.02.1971", "0.1.1970",
        "1.13.1970", "1.1.970",  "1.1.19700",      "..",        "1.1.",       "a.b.cd",
        "1970-2-30", "70-08-05", "1.1.1970 25:00", "1.1.1970x", "01.01.0000", "1.1.1970 08:30 Uhr",
        "-1.1.1970", "1-1-1970"}) {
    EXPECT_FALSE(ParseBirthday(text)) << text;
  }
}

}  // namespace
}  // namespace velmora::addresses
