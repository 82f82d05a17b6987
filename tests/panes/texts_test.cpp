// Texts that are made harmless, the history of places, and the breath of a fill.
#include <gtest/gtest.h>

#include "panes/display_text.h"
#include "panes/fill_watcher.h"
#include "panes/history.h"
#include "support/manual_clock.h"

namespace velmora::panes {
namespace {

TEST(DisplayText, OrdinaryTextStaysAsItIs) {
  EXPECT_EQ(DisplayText("Angebot Nr. 5"), "Angebot Nr. 5");
  EXPECT_EQ(DisplayText("Größe – 你好 – שלום"), "Größe – 你好 – שלום");
  EXPECT_EQ(DisplayText(""), "");
}

TEST(DisplayText, ControlCharactersAndLineSeparatorsAreBlanks) {
  EXPECT_EQ(DisplayText("a\r\nb\tc\x7F"), "a  b c ");
  EXPECT_EQ(DisplayText("a\xC2\x85"
                        "b\xE2\x80\xA8"
                        "c\xE2\x80\xA9"
                        "d"),
            "a b c d");
}

TEST(DisplayText, ACharacterThatTurnsTheDirectionCannotDisguiseAnExtension) {
  // Shown by a list that obeys it, this name ends in "exe.pdf".
  EXPECT_EQ(DisplayText("rechnung\xE2\x80\xAE"
                        "fdp.exe"),
            "rechnung[U+202E]fdp.exe");
  EXPECT_EQ(DisplayText("\xD8\x9C|\xE2\x80\x8E|\xE2\x80\x8F|\xE2\x80\xAA|\xE2\x81\xA6|\xE2\x81\xA9"),
            "[U+061C]|[U+200E]|[U+200F]|[U+202A]|[U+2066]|[U+2069]");
}

TEST(DisplayText, AnEndlessTextIsCut) {
  EXPECT_EQ(DisplayText(std::string(1000, 'x')), std::string(1000, 'x'));
  EXPECT_EQ(DisplayText(std::string(10'000'000, 'x')), std::string(1000, 'x') + "…");
}

TEST(DisplayText, BytesThatAreNoTextAreMarked) {
  EXPECT_EQ(DisplayText("a\xFF"
                        "b"),
            "a\xEF\xBF\xBD"
            "b");
}

TEST(History, GoesBackAndForward) {
  PlaceHistory history;
  EXPECT_FALSE(history.CanGoBack());
  EXPECT_FALSE(history.Back());
  for (const auto* place : {"a", "b", "c"}) history.Visit(place);
  EXPECT_EQ(history.Back(), "b");
  EXPECT_EQ(history.Back(), "a");
  EXPECT_FALSE(history.Back());
  EXPECT_EQ(history.Forward(), "b");
  EXPECT_TRUE(history.CanGoForward());
  EXPECT_EQ(history.Forward(), "c");
  EXPECT_FALSE(history.Forward());
}

TEST(History, ANewPlaceForgetsWhatLayAhead) {
  PlaceHistory history;
  for (const auto* place : {"a", "b", "c"}) history.Visit(place);
  (void)history.Back();
  history.Visit("d");
  EXPECT_FALSE(history.CanGoForward());
  EXPECT_EQ(history.Back(), "b");
}

TEST(History, ThePresentPlaceAgainIsNoStep) {
  PlaceHistory history;
  history.Visit("a");
  history.Visit("A");
  EXPECT_FALSE(history.CanGoBack());
}

TEST(History, APlaceThatIsGoneIsForgottenAndThePresentOneStays) {
  PlaceHistory history;
  for (const auto* place : {"a", "gone", "c"}) history.Visit(place);
  EXPECT_EQ(history.Back(), "gone");
  history.Undo(true);
  EXPECT_FALSE(history.CanGoForward()) << "c is present";
  EXPECT_EQ(history.Back(), "a");
  EXPECT_EQ(history.Forward(), "c");

  PlaceHistory other;
  for (const auto* place : {"a", "gone", "c"}) other.Visit(place);
  (void)other.Back();
  (void)other.Back();
  EXPECT_EQ(other.Forward(), "gone");
  other.Undo(false);
  EXPECT_FALSE(other.CanGoBack()) << "a is present";
  EXPECT_EQ(other.Forward(), "c");
}

TEST(History, WhatStoodOnBothSidesOfAGonePlaceIsOnePlace) {
  PlaceHistory history;
  for (const auto* place : {"a", "gone", "a"}) history.Visit(place);
  (void)history.Back();
  history.Undo(true);
  EXPECT_FALSE(history.CanGoBack());
  EXPECT_FALSE(history.CanGoForward());
}

TEST(History, IsBounded) {
  PlaceHistory history;
  for (std::size_t i = 0; i < PlaceHistory::MaxPlaces + 5; ++i) history.Visit(std::to_string(i));
  std::size_t steps = 0;
  while (history.Back()) ++steps;
  EXPECT_EQ(steps, PlaceHistory::MaxPlaces - 1);
}

class Watcher final : public FillWatcher {
 public:
  explicit Watcher(test::ManualClock& clock) : clock_(clock) {}
  bool Breathe() override {
    clock_.Milliseconds += 30;  // a repaint takes its time
    return ++Breaths == StopAt;
  }
  int Breaths = 0, StopAt = 0;

 private:
  test::ManualClock& clock_;
};

TEST(Breather, AsksAtMostEveryFiftyMilliseconds) {
  test::ManualClock clock;
  Watcher watcher(clock);
  Breather breather(watcher, clock);
  for (int i = 0; i < 1000; ++i) (void)breather.Breathe();
  EXPECT_EQ(watcher.Breaths, 0);
  clock.Milliseconds += 50;
  (void)breather.Breathe();
  EXPECT_EQ(watcher.Breaths, 1);
  clock.Milliseconds += 49;
  (void)breather.Breathe();
  EXPECT_EQ(watcher.Breaths, 1) << "what the repaint took does not count";
}

TEST(Breather, AStopStands) {
  test::ManualClock clock;
  Watcher watcher(clock);
  watcher.StopAt = 1;
  Breather breather(watcher, clock);
  EXPECT_FALSE(breather.Breathe());
  clock.Milliseconds += 50;
  EXPECT_TRUE(breather.Breathe());
  EXPECT_TRUE(breather.Breathe());
  clock.Milliseconds += 50;
  EXPECT_TRUE(breather.Breathe());
}

}  // namespace
}  // namespace velmora::panes
