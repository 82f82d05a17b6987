// What the status bar, the drive bar and the busy state show.

#include <gtest/gtest.h>

#include "panes/commands/busy_state.h"
#include "panes/commands/drive_bar.h"
#include "panes/commands/filter_warning.h"
#include "panes/dialogs/program_texts.h"
#include "platform/host_file_system.h"
#include "support/temp_dir.h"

namespace velmora::panes {
namespace {

TEST(Busy, WaitsAndIsReadyAgain) {
  int changes = 0;
  BusyState state([&] { ++changes; });
  EXPECT_EQ(state.PanelText(), "Bereit");
  EXPECT_TRUE(state.InterchangeTimerRuns());
  state.SetBusy(BusyCursor::Wait);
  EXPECT_TRUE(state.IsBusy());
  EXPECT_FALSE(state.InterchangeTimerRuns());
  EXPECT_EQ(state.PanelText(), "Bitte warten");
  EXPECT_EQ(state.Cursor(), BusyCursor::Wait);
  state.ClearBusy(true);
  EXPECT_FALSE(state.IsBusy());
  EXPECT_TRUE(state.FocusesView());
  EXPECT_EQ(state.PanelText(), "Bereit");
  EXPECT_EQ(state.Cursor(), BusyCursor::Standard);
  EXPECT_EQ(changes, 2);
}

TEST(Busy, ALongOperationOutlastsTheCommandsInIt) {
  BusyState state;
  state.SetLongOperation(true);
  state.SetBusy();
  state.ClearBusy();
  EXPECT_TRUE(state.IsBusy());
  EXPECT_FALSE(state.InterchangeTimerRuns());
  state.SetLongOperation(false);
  EXPECT_FALSE(state.IsBusy());
}

TEST(Busy, NoSecondCommandEntersAndTheFirstOneClears) {
  BusyState state;
  {
    const BusyScope first(state);
    EXPECT_TRUE(first.Entered());
    {
      const BusyScope second(state);
      EXPECT_FALSE(second.Entered());
    }
    EXPECT_TRUE(state.IsBusy());
  }
  EXPECT_FALSE(state.IsBusy());
}

TEST(FilterWarningTest, StandsStillWithoutAFilter) {
  settings::Options options;
  FilterWarning warning(options);
  warning.StartStopWarnings();
  EXPECT_FALSE(warning.IsVisible());
  EXPECT_FALSE(warning.DisplayTimerRuns());
}

TEST(FilterWarningTest, BlinksWhileAFilterIsInForce) {
  settings::Options options;
  options.DvItemFilter = 0x301FF;
  FilterWarning warning(options);
  warning.StartStopWarnings();
  EXPECT_TRUE(warning.IsVisible());
  EXPECT_TRUE(warning.DisplayTimerRuns());
  warning.Tick();
  EXPECT_FALSE(warning.IsVisible());
  warning.Tick();
  EXPECT_TRUE(warning.IsVisible());
}

TEST(FilterWarningTest, HiddenEntriesAloneMakeItBlink) {
  settings::Options options;
  options.DvInhibitItems = false;
  FilterWarning warning(options);
  warning.StartStopWarnings();
  EXPECT_TRUE(warning.DisplayTimerRuns());
}

TEST(FilterWarningTest, StopsByItselfOnceTheFilterIsGone) {
  settings::Options options;
  options.DvItemFilter = 0;
  FilterWarning warning(options);
  warning.StartStopWarnings();
  options.DvItemFilter = settings::NoItemFilter;
  warning.Tick();
  EXPECT_FALSE(warning.IsVisible());
  EXPECT_FALSE(warning.DisplayTimerRuns());
}

TEST(Drives, TellWhatIsKnownOfThem) {
  platform::DriveInformation information;
  information.VolumeName = "/dev/sda1";
  information.FileSystemName = "ext4";
  information.Type = platform::DriveType::Removeable;
  information.Size = 3 * 1024;
  information.Used = 1024;
  information.Free = 2 * 1024;
  information.Available = 512;
  EXPECT_EQ(DriveInformationText({"Z:", R"(\\S\DAVID)", true}, information),
            "Volumename: /dev/sda1\r\nLaufwerk: Z:\r\nTyp: Removeable\r\nFilesystem: ext4\r\nBereit: Ja\r\n"
            "Größe: 3,000 KB\r\nBelegt: 1,000 KB\r\nFrei: 2,000 KB\r\nVerfügbar für Benutzer: 512\r\n"
            "Freigabename: \\\\S\\DAVID");
}

TEST(Drives, TypesComeFromTheFileSystem) {
  using platform::DriveType;
  EXPECT_EQ(platform::DriveTypeOf("ext4", false), DriveType::Harddisk);
  EXPECT_EQ(platform::DriveTypeOf("vfat", true), DriveType::Removeable);
  EXPECT_EQ(platform::DriveTypeOf("cifs", false), DriveType::Network);
  EXPECT_EQ(platform::DriveTypeOf("nfs4", false), DriveType::Network);
  EXPECT_EQ(platform::DriveTypeOf("iso9660", true), DriveType::CdRom);
}

TEST(Drives, EachHasAButton) {
  const test::TempDir directory;
  const auto files = platform::MakeHostFileSystem(
      {{"Z:", "/"}, {"X:", directory.HostPath()}, {R"(\\S\DAVID)", directory.HostPath()}, {"Q:", "/fehlt"}});
  const auto buttons = DriveButtons(*files);
  ASSERT_EQ(buttons.size(), 3u);
  EXPECT_EQ(buttons[0].Key, "Q:");
  EXPECT_NE(buttons[0].ToolTip.find("Bereit: Nein"), std::string::npos);
  EXPECT_EQ(buttons[1].Key, "X:");
  EXPECT_EQ(buttons[1].Caption, R"(X: \\S\DAVID)");
  EXPECT_NE(buttons[1].ToolTip.find("Bereit: Ja"), std::string::npos);
  EXPECT_EQ(buttons[2].Key, "Z:");

  EXPECT_EQ(DriveOf(*files, R"(\\s\david\archive)"), "X:");
  EXPECT_EQ(DriveOf(*files, R"(z:\x)"), "Z:");
  EXPECT_EQ(DriveOf(*files, R"(\\other\share)"), "");
}

TEST(Drives, OfTheHostTellTheirSize) {
  const auto files = platform::MakeHostFileSystem({{"Z:", "/"}});
  const auto information = platform::DriveInformationOf(*files, "Z:");
  ASSERT_TRUE(information.has_value()) << information.error().Text;
  EXPECT_GT(information->Size, 0);
  EXPECT_EQ(information->Used, information->Size - information->Free);
  EXPECT_LE(information->Available, information->Free);
  EXPECT_FALSE(information->FileSystemName.empty());
  EXPECT_FALSE(platform::DriveInformationOf(*files, "Q:").has_value());
}

TEST(ProgramTexts, TellProductAndVersion) {
  EXPECT_EQ(AboutText({3, 2, 1}), "Velmora\r\nVersion 3.2.1\r\n© Orvane Works");
  store::Session session;  // without a sign-on what the machine tells remains
  const auto rows = SystemInformation(session, {3, 2, 1}, {"L", "T", "D", "C"});
  EXPECT_EQ(rows.front().Value, "Velmora 3.2.1");
  EXPECT_EQ(rows.back().Value, "C");
}

}  // namespace
}  // namespace velmora::panes
