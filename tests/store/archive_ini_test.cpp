#include "store/archive_ini.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "platform/host_file_system.h"
#include "store/remote_access.h"
#include "support/faulty_file_system.h"
#include "support/temp_dir.h"

namespace velmora::store {
namespace {

class ArchiveIniTest : public testing::Test {
 protected:
  ArchiveIniTest() { Files = platform::MakeHostFileSystem({{R"(\\SERVER\DAVID)", Temp.HostPath()}}); }

  void Write(std::string_view bytes) { Temp.WriteHostFile("archive.ini", bytes); }
  std::string Value(std::string_view key) { return ReadArchiveIniValue(*Files, Directory, key); }

  static constexpr std::string_view Directory = R"(\\SERVER\DAVID)";
  test::TempDir Temp;
  std::unique_ptr<platform::FileSystem> Files;
};

constexpr std::string_view Section = "[DvISE Archive Access Form]\r\n";

TEST_F(ArchiveIniTest, TheLayoutFileIsFoundAtTheBeginningOfALine) {
  Write("[ArchiveProperties]\r\n; layoutfile=nicht dies\r\n  layoutfile = x.htm  \r\n");
  EXPECT_EQ(ReadLayoutFile(*Files, Directory), "x.htm");
  Write("LAYOUTFILE=Übersicht.htm");
  EXPECT_NE(ReadLayoutFile(*Files, Directory), "") << "no line end at the end";
  Write("My layoutfile=x.htm\r\n");
  EXPECT_EQ(ReadLayoutFile(*Files, Directory), "");
}

TEST_F(ArchiveIniTest, ValuesAreInTheCodePage) {
  Write(
      "LayoutFile=\xDC"
      "bersicht.htm\r\n");
  EXPECT_EQ(ReadLayoutFile(*Files, Directory), "Übersicht.htm");
}

TEST_F(ArchiveIniTest, AKeyCountsWhereverItStands) {
  Write("; Kommentar mit USERNAME=aus dem Kommentar\r\nUserName=richtig\r\n");
  EXPECT_EQ(Value("username"), "aus dem Kommentar");
  Write("MyPasswordReplica = geheim \r\nPassword=x\r\n");
  EXPECT_EQ(Value("Password"), "geheim") << "the first line that holds the key decides";
  Write("UserName\r\nUserName=zu spät\r\n");
  EXPECT_EQ(Value("UserName"), "");
  Write("a=b=c\r\n");
  EXPECT_EQ(Value("a"), "b=c");
}

TEST_F(ArchiveIniTest, AValueOfALineWithAnAsteriskIsAsItStands) {
  Write("Key=  a*b  \r\nOther=  c  \r\n");
  EXPECT_EQ(Value("key"), "  a*b  ");
  EXPECT_EQ(Value("other"), "c");
}

TEST_F(ArchiveIniTest, MissingFilesKeysAndDirectoriesGiveNothing) {
  EXPECT_EQ(ReadLayoutFile(*Files, Directory), "");
  EXPECT_EQ(ReadLayoutFile(*Files, R"(\\ANDERER\DAVID)"), "");
  EXPECT_EQ(ReadAccessIni(*Files, Directory), AccessData{});
  EXPECT_FALSE(ReadDatabaseIni(*Files, Directory));
  EXPECT_FALSE(FindAnnouncement(*Files, Directory));
  std::filesystem::create_directory(Temp.HostPath("archive.ini"));
  EXPECT_EQ(Value("x"), "");
}

TEST_F(ArchiveIniTest, HostileFilesAreReadWithoutHarm) {
  std::string content(1 << 20, 'x');
  content +=
      std::string("\r\n") + '\0' + "UserName=" + '\0' + "n\r\n" + std::string(1 << 20, '=') + "\r\nend=1";
  Write(content);
  EXPECT_EQ(Value("username"), std::string(1, '\0') + "n");
  EXPECT_EQ(Value("end"), "1");
  std::filesystem::resize_file(Temp.HostPath("archive.ini"), std::uintmax_t{1} << 30);
  EXPECT_EQ(Value("username"), "") << "what is that large is no file of options";
}

TEST_F(ArchiveIniTest, AMissingFileIsMadeFromTheTemplate) {
  ASSERT_TRUE(WriteAccessIni(*Files, Directory, {"otto", "geheim"}, IniBase::Existing));
  EXPECT_EQ(Temp.ReadHostFile("access.ini"),
            "[DvISE Archive Access Form]\r\nUserName=otto\r\nPassWord=geheim\r\n[ArchiveProperties]\r\n"
            "LayoutFile=\r\n");
  EXPECT_EQ(ReadAccessIni(*Files, Directory), (AccessData{"otto", "geheim"}));
  ASSERT_TRUE(RegenerateArchiveIni(*Files, Directory, {}, IniBase::Template));
  EXPECT_EQ(Temp.ReadHostFile("archive.ini"), IniTemplate);
}

TEST_F(ArchiveIniTest, PasswordReplicaAndUnknownLinesStayByteForByte) {
  const std::string others =
      std::string("PasswordReplica=alt\r\nPASSWORD2=web\r\nSprache=\xE4\xF6\r\n\r\n[Andere]\r\n") +
      "UserName=dort\r\nPassWord=dort\r\n";
  Temp.WriteHostFile("access.ini", std::string(Section) + "username = a\r\nPASSWORD=b\r\n" + others);
  ASSERT_TRUE(WriteAccessIni(*Files, Directory, {"Jörg", "neu"}, IniBase::Existing));
  EXPECT_EQ(Temp.ReadHostFile("access.ini"),
            std::string(Section) + "UserName=J\xF6rg\r\nPassWord=neu\r\n" + others);
}

TEST_F(ArchiveIniTest, AnAbsentSectionBecomesTheFirstOne) {
  Write("[ArchiveProperties]\r\nLayoutFile=x.htm");
  ASSERT_TRUE(RegenerateArchiveIni(*Files, Directory, {"a", "b"}, IniBase::Existing));
  EXPECT_EQ(Temp.ReadHostFile("archive.ini"), std::string(Section) +
                                                  "UserName=a\r\nPassWord=b\r\n[ArchiveProperties]\r\n"
                                                  "LayoutFile=x.htm\r\n");
  EXPECT_EQ(WithAccessData("", {"a", "b"}), std::string(Section) + "UserName=a\r\nPassWord=b\r\n");
}

TEST_F(ArchiveIniTest, AbsentKeysFollowTheHeadInTheirOrder) {
  const auto with = [](std::string_view lines) {
    return WithAccessData(std::string(Section) + std::string(lines), {"a", "b"});
  };
  const std::string head(Section);
  EXPECT_EQ(with("Sprache=de\r\n"), head + "UserName=a\r\nPassWord=b\r\nSprache=de\r\n");
  EXPECT_EQ(with("PassWord=x\r\nSprache=de\r\n"), head + "UserName=a\r\nPassWord=b\r\nSprache=de\r\n");
  EXPECT_EQ(with("Sprache=de\r\nUserName=x\r\n"), head + "Sprache=de\r\nUserName=a\r\nPassWord=b\r\n");
  EXPECT_EQ(with("PasswordReplica=r\r\n"), head + "UserName=a\r\nPassWord=b\r\nPasswordReplica=r\r\n");
}

TEST_F(ArchiveIniTest, DeletedAccessLeavesBothKeysWithoutValues) {
  Write(std::string(Section) + "UserName=a\r\nPassWord=b\r\n");
  ASSERT_TRUE(RegenerateArchiveIni(*Files, Directory, {}, IniBase::Existing));
  EXPECT_EQ(Temp.ReadHostFile("archive.ini"), std::string(Section) + "UserName=\r\nPassWord=\r\n");
}

TEST_F(ArchiveIniTest, AValueMakesNoLinesOfItsOwn) {
  EXPECT_EQ(WithAccessData("", {"a\r\nPassWord=x", "b"}),
            std::string(Section) + "UserName=a  PassWord=x\r\nPassWord=b\r\n");
}

TEST_F(ArchiveIniTest, AFailedWriteLeavesTheFile) {
  Temp.WriteHostFile("access.ini", "UserName=alt\r\n");
  test::FaultyFileSystem faulty(*Files);
  faulty.FailOn(test::Fault::ShortWrite, 1, platform::file_error::DiskFull);
  EXPECT_FALSE(WriteAccessIni(faulty, Directory, {"neu", "neu"}, IniBase::Template));
  EXPECT_EQ(Temp.ReadHostFile("access.ini"), "UserName=alt\r\n");
}

TEST_F(ArchiveIniTest, AFileThatCannotBeReadIsNotOverwritten) {
  Temp.WriteHostFile("access.ini", "UserName=alt\r\n");
  test::FaultyFileSystem faulty(*Files);
  faulty.FailOn(test::Fault::Open, 1, platform::file_error::AccessDenied);
  EXPECT_FALSE(WriteAccessIni(faulty, Directory, {"neu", "neu"}, IniBase::Existing));
  EXPECT_EQ(Temp.ReadHostFile("access.ini"), "UserName=alt\r\n");
}

TEST_F(ArchiveIniTest, TheDatabaseOptionsComeWhole) {
  Temp.WriteHostFile("database.ini", "a=1\r\nb=\xFC\r\n");
  EXPECT_EQ(ReadDatabaseIni(*Files, Directory), "a=1\r\nb=ü\r\n");
}

// --- Remote access. ---

TEST_F(ArchiveIniTest, RemoteAccessIsReadByWholeKeys) {
  const auto access = RemoteAccess::Parse(
      "PASSWORD2=web\r\nPasswordReplica=rep\r\nPassword = 4711 \r\npassword=zweites\r\nLeaveMsg=1\r\nohne "
      "Wert\r\n");
  EXPECT_EQ(access.Value("PASSWORD"), "4711");
  EXPECT_EQ(access.Value("PASSWORD2"), "web");
  EXPECT_EQ(access.Value("PASSWORDREPLICA"), "rep");
  EXPECT_EQ(access.Value("LEAVEMSG"), "1");
  EXPECT_EQ(access.Value("ohne Wert"), "");
  EXPECT_TRUE(access.IsEnabled());
  EXPECT_TRUE(access.HasNumericPassword());
  EXPECT_FALSE(RemoteAccess::Parse("PASSWORD=4711a").HasNumericPassword());
  EXPECT_FALSE(RemoteAccess::Parse("PASSWORD=\r\n").IsEnabled());
  EXPECT_FALSE(RemoteAccess::Read(*Files, Directory).IsEnabled());
}

TEST_F(ArchiveIniTest, RemoteAccessValuesAreShownInGerman) {
  const auto shown = [](std::string_view key, std::string_view value) {
    for (const RemoteAccessKey& row : RemoteAccessKeys)
      if (row.Key == key) return DecodeAccessValue(row.Decoder, value);
    return std::string("no such key");
  };
  EXPECT_EQ(shown("SPEECHTYPE", "WAVE"), "Wave");
  EXPECT_EQ(shown("SPEECHTYPE", "T2S"), "Synthetisch");
  EXPECT_EQ(shown("SPEECHTYPE", "sonst"), "sonst");
  EXPECT_EQ(shown("LeaveMsg", "1"), "ein");
  EXPECT_EQ(shown("LeaveMsg", "0"), "aus");
  EXPECT_EQ(shown("INBOXCONFIGURED", "true"), "Ja");
  EXPECT_EQ(shown("INBOXCONFIGURED", "1"), "Nein");
  EXPECT_EQ(shown("MSGTRACKING", "1"), "Ja");
  EXPECT_EQ(shown("AUTOLOGIN", ""), "Nein");
  EXPECT_EQ(shown("DEFAULTREMINDER", ""), "<keine>");
  EXPECT_EQ(shown("DEFAULTREMINDER", "15"), "15 min");
  EXPECT_EQ(shown("DEFAULTCALTYPE", "2"), "Woche");
  EXPECT_EQ(shown("DEFAULTCALTYPE", "4"), "Arbeitswoche");
  EXPECT_EQ(shown("DEFAULTCALTYPE", "9"), "Tag");
  EXPECT_EQ(shown("DEFAULTEDITOR", "HTML"), "HTML");
  EXPECT_EQ(shown("DEFAULTEDITOR", "TEXT"), "Nur Text");
  EXPECT_EQ(shown("MARKREAD", "true"), "Ja");
  EXPECT_EQ(shown("MAXENTRIES", "25"), "25");
}

TEST_F(ArchiveIniTest, TheAnnouncementIsAFileBesideTheOptions) {
  Temp.WriteHostFile("PUBLIC.WAV", "riff");
  const auto found = FindAnnouncement(*Files, Directory);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Name, "PUBLIC.WAV");
  EXPECT_EQ(found->Size, 4);
}

}  // namespace
}  // namespace velmora::store
