#include "run/console_front_end.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <array>

#include "support/manual_clock.h"

namespace velmora::run {
namespace {

class ConsoleFrontEndTest : public ::testing::Test {
 protected:
  ConsoleFrontEndTest() : input_(std::tmpfile()), output_(std::tmpfile()) {}
  ~ConsoleFrontEndTest() override {
    std::fclose(input_);
    std::fclose(output_);
  }

  void Type(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), input_);
    std::rewind(input_);
  }
  std::string Shown() {
    std::rewind(output_);
    std::string text;
    std::array<char, 4096> buffer;
    for (std::size_t count = std::fread(buffer.data(), 1, buffer.size(), output_); count > 0;
         count = std::fread(buffer.data(), 1, buffer.size(), output_)) {
      text.append(buffer.data(), count);
    }
    return text;
  }

  test::ManualClock clock_;
  std::FILE* input_;
  std::FILE* output_;
};

TEST_F(ConsoleFrontEndTest, ATypedAnswerCounts) {
  Type("j\n");
  ConsoleFrontEnd console(clock_, input_, output_, true);
  EXPECT_EQ(console.Set().prompts.Question("Ende", "Wirklich?", Buttons::YesNo, Answer::No), Answer::Yes);
  EXPECT_EQ(Shown(), "Ende: Wirklich? [j/N] ");
}

TEST_F(ConsoleFrontEndTest, AnEmptyOrStrangeAnswerIsTheDefault) {
  Type("\nvielleicht\n");
  ConsoleFrontEnd console(clock_, input_, output_, true);
  const FrontEnd set = console.Set();
  EXPECT_EQ(set.prompts.Question("t", "x", Buttons::YesNo, Answer::No), Answer::No);
  EXPECT_EQ(set.prompts.Question("t", "x", Buttons::YesNo, Answer::No), Answer::No);
  EXPECT_EQ(set.prompts.Question("t", "x", Buttons::YesNo, Answer::No), Answer::No);  // end of the input
}

TEST_F(ConsoleFrontEndTest, WithoutATerminalNobodyIsAsked) {
  Type("j\n");
  ConsoleFrontEnd console(clock_, input_, output_, false);
  EXPECT_EQ(console.Set().prompts.Question("t", "x", Buttons::YesNo, Answer::No), Answer::No);
  EXPECT_EQ(Shown(), "");
}

TEST_F(ConsoleFrontEndTest, ProgressIsDrawnOnATerminalOnly) {
  ConsoleFrontEnd console(clock_, input_, output_, false);
  Progress& progress = console.Set().progress;
  progress.Show("Kopieren");
  progress.SetArchiveText("/Archive/A");
  clock_.Milliseconds += 1000;
  EXPECT_FALSE(progress.Pump());
  progress.Close();
  EXPECT_EQ(Shown(), "");
}

TEST_F(ConsoleFrontEndTest, ProgressShowsTextsWithoutControlCharacters) {
  ConsoleFrontEnd console(clock_, input_, output_, true);
  Progress& progress = console.Set().progress;
  progress.Show("Kopieren");
  progress.SetArchiveText("/Archive/A");
  progress.SetItemText("Re: \x1b[2Jx");
  progress.SetBar(1, 4);
  clock_.Milliseconds += 60'000;
  EXPECT_FALSE(progress.Pump());
  const std::string shown = Shown();
  EXPECT_NE(shown.find("/Archive/A  1  (25%)  noch 00:03:00  Re:  [2Jx"), std::string::npos) << shown;
  progress.Close();
}

TEST_F(ConsoleFrontEndTest, AnInterruptWhileProgressIsShownAsksToCancel) {
  ConsoleFrontEnd console(clock_, input_, output_, false);
  Progress& progress = console.Set().progress;
  progress.Show("Kopieren");
  raise(SIGINT);
  EXPECT_TRUE(progress.Pump());
  EXPECT_TRUE(progress.Pump());
  progress.Close();
}

}  // namespace
}  // namespace velmora::run
