// The lines of delimited text and of GroupWise address books.
#include "addresses/address_fixture.h"
#include "addresses/delimited_text.h"
#include "addresses/groupwise.h"
#include "base/text.h"

namespace velmora::addresses {
namespace {

constexpr std::string_view Header =
    "\"Anzeigename\";\"Fax\";\"Nachname\";\"Vorname\";\"Initialen\";\"Anrede\";\"Titel\";\"Geburtstag\";"
    "\"Firma\";\"Straße\";\"PLZ\";\"Ort\";\"Land\";\"Bundesland\";\"WebSite\";\"Geschäftlich\";\"Privat\";"
    "\"Mobil\";\"AltFax\";\"EMail\";\"VoiceBox\";\"SMS_Pager\";\"Kommentar\";\"Kategorien\";\"AltEMail\";"
    "\"PDA_Kategorie\"";

constexpr std::string_view TagMap =
    ":::TAGMAP:::0FFE0003:***,3001001E:Name,3A08001E:Telefonnummer (Büro),3A18001E:Abteilung,"
    "3A23001E:Faxnummer,3003001E:Email-Adresse,3A06001E:Vorname,3A11001E:Nachname,3A17001E:Titel,"
    "3A29001E:Adresse,3A27001E:Ort,3A28001E:Bundesland,3A26001E:Land,3A2A001E:Postleitzahl,"
    "3002001E:Email-Typ,3A19001E:Postverteiler,3A09001E:Telefonnummer (Privat),"
    "3A1C001E:Mobiltelefonnummer,3A21001E:Pager-Nummer,3A1A001E:Telefonnummer,600B001E:Anrede,"
    "600F001E:Eigentümer,3A16001E:Organisation,3004001E:Kommentar,3A00001E:Benutzer-ID,6604001E:Domäne,"
    "6609001E:Zusatzleitweg,6605001E:Post-Office,6603001E:GUID,6607001E:Eindeutiger NDS-Name,"
    "6608001E:Netzwerk-ID,660D001E:Internet-Domäne,660E001E:AIM/IM-Benutzername,8000001E:Inhalt,"
    "8000001E:URL";

TEST(QuoteField, AnEmptyValueLeavesNothingBetweenTwoSeparators) {
  EXPECT_EQ(QuoteField("", true, ";"), ";");
  EXPECT_EQ(QuoteField("", false, ";"), "");
}

TEST(QuoteField, QuotesTheValueAndAppendsTheSeparatorWhenAsked) {
  EXPECT_EQ(QuoteField("a", true, ";"), "\"a\";");
  EXPECT_EQ(QuoteField("a", false, ";"), "\"a\"");
  EXPECT_EQ(QuoteField("a", true, "\t"), "\"a\"\t");
}

// The readers of these files know no doubled quote: it would end the value.
TEST(QuoteField, ADoubleQuoteComesOutAsAnApostrophe) {
  EXPECT_EQ(QuoteField("a \"b\" c", false, ";"), "\"a 'b' c\"");
  EXPECT_EQ(QuoteField("\"", false, ";"), "\"'\"");
}

TEST(QuoteField, ASeparatorInTheValueIsNotEscaped) { EXPECT_EQ(QuoteField("a;b", true, ";"), "\"a;b\";"); }

TEST(DelimitedText, TheHeaderNamesTheColumns) {
  EXPECT_EQ(DelimitedHeader(";"), Header);
  EXPECT_EQ(DelimitedHeader(","), ReplaceAll(Header, ";", ","));
  EXPECT_EQ(DelimitedHeader("\t"), ReplaceAll(Header, ";", "\t"));
}

TEST(DelimitedText, ALineHoldsTheFieldsWithoutASeparatorAtItsEnd) {
  EXPECT_EQ(DelimitedLine(FullRecord(), ";"),
            "\"v0\";\"v1\";\"v2\";\"v3\";\"v4\";\"v5\";\"v6\";\"05.08.1970\";\"v8\";\"v9\";\"v10\";\"v11\";"
            "\"v12\";\"v13\";\"v14\";\"v15\";\"v16\";\"v17\";\"v18\";\"v19\";\"v20\";\"v21\";\"v22\";"
            "\"1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1\";\"v24\";\"v25\"");
  EXPECT_EQ(DelimitedLine(AddressRecord{}, ","), std::string(FieldCount - 1, ','));
}

TEST(GroupWise, TheFirstLineIsTheTagMap) { EXPECT_EQ(GroupWiseTagMap(","), TagMap); }

// A reader splits this line at the separator of the settings, so it is written with it.
TEST(GroupWise, TheTagMapHasTheSeparatorOfTheSettings) {
  EXPECT_EQ(GroupWiseTagMap(";"), ReplaceAll(TagMap, ",", ";"));
}

// "Inhalt" and "URL" share a tag: readers take the second one.
TEST(GroupWise, TheTableFollowsTheTagMapAndHasOneTagTwice) {
  const auto parts = Split(TagMap, ",");
  ASSERT_EQ(parts.size(), TagFieldTable.size() + 1);
  for (std::size_t i = 0; i < TagFieldTable.size(); ++i) {
    EXPECT_EQ(parts[i + 1], std::string(TagFieldTable[i].Tag) + ":" + std::string(TagFieldTable[i].Label));
  }
  EXPECT_EQ(TagFieldTable.size(), 34u);
  EXPECT_EQ(TagFieldTable[32].Tag, TagFieldTable[33].Tag);
  EXPECT_EQ(TagFieldTable[32].Field, NoField);
  EXPECT_EQ(TagFieldTable[33].Field, field::WebSite);
}

TEST(GroupWise, ARecordFollowsTheMap) {
  EXPECT_EQ(GroupWiseLine(FullRecord(), ","),
            "\"U\",\"v0\",\"v15\",,\"v1,v18\",\"v19,v24\",\"v3,v4\",\"v2\",\"v6\",\"v9\",\"v11\",\"v13\","
            "\"v12\",\"v10\",,,\"v16\",\"v17\",\"v21\",,\"v5\",,\"v8\","
            "\"v22\r\nGeburtstag 05.08.1970\r\nVoiceBox v20\",,,,,,,,,,,\"v14\"");
}

// Fields that share a column are one value, so the comma between them is there even when both are empty; the
// comment always has its two labels.
TEST(GroupWise, AnEmptyAddressKeepsCommasAndLabels) {
  EXPECT_EQ(GroupWiseLine(AddressRecord{}, ";"),
            "\"U\";;;;\",\";\",\";\",\";;;;;;;;;;;;;;;;;\"\r\nGeburtstag \r\nVoiceBox \";;;;;;;;;;;");
}

TEST(GroupWise, APartOfAJoinedColumnKeepsItsPlace) {
  AddressRecord record;
  record.Fields[field::SecondFax] = "0456";
  EXPECT_TRUE(GroupWiseLine(record, ";").starts_with("\"U\";;;;\",0456\";"));
  record.Fields[field::Fax] = "0123";
  EXPECT_TRUE(GroupWiseLine(record, ";").starts_with("\"U\";;;;\"0123,0456\";"));
}

}  // namespace
}  // namespace velmora::addresses
