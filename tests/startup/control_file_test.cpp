#include "startup/control_file.h"

#include <gtest/gtest.h>

#include "startup/text_replacement.h"

namespace velmora::startup {
namespace {

const MomentTexts Moment = {"31.12.2026", "23:59:00", "SRV"};

ControlFile Parse(std::string_view text) { return ParseControlFile(text, {}, Moment); }

TEST(ControlFile, OnlyCommentsAreNoCommand) {
  const ControlFile file = Parse("; command=copydavidlogs\r\n\r\n   ;x=y\r\nno key here\r\n");
  EXPECT_EQ(file.Command, BatchCommand::None);
  EXPECT_FALSE(file.StoppedAtCommand);
}

TEST(ControlFile, KeysAndWordsInAnyCaseWithBlanksAround) {
  EXPECT_EQ(Parse("COMMAND = ArchiveCopyMove").Command, BatchCommand::ArchiveCopyMove);
  EXPECT_EQ(Parse("command=ARCHIVESTATISTICS").Command, BatchCommand::ArchiveStatistics);
  EXPECT_EQ(Parse("\t command\t=\tcopydavidlogs ").Command, BatchCommand::CopyDavidLogs);
}

TEST(ControlFile, AnUnknownCommandEndsTheReading) {
  const ControlFile file =
      Parse("srcarchive=/A\ncommand=archivecopymoove\ncommand=archivecopymove\nsrcarchive=/B");
  EXPECT_EQ(file.Command, BatchCommand::None);
  EXPECT_TRUE(file.StoppedAtCommand);
  EXPECT_EQ(file.UnknownCommand, "archivecopymoove");
  EXPECT_EQ(file.Archives, std::vector<std::string>{"/A"});
}

TEST(ControlFile, ABadCommandAfterAGoodOneRunsNothing) {
  EXPECT_EQ(Parse("command=archivecopymove\ncommand=x").Command, BatchCommand::None);
}

TEST(ControlFile, TheValueIsAllBehindTheFirstEquals) {
  EXPECT_EQ(Parse("comment = a=b ").Export.Comment, "a=b");
}

TEST(ControlFile, TheLaterValueCountsButArchivesAdd) {
  const ControlFile file =
      Parse("copyright=x\ncopyright=y\nsrcarchive=/A\nsrcarchive=/B\ndstarchive=/C\nstatsarchive=/D");
  EXPECT_EQ(file.Export.CopyRight, "y");
  EXPECT_EQ(file.Archives, (std::vector<std::string>{"/A", "/B", "/C", "/D"}));
}

TEST(ControlFile, LinesMayEndInAnyWay) {
  EXPECT_EQ(Parse("srcarchive=/A\rsrcarchive=/B\nsrcarchive=/C\r\nsrcarchive=/D").Archives.size(), 4U);
}

// Each switch of the export, off and on.
struct SwitchKey {
  std::string Name;
  bool mailarchive::ExportOptions::*Member;
};

class ExportSwitchTest : public ::testing::TestWithParam<SwitchKey> {};

TEST_P(ExportSwitchTest, IsOnForYAndOffForAnythingElse) {
  const SwitchKey& key = GetParam();
  mailarchive::ExportOptions on, off;
  on.*key.Member = true;
  off.*key.Member = false;
  EXPECT_TRUE(ParseControlFile(key.Name + "=y", off, Moment).Export.*key.Member);
  EXPECT_TRUE(ParseControlFile(key.Name + "=Y", off, Moment).Export.*key.Member);
  for (const std::string value : {"n", "yes", "1", "ja", ""}) {
    EXPECT_FALSE(ParseControlFile(key.Name + "=" + value, on, Moment).Export.*key.Member) << value;
  }
  EXPECT_TRUE(ParseControlFile("", on, Moment).Export.*key.Member);
  EXPECT_FALSE(ParseControlFile("", off, Moment).Export.*key.Member);
}

using mailarchive::ExportOptions;
INSTANTIATE_TEST_SUITE_P(AllKeys, ExportSwitchTest,
                         ::testing::Values(SwitchKey{"dstnum", &ExportOptions::NoDuplicates},
                                           SwitchKey{"makeidx", &ExportOptions::MakeIndex},
                                           SwitchKey{"delarcs", &ExportOptions::DeleteArchives},
                                           SwitchKey{"onlyeml", &ExportOptions::OnlyOriginals},
                                           SwitchKey{"saveeml", &ExportOptions::SaveOriginals},
                                           SwitchKey{"savecmt", &ExportOptions::SaveComments},
                                           SwitchKey{"onlycmt", &ExportOptions::OnlyComments},
                                           SwitchKey{"saveatt", &ExportOptions::SaveAttachments},
                                           SwitchKey{"onlyatt", &ExportOptions::OnlyAttachments},
                                           SwitchKey{"witherr", &ExportOptions::WithErrors},
                                           SwitchKey{"savesmtp", &ExportOptions::SaveSmtpHeader},
                                           SwitchKey{"linkedarcs", &ExportOptions::LinkedArchives}));

TEST(ControlFile, ExportWords) {
  EXPECT_EQ(Parse("copymode=MOV").Export.Mode, mailarchive::CopyMode::Move);
  EXPECT_EQ(Parse("copymode=cpy").Export.Mode, mailarchive::CopyMode::Copy);
  EXPECT_EQ(Parse("copymode=mov\ncopymode=move").Export.Mode, mailarchive::CopyMode::Copy);
  EXPECT_TRUE(Parse("idxdatesortdir=Up").Export.DateIndexSortedUp);
  EXPECT_FALSE(Parse("idxdatesortdir=down").Export.DateIndexSortedUp);
  EXPECT_TRUE(Parse("deletedst=y").DeleteDst);
  EXPECT_FALSE(Parse("deletedst=j").DeleteDst);
  EXPECT_EQ(Parse("dstdirectory = Z:\\Mein Ziel\\ ").DstDirectory, "Z:\\Mein Ziel\\");
}

TEST(ControlFile, AMoveNeverOverwrites) {
  ExportOptions overwrites;
  overwrites.NoDuplicates = false;
  EXPECT_TRUE(ParseControlFile("copymode=mov", overwrites, Moment).Export.NumbersNames());
  EXPECT_TRUE(Parse("dstnum=n\ncopymode=mov").Export.NumbersNames());
  EXPECT_TRUE(Parse("copymode=mov\ndstnum=n").Export.NumbersNames());
  EXPECT_FALSE(Parse("copymode=mov\ndstnum=n\ncopymode=cpy").Export.NumbersNames());
}

TEST(ControlFile, LogWords) {
  EXPECT_EQ(Parse("logtype=rxlog").LogType, 1);
  EXPECT_EQ(Parse("logtype=TXLOG").LogType, 2);
  EXPECT_EQ(Parse("logtype=bothlogs").LogType, 3);
  EXPECT_EQ(Parse("logtype=rxlog\nlogtype=all").LogType, 0);
}

TEST(ControlFile, MailKeys) {
  const ControlFile file =
      Parse("sendmail=y\nmailto=a@x, b@y\nmailfrom=c@z\nmailsubject=Lauf %1\nmailbody=Text\\n%9");
  EXPECT_TRUE(file.Mail.Send);
  EXPECT_EQ(file.Mail.To, "a@x, b@y");
  EXPECT_EQ(file.Mail.From, "c@z");
  EXPECT_EQ(file.Mail.Subject, "Lauf %1");
  EXPECT_EQ(file.Mail.Body, "Text\\n%9");
}

TEST(ControlFile, StatisticsKeys) {
  const StatisticsKeys keys =
      Parse(
          "includesubarcs=y\nstatdstfile=Z:\\s.htm\nenableuserstats=y\nenableoldusers=y\nenableactiveusers="
          "y\n"
          "enableuserdetails=y\nenablearchivestats=y\narctypes=System\nenablearccharts=y\nchartslen=300\n"
          "chartsminimumsize=17\nsortwithsize=subarcs")
          .Statistics;
  EXPECT_TRUE(keys.IncludeSubArchives && keys.UserStatistics && keys.OldUsers && keys.ActiveUsers);
  EXPECT_TRUE(keys.UserDetails && keys.ArchiveStatistics && keys.ArchiveCharts);
  EXPECT_EQ(keys.OutputFile, "Z:\\s.htm");
  EXPECT_EQ(keys.ArchiveTypes, 2);
  EXPECT_EQ(keys.ChartsLength, "300");
  EXPECT_EQ(keys.ChartsMinimumSize, 17);
  EXPECT_EQ(keys.Sorting, 4);
}

TEST(ControlFile, StatisticsNumbersOutOfRangeAreZero) {
  EXPECT_EQ(Parse("chartsminimumsize=99999999999999999999").Statistics.ChartsMinimumSize, 0);
  EXPECT_EQ(Parse("chartsminimumsize=-5").Statistics.ChartsMinimumSize, 0);
  EXPECT_EQ(Parse("chartsminimumsize=viel").Statistics.ChartsMinimumSize, 0);
  EXPECT_EQ(Parse("arctypes=none").Statistics.ArchiveTypes, 0);
}

TEST(ControlFile, TheCommentTakesTheMomentAtOnce) {
  EXPECT_EQ(Parse("comment=%1 %2 auf %3, %4").Export.Comment, "31.12.2026 23:59:00 auf SRV, %4");
  EXPECT_EQ(Parse("copyright=%1").Export.CopyRight, "%1");
}

TEST(ControlFile, ReadsWindows1252AndUtf8) {
  EXPECT_EQ(Parse("comment=Gr\xF6\xDF"
                  "e \x80")
                .Export.Comment,
            "Größe €");
  EXPECT_EQ(Parse("comment=Größe €").Export.Comment, "Größe €");
  EXPECT_EQ(Parse("\xEF\xBB\xBF"
                  "comment=Größe")
                .Export.Comment,
            "Größe");
}

TEST(Placeholders, ValuesAreNotReplacedInTheirTurn) {
  // A path with "\n" in it stays a path, only the text's own "\n" breaks the line.
  EXPECT_EQ(ReplacePlaceholders("%6\\nEnde", {{"%6", "Z:\\neu %1"}, {"\\n", "\r\n"}, {"%1", "x"}}),
            "Z:\\neu %1\r\nEnde");
}

TEST(Placeholders, UnknownOnesStay) {
  EXPECT_EQ(ReplacePlaceholders("100% %9 %", {{"%1", "x"}}), "100% %9 %");
}

}  // namespace
}  // namespace velmora::startup
