#include "mailarchive/format/marker.h"

#include "mailarchive/format/folder_fixture.h"
#include "support/forwarding_file_system.h"

namespace velmora::mailarchive {
namespace {

using namespace std::literals;

class MarkerTest : public FolderTest {
 protected:
  MailArcKind Kind() { return GetMailArcKind(*Files, Folder.Path()); }
  void Mark(MailArcKind kind, bool force = false, const MarkerTexts& texts = {}) {
    ASSERT_TRUE(WriteArchiveMarker(*Files, Folder.Path(), kind, texts, force));
  }
};

TEST_F(MarkerTest, WritesTheLinesOfASubArchive) {
  Mark(MailArcKind::Sub, false,
       {.DisplayName = "Posteingang",
        .FullPath = "/Archive/Müller/Posteingang",
        .DirName = R"(\\SERVER\DAVID\archive\user\mueller\in)",
        .Comment = "Zeile 1\r\nä & <b>",
        .CopyRight = "© Müller"});
  EXPECT_EQ(Read("VelmoraSubArc.vla"),
            ";Velmora Mail Subarchive\r\n"
            "ArchiveDisplayName=Posteingang\r\n"
            "ArchiveFullPath=/Archive/M\xFCller/Posteingang\r\n"
            "ArchiveDirName=in\r\n"
            "ArchiveComment=Zeile&nbsp;1<BR>&auml;&nbsp;&amp;&nbsp;&lt;b&gt;\r\n"
            "ArchiveCopyRight=&copy;&nbsp;M&uuml;ller\r\n"
            "\r\n");
  EXPECT_TRUE(Files->GetEntry(Folder.Path("VelmoraSubArc.vla")).value().Hidden);
}

TEST_F(MarkerTest, WritesABlankForAMissingDisplayName) {
  Mark(MailArcKind::Root);
  EXPECT_EQ(Read("VelmoraRootArc.vla"),
            ";Velmora Mail Rootarchive\r\n"
            "ArchiveDisplayName= \r\n"
            "ArchiveFullPath=\r\n"
            "ArchiveDirName=\r\n"
            "ArchiveComment=\r\n"
            "ArchiveCopyRight=\r\n"
            "\r\n");
}

TEST_F(MarkerTest, ADataMarkerHoldsItsFirstLineAndTwoLineEnds) {
  Mark(MailArcKind::Data, false, {.DisplayName = "x", .Comment = "y"});
  EXPECT_EQ(Read("VelmoraDataArc.vla"), ";Velmora Mail Dataarchive\r\n\r\n");
}

TEST_F(MarkerTest, AnAddressMarkerHasTheTextsToo) {
  Mark(MailArcKind::Address, false, {.DisplayName = "Kontakte"});
  EXPECT_TRUE(
      Read("VelmoraAddrArc.vla").starts_with(";Velmora Address Archive\r\nArchiveDisplayName=Kontakte\r\n"));
  EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "Kontakte");
}

TEST_F(MarkerTest, ReadsBackWhatItWrote) {
  const MarkerTexts texts = {.DisplayName = "Входящие = neu",
                             .FullPath = "/Archive/Öl",
                             .DirName = R"(a\b)",
                             .Comment = "x y\r\nz",
                             .CopyRight = "©"};
  Mark(MailArcKind::Root, false, texts);
  const auto descriptor = ReadArcDescriptor(*Files, Folder.Path());
  ASSERT_TRUE(descriptor);
  EXPECT_EQ(descriptor->ArchiveDisplayName, "Входящие = neu");
  EXPECT_EQ(descriptor->ArchiveFullPath, "/Archive/Öl");
  EXPECT_EQ(descriptor->ArchiveDirName, "b");
  EXPECT_EQ(descriptor->ArchiveComment, "x&nbsp;y<BR>z");
  EXPECT_EQ(descriptor->ArchiveCopyRight, "&copy;");
}

TEST_F(MarkerTest, AValueCannotAddALine) {
  Mark(MailArcKind::Sub, false, {.DisplayName = "a\r\nArchiveFullPath=b", .FullPath = "/c\x01"});
  const auto descriptor = ReadArcDescriptor(*Files, Folder.Path());
  EXPECT_EQ(descriptor->ArchiveDisplayName, "a  ArchiveFullPath=b");
  EXPECT_EQ(descriptor->ArchiveFullPath, "/c");
}

TEST_F(MarkerTest, AnExistingMarkerSurvivesUnforced) {
  Mark(MailArcKind::Data);
  Mark(MailArcKind::Sub);
  EXPECT_EQ(Kind(), MailArcKind::Data);
  EXPECT_FALSE(Exists("VelmoraSubArc.vla"));
}

TEST_F(MarkerTest, AMarkerWithoutAByteWasNeverFinishedAndIsWrittenAnew) {
  Write("VelmoraSubArc.vla", "");
  Mark(MailArcKind::Sub, false, {.DisplayName = "Eingang"});
  EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "Eingang");
  // One of another kind tells what the directory is, whatever it holds.
  Write("VelmoraSubArc.vla", "");
  Mark(MailArcKind::Root);
  EXPECT_EQ(Kind(), MailArcKind::Sub);
}

TEST_F(MarkerTest, AForcedMarkerReplacesEveryOther) {
  Write("VelmoraDataArc.vla", "x");
  Write("VelmoraRootArc", "x");
  Mark(MailArcKind::Sub, true);
  EXPECT_EQ(Kind(), MailArcKind::Sub);
  EXPECT_FALSE(Exists("VelmoraDataArc.vla"));
  EXPECT_FALSE(Exists("VelmoraRootArc"));
}

TEST_F(MarkerTest, AForcedMarkerThatCannotBeWrittenCostsNoneThatStands) {
  struct Full : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    Status WriteFile(std::string_view, std::string_view, const platform::WriteOptions&) override {
      return Fail(platform::file_error::DiskFull, "voll");
    }
    Status ReplaceFile(std::string_view, std::string_view, const platform::WriteOptions&) override {
      return Fail(platform::file_error::DiskFull, "voll");
    }
  } full(*Files);
  Mark(MailArcKind::Sub, false, {.DisplayName = "Eingang"});
  for (const MailArcKind kind : {MailArcKind::Sub, MailArcKind::Root}) {
    EXPECT_FALSE(WriteArchiveMarker(full, Folder.Path(), kind, {.DisplayName = "Neu"}, true));
    EXPECT_EQ(Kind(), MailArcKind::Sub);
    EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "Eingang");
  }
}

TEST_F(MarkerTest, AForcedMarkerReplacesOneThatIsReadOnlyToo) {
  Mark(MailArcKind::Sub, false, {.DisplayName = "Alt"});
  ASSERT_TRUE(Files->SetReadOnly(Folder.Path("VelmoraSubArc.vla"), true));
  Mark(MailArcKind::Sub, true, {.DisplayName = "Neu"});
  EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "Neu");
}

TEST_F(MarkerTest, KindNoneRemovesTheMarkersForcedOrNot) {
  for (const bool force : {false, true}) {
    Mark(MailArcKind::Root);
    Mark(MailArcKind::None, force);
    EXPECT_EQ(Kind(), MailArcKind::None);
    EXPECT_TRUE(Files->List(Folder.Path(), "*", platform::ListWhat::All).value().empty());
  }
}

TEST_F(MarkerTest, AnUnknownKindWritesNothing) {
  Mark(static_cast<MailArcKind>(7));
  EXPECT_EQ(Kind(), MailArcKind::None);
}

TEST_F(MarkerTest, ReportsAMarkerThatCannotBeWritten) {
  const auto written = WriteArchiveMarker(*Files, Folder.Path("missing"), MailArcKind::Sub, {}, false);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().Number, platform::file_error::PathNotFound);
}

TEST_F(MarkerTest, AMediumWithoutAttributesStillGetsItsMarker) {
  struct NoAttributes : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    Status SetHidden(std::string_view, bool) override { return Fail(70, "Zugriff verweigert"); }
  } noAttributes(*Files);
  EXPECT_TRUE(WriteArchiveMarker(noAttributes, Folder.Path(), MailArcKind::Sub, {}, false));
  EXPECT_EQ(Kind(), MailArcKind::Sub);
}

TEST_F(MarkerTest, ClearsAllSevenNames) {
  for (const auto* name : {"VelmoraRootArc.vla", "VelmoraSubArc.vla", "VelmoraDataArc.vla",
                           "VelmoraAddrArc.vla", "VelmoraRootArc", "VelmoraSubArc", "VelmoraDataArc"}) {
    Write(name, "x");
  }
  ASSERT_TRUE(Files->SetReadOnly(Folder.Path("VelmoraSubArc.vla"), true));
  Write("other.vla", "x");
  ClearArchiveMarkers(*Files, Folder.Path());
  const auto left = Files->List(Folder.Path(), "*", platform::ListWhat::All).value();
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].Name, "other.vla");
}

TEST_F(MarkerTest, ProbesNewNamesBeforeLegacyOnes) {
  Write("VelmoraRootArc", "x");
  EXPECT_EQ(Kind(), MailArcKind::Root);
  Write("VelmoraDataArc.vla", "x");
  EXPECT_EQ(Kind(), MailArcKind::Data);
}

TEST_F(MarkerTest, OnlyRootAndSubCanHoldContent) {
  for (const auto& [file, kind, canHold] : {std::tuple("VelmoraRootArc.vla", MailArcKind::Root, true),
                                            std::tuple("VelmoraSubArc", MailArcKind::Sub, true),
                                            std::tuple("velmoradataarc.VLA", MailArcKind::Data, false),
                                            std::tuple("VelmoraAddrArc.vla", MailArcKind::Address, false)}) {
    Write(file, "x");
    const auto probe = ProbeMailArc(*Files, Folder.Path() + "\\");
    EXPECT_EQ(probe.Kind, kind) << file;
    EXPECT_EQ(probe.CanHoldContent, canHold) << file;
    std::filesystem::remove(Folder.HostPath(file));
  }
  EXPECT_EQ(ProbeMailArc(*Files, Folder.Path()).MarkerFile, "");
}

TEST_F(MarkerTest, RootAndSubTogetherCountAsRootButReadAsSub) {
  // An export may start in a directory that mirrors an archive: it has a way up no more, and keeps its texts.
  Write("VelmoraRootArc.vla", "ArchiveDisplayName=root\r\n");
  Write("VelmoraSubArc.vla", "ArchiveDisplayName=sub\r\n");
  EXPECT_EQ(Kind(), MailArcKind::Root);
  EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "sub");
}

TEST_F(MarkerTest, ADataMarkerReadsAsNothing) {
  Write("VelmoraDataArc.vla", "ArchiveDisplayName=data\r\n");
  Write("VelmoraDataArc", "ArchiveDisplayName=data\r\n");
  EXPECT_FALSE(ReadArcDescriptor(*Files, Folder.Path()));
}

TEST_F(MarkerTest, ReadsLegacyMarkers) {
  Write("VelmoraRootArc", ";x\nArchiveDisplayName = alt \n");
  EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "alt");
}

TEST_F(MarkerTest, AMarkerOfGarbageGivesEmptyValues) {
  Write("VelmoraSubArc.vla", std::string("\0\xFF=\r\n=\r\nArchive\0DisplayName=x\n"sv));
  EXPECT_EQ(ReadArcDescriptor(*Files, Folder.Path())->ArchiveDisplayName, "");
}

}  // namespace
}  // namespace velmora::mailarchive
