#include <string>

#include "mailarchive/format/folder_fixture.h"
#include "mailarchive/format/forms.h"
#include "support/forwarding_file_system.h"

namespace velmora::mailarchive {
namespace {

class DesignSetTest : public FolderTest {
 protected:
  DesignSetTest() { std::filesystem::create_directories(Folder.HostPath("target")); }

  DesignSet Designs{*Files, Folder.Path("designs"), "Standard"};
  const std::string Target = Folder.Path("target");
};

TEST_F(DesignSetTest, TakesTheDefaultNamesWithoutADesignFile) {
  EXPECT_FALSE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::TreeIndex), "StdVelmoraTreeIndexForm.htm");
  EXPECT_EQ(Designs.FormName(Form::IndexByDate), "StdVelmoraIndexForm.htm");
  EXPECT_EQ(Designs.FormName(Form::IndexBySubject), "StdVelmoraIndex2Form.htm");
  EXPECT_EQ(Designs.FormName(Form::IndexByAddress), "StdVelmoraIndex3Form.htm");
  EXPECT_EQ(Designs.FormName(Form::Mail), "StdVelmoraMailForm.htm");
  EXPECT_EQ(Designs.FormName(Form::Fax), "StdVelmoraFaxForm.htm");
  EXPECT_EQ(Designs.FormName(Form::Voice), "StdVelmoraVoiceMailForm.htm");
  EXPECT_EQ(Designs.FormName(Form::ExcelAddressSheet), "StdVelmoraAddressSheet.xls");
  EXPECT_EQ(Designs.FormName(Form::ExcelUserSheet), "StdVelmoraUserListSheet.xls");
}

TEST_F(DesignSetTest, FindsSectionsInAnyOrderAndCase) {
  Write("designs/Standard.ini", " [voice] \r\nFORM = v.htm\r\n[messages]\r\n; x\r\nform=m\xFC.htm\r\n");
  EXPECT_TRUE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::Mail), "mü.htm");
  EXPECT_EQ(Designs.FormName(Form::Voice), "v.htm");
  EXPECT_EQ(Designs.FormName(Form::Fax), "StdVelmoraFaxForm.htm");
  EXPECT_EQ(Designs.FormPath(Form::Voice), Folder.Path("designs\\v.htm"));
}

TEST_F(DesignSetTest, LooksForTheFormInTenLinesOfTheSection) {
  const std::string nine = "a\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng\r\nh\r\ni\r\n";
  Write("designs/Standard.ini",
        "[Messages]\r\n" + nine + "form=tenth.htm\r\n[Fax]\r\n" + nine + "j\r\nform=eleventh.htm");
  EXPECT_TRUE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::Mail), "tenth.htm");
  EXPECT_EQ(Designs.FormName(Form::Fax), "StdVelmoraFaxForm.htm");
}

TEST_F(DesignSetTest, ASectionEndsAtTheNextHead) {
  Write("designs/Standard.ini", "[Messages]\r\n[Fax]\r\nform=f.htm\r\n");
  EXPECT_TRUE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::Mail), "StdVelmoraMailForm.htm");
  EXPECT_EQ(Designs.FormName(Form::Fax), "f.htm");
}

TEST_F(DesignSetTest, ASectionLeftOutKeepsItsPreviousName) {
  Write("designs/Standard.ini", "[Fax]\r\nform=f.htm\r\n");
  EXPECT_TRUE(Designs.LoadDesignSet());
  Write("designs/Standard.ini", "[Voice]\r\nform=v.htm\r\n");
  EXPECT_TRUE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::Fax), "f.htm");
  Write("designs/Standard.ini", "[Other]\r\nform=o.htm\r\n");
  EXPECT_FALSE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::Voice), "v.htm");
}

TEST_F(DesignSetTest, CopiesPicturesAndMakesTheirFolders) {
  Write("designs/Standard.ini", "[Messages]\r\nform=m.htm\r\npictures=a.gif, sub/deep\\b.gif\r\n");
  Write("designs/a.gif", "A");
  Write("designs/sub/deep/b.gif", "B");
  Write("target/a.gif", "old");
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Mail, Target));
  EXPECT_EQ(Read("target/a.gif"), "A");
  EXPECT_EQ(Read("target/sub/deep/b.gif"), "B");
  EXPECT_FALSE(Exists("target/m.htm"));
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Mail, Target)) << "folders that stand are no failure";
}

TEST_F(DesignSetTest, AMissingPictureDoesNotFail) {
  Write("designs/Standard.ini", "[Fax]\r\nfiles=missing.gif,,a.gif\r\n");
  Write("designs/a.gif", "A");
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Fax, Target));
  EXPECT_TRUE(Exists("target/a.gif"));
}

TEST_F(DesignSetTest, SeesPicturesInTheTwoLinesBehindTheHeadOnly) {
  Write("designs/Standard.ini", "[Messages]\r\nform=m.htm\r\n; x\r\npictures=a.gif\r\n");
  Write("designs/a.gif", "A");
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Mail, Target));
  EXPECT_FALSE(Exists("target/a.gif"));
}

TEST_F(DesignSetTest, TheLaterOfPicturesAndFilesWins) {
  Write("designs/Standard.ini", "[messages]\r\nPictures=a.gif\r\nFiles=b.gif\r\n");
  Write("designs/a.gif", "A");
  Write("designs/b.gif", "B");
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Mail, Target));
  EXPECT_FALSE(Exists("target/a.gif"));
  EXPECT_TRUE(Exists("target/b.gif"));
}

TEST_F(DesignSetTest, FailsWithoutDesignFileOrSection) {
  EXPECT_FALSE(Designs.LoadDesignForm(Form::Mail, Target));
  Write("designs/Standard.ini", "[Fax]\r\nform=f.htm\r\n");
  EXPECT_FALSE(Designs.LoadDesignForm(Form::Mail, Target));
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Fax, Target));
}

TEST_F(DesignSetTest, WorkbooksHaveNoPictures) {
  Write("designs/Standard.ini", "[ExcelAddrSheet]\r\npictures=a.gif\r\n");
  Write("designs/a.gif", "A");
  EXPECT_FALSE(Designs.LoadDesignForm(Form::ExcelAddressSheet, Target));
  EXPECT_FALSE(Exists("target/a.gif"));
}

TEST_F(DesignSetTest, AFailedCopyFailsTheLoadButNotTheRest) {
  Write("designs/Standard.ini", "[Messages]\r\npictures=a.gif,b.gif\r\n");
  Write("designs/a.gif", "A");
  Write("designs/b.gif", "B");
  std::filesystem::create_directories(Folder.HostPath("target/a.gif"));  // in the way
  EXPECT_FALSE(Designs.LoadDesignForm(Form::Mail, Target));
  EXPECT_EQ(Read("target/b.gif"), "B");
}

TEST_F(DesignSetTest, NoPictureLeavesTheTarget) {
  Write("designs/Standard.ini", "[Messages]\r\npictures=..\\secret.txt, ../secret.txt\r\n");
  Write("secret.txt", "S");
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Mail, Folder.Path("target\\sub")));
  EXPECT_FALSE(Exists("target/secret.txt"));
}

TEST_F(DesignSetTest, ReadsTheTextOfAFormAsUtf8) {
  Write("designs/StdVelmoraMailForm.htm",
        "Gr\xFC\xDF"
        "e \x80");
  EXPECT_EQ(Designs.FormText(Form::Mail).value(), "Grüße €");
}

TEST_F(DesignSetTest, ReadsAFormOncePerRun) {
  struct Counting : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    Result<std::string> ReadFile(std::string_view path) override {
      ++Reads;
      return ForwardingFileSystem::ReadFile(path);
    }
    int Reads = 0;
  } counting(*Files);
  DesignSet designs(counting, Folder.Path("designs"), "Standard");
  EXPECT_EQ(designs.FormText(Form::Mail).error().Number, platform::file_error::PathNotFound);
  Write("designs/StdVelmoraMailForm.htm", "one");
  EXPECT_EQ(designs.FormText(Form::Mail).value(), "one") << "a failure is not kept";
  EXPECT_EQ(designs.FormText(Form::Mail).value(), "one");
  EXPECT_EQ(counting.Reads, 2);
  Write("designs/StdVelmoraMailForm.htm", "two");
  (void)designs.LoadDesignSet();  // there is no design file; the default names stay
  EXPECT_EQ(designs.FormText(Form::Mail).value(), "two");
}

TEST_F(DesignSetTest, ReadsAFormAnewWhenARunBegins) {
  Write("designs/StdVelmoraMailForm.htm", "one");
  EXPECT_EQ(Designs.FormText(Form::Mail).value(), "one");
  Write("designs/StdVelmoraMailForm.htm", "two");
  Designs.ForgetTexts();
  EXPECT_EQ(Designs.FormText(Form::Mail).value(), "two");
}

TEST_F(DesignSetTest, AFormMayHaveLineEndsAndEncodingOfAnyEditor) {
  Write("designs/StdVelmoraMailForm.htm", "\xEF\xBB\xBFGrüße\n€ \xFF");
  EXPECT_EQ(Designs.FormText(Form::Mail).value(), "Grüße\n€ \uFFFD");
  Write("designs/StdVelmoraFaxForm.htm", "");
  EXPECT_EQ(Designs.FormText(Form::Fax).value(), "");
}

TEST_F(DesignSetTest, ADesignFileMayHaveLineEndsAndEncodingOfAnyEditor) {
  Write("designs/Standard.ini", "\xEF\xBB\xBF[Messages]\nform=mü.htm\npictures=ö.gif\n");
  Write("designs/ö.gif", "O");
  EXPECT_TRUE(Designs.LoadDesignSet());
  EXPECT_EQ(Designs.FormName(Form::Mail), "mü.htm");
  EXPECT_TRUE(Designs.LoadDesignForm(Form::Mail, Target));
  EXPECT_EQ(Read("target/ö.gif"), "O");
}

}  // namespace
}  // namespace velmora::mailarchive
