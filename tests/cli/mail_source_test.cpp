#include "cli/mail_source.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "platform/host_file_system.h"
#include "support/temp_dir.h"

namespace velmora::cli {
namespace {

class MailSourceTest : public testing::Test {
 protected:
  struct Read {
    std::vector<std::string> Messages, Origins, Errors;
    std::vector<bool> Viewed;
  };

  Read ReadAll(std::string_view name, std::size_t maxBytes = MaxMessageBytes) {
    Read read;
    auto source = OpenMailSource(*fileSystem_, directory_.Path(name), maxBytes);
    EXPECT_TRUE(source) << source.error().Text;
    if (!source) return read;
    while (true) {
      auto message = (*source)->Next();
      if (!message) {
        read.Errors.push_back(message.error().Origin);
      } else if (*message) {
        read.Messages.push_back((*message)->Bytes);
        read.Origins.push_back((*message)->Origin);
        read.Viewed.push_back((*message)->Viewed);
      } else {
        EXPECT_EQ((*source)->Done(), (*source)->Total());
        return read;
      }
    }
  }
  std::vector<std::string> Mbox(std::string_view content) {
    directory_.WriteHostFile("x.mbox", content);
    return ReadAll("x.mbox").Messages;
  }
  using Messages = std::vector<std::string>;

  velmora::test::TempDir directory_;
  std::unique_ptr<platform::FileSystem> fileSystem_ = platform::MakeHostFileSystem({});
};

TEST_F(MailSourceTest, AFileIsOneMessageWhateverItContains) {
  for (const std::string content : {"Subject: x\n\ny\n", "", "no mail at all", "FROM x\n", "\n\nFrom x\n"}) {
    directory_.WriteHostFile("a.eml", content);
    EXPECT_EQ(ReadAll("a.eml").Messages, Messages{content});
  }
}

TEST_F(MailSourceTest, MboxMessagesAreSplitAtFromLines) {
  EXPECT_EQ(Mbox("From a@b Mon\nSubject: 1\n\nA\n\nFrom c@d Tue\nSubject: 2\n\nB\n\n"),
            (Messages{"Subject: 1\n\nA\n", "Subject: 2\n\nB\n"}));
}

TEST_F(MailSourceTest, OnlyAFromLineBehindAnEmptyLineSeparates) {
  EXPECT_EQ(Mbox("From a\nSubject: 1\n\nLine\nFrom here on\n\nend\n"),
            Messages{"Subject: 1\n\nLine\nFrom here on\n\nend\n"});
  EXPECT_EQ(Mbox("From a\nSubject: 1\n\nA\n\nfrom here\n\nFromage\n"),
            Messages{"Subject: 1\n\nA\n\nfrom here\n\nFromage\n"});
}

TEST_F(MailSourceTest, QuotedFromLinesLoseOneSign) {
  EXPECT_EQ(Mbox("From a\nSubject: 1\n\n>From x\n>>From y\n> From z\n>Fromage\na >From b\n"),
            Messages{"Subject: 1\n\nFrom x\n>From y\n> From z\n>Fromage\na >From b\n"});
}

TEST_F(MailSourceTest, CrLfFilesKeepTheirLineEnds) {
  EXPECT_EQ(Mbox("From a\r\nSubject: 1\r\n\r\nA\r\n\r\nFrom b\r\nSubject: 2\r\n\r\nB\r\n"),
            (Messages{"Subject: 1\r\n\r\nA\r\n", "Subject: 2\r\n\r\nB\r\n"}));
}

TEST_F(MailSourceTest, EmptyLinesOfTheMessageItselfStay) {
  EXPECT_EQ(Mbox("From a\nSubject: 1\n\nA\n\n\n\nFrom b\n\nFrom c\nX: 1"),
            (Messages{"Subject: 1\n\nA\n\n\n", "", "X: 1"}));
}

TEST_F(MailSourceTest, LastLineWithoutLineEndIsKept) {
  EXPECT_EQ(Mbox("From a\nSubject: 1\n\nend"), Messages{"Subject: 1\n\nend"});
  EXPECT_EQ(Mbox("From "), Messages{""});
}

TEST_F(MailSourceTest, NulBytesAndLongLinesPass) {
  const std::string line = std::string(300'000, 'x') + std::string(1, '\0') + "y\n";
  EXPECT_EQ(Mbox("From a\nSubject: 1\n\n" + line + "\nFrom b\n\nB\n"),
            (Messages{"Subject: 1\n\n" + line, "\nB\n"}));
}

TEST_F(MailSourceTest, LinesAcrossReadChunksAreFound) {
  for (const std::size_t shift : {65530U, 65531U, 65532U, 65533U, 65534U, 65535U, 65536U, 65537U}) {
    const std::string body(shift - 20, 'x');
    EXPECT_EQ(Mbox("From a\n\n" + body + "\n\nFrom b\n\n>From B\n"),
              (Messages{"\n" + body + "\n", "\nFrom B\n"}))
        << shift;
  }
}

TEST_F(MailSourceTest, ATooLargeMessageIsAnErrorWithItsPlaceAndTheNextOneFollows) {
  directory_.WriteHostFile("x.mbox", "From a\n\nsmall\n\nFrom b\n\n" + std::string(5000, 'x') + "\n" +
                                         std::string(200, 'y') + "\n\nFrom c\n\nlast\n");
  const auto read = ReadAll("x.mbox", 1000);
  EXPECT_EQ(read.Messages, (Messages{"\nsmall\n", "\nlast\n"}));
  ASSERT_EQ(read.Errors.size(), 1U);
  EXPECT_EQ(read.Errors[0], directory_.HostPath("x.mbox") + ", Nachricht 2 ab Byte 15");
  EXPECT_EQ(read.Origins[1], directory_.HostPath("x.mbox") + ", Nachricht 3 ab Byte 5226");
  directory_.WriteHostFile("a.eml", std::string(2000, 'x'));
  EXPECT_EQ(ReadAll("a.eml", 1000).Errors.size(), 1U);
}

TEST_F(MailSourceTest, AMaildirGivesTheMessagesOfCurAndNew) {
  for (const auto* folder : {"box/cur", "box/new", "box/tmp", "box/.Sub/cur"}) {
    std::filesystem::create_directories(directory_.HostPath(folder));
  }
  directory_.WriteHostFile("box/cur/1.host:2,RS", "seen");
  directory_.WriteHostFile("box/cur/2.host:2,F", "unseen");
  directory_.WriteHostFile("box/cur/3Sam", "no flags");
  directory_.WriteHostFile("box/new/4:2,S", "From x is no mbox here\n");
  directory_.WriteHostFile("box/new/.hidden", "no message");
  directory_.WriteHostFile("box/tmp/5", "half written");
  const auto read = ReadAll("box");
  EXPECT_EQ(read.Messages, (Messages{"seen", "unseen", "no flags", "From x is no mbox here\n"}));
  EXPECT_EQ(read.Viewed, (std::vector{true, false, false, false}));
}

TEST_F(MailSourceTest, OtherDirectoriesAndMissingFilesAreErrors) {
  std::filesystem::create_directories(directory_.HostPath("plain"));
  EXPECT_FALSE(OpenMailSource(*fileSystem_, directory_.Path("plain")));
  EXPECT_FALSE(OpenMailSource(*fileSystem_, directory_.Path("missing.eml")));
}

}  // namespace
}  // namespace velmora::cli
