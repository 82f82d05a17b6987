#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>
#include <QPalette>

#include "store/icon_keys.h"
#include "ui/icons.h"

namespace velmora::ui {
namespace {

bool ShowsSomething(const QIcon& icon) {
  const QImage image = icon.pixmap(22, 22).toImage();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > 0) return true;
    }
  }
  return false;
}

// The lightness of what is drawn, 0 black to 255 white.
int InkOf(const QIcon& icon) {
  const QImage image = icon.pixmap(22, 22).toImage();
  int darkest = 255, lightest = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, y);
      if (color.alpha() < 200) continue;
      darkest = std::min(darkest, color.lightness());
      lightest = std::max(lightest, color.lightness());
    }
  }
  return QApplication::palette().color(QPalette::Window).lightness() > 128 ? darkest : lightest;
}

template <typename Keys>
void ExpectAll(const Keys& keys) {
  for (const std::string_view key : keys) {
    EXPECT_TRUE(HasIcon(key)) << key;
    EXPECT_TRUE(ShowsSomething(IconOf(key))) << key;
  }
}

TEST(IconsTest, EveryKeyHasAPictureWithTheTheme) {
  ExpectAll(store::ToolbarImageKeys);
  ExpectAll(store::ListImageKeys);
}

TEST(IconsTest, EveryKeyHasAPictureWithoutTheTheme) {
  const QStringList paths = QIcon::themeSearchPaths();
  QIcon::setThemeSearchPaths({"/nonexistent"});
  QIcon::setThemeName("none");
  EXPECT_FALSE(QIcon::hasThemeIcon("folder"));
  ExpectAll(store::ToolbarImageKeys);
  ExpectAll(store::ListImageKeys);
  QIcon::setThemeSearchPaths(paths);
  ChooseIconTheme();
}

TEST(IconsTest, AnUnknownKeyShowsTheUnknownItem) {
  EXPECT_FALSE(HasIcon("Nirgends"));
  EXPECT_TRUE(ShowsSomething(IconOf("Nirgends")));
}

TEST(IconsTest, OwnDrawingsStandOutOnLightAndDark) {
  const QPalette before = QApplication::palette();
  QPalette dark = before;
  dark.setColor(QPalette::Window, QColor(35, 38, 41));
  dark.setColor(QPalette::WindowText, QColor(252, 252, 252));
  const int onLight = InkOf(OwnDrawing("index"));
  QApplication::setPalette(dark);
  const int onDark = InkOf(OwnDrawing("index"));
  QApplication::setPalette(before);
  EXPECT_LT(onLight, 100);
  EXPECT_GT(onDark, 200);
}

// The strongest point of a picture, 255 for one that hides the ground.
int StrongestOf(const QIcon& icon, QIcon::Mode mode) {
  const QImage image = icon.pixmap(QSize(22, 22), mode).toImage();
  int alpha = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) alpha = std::max(alpha, qAlpha(image.pixel(x, y)));
  }
  return alpha;
}

TEST(IconsTest, ADisabledDrawingIsFainter) {
  const QIcon icon = OwnDrawing("delete");
  EXPECT_GT(StrongestOf(icon, QIcon::Normal), StrongestOf(icon, QIcon::Disabled));
}

// How many dots wide the drawn part of a picture of 22 is on a screen of that scale.
int WidthOf(const QIcon& icon, QIcon::Mode mode, qreal scale) {
  const QImage image = icon.pixmap(QSize(22, 22), scale, mode).toImage();
  int left = image.width(), right = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) < 40) continue;
      left = std::min(left, x);
      right = std::max(right, x);
    }
  }
  return right - left + 1;
}

TEST(IconsTest, PicturesGrowWithTheScaleOfTheScreen) {
  for (const std::string_view key : store::ToolbarImageKeys) {
    const QIcon icon = IconOf(key);
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
      EXPECT_GE(WidthOf(icon, mode, 2), WidthOf(icon, mode, 1) * 3 / 2) << key << " " << mode;
    }
  }
}

TEST(IconsTest, EveryButtonOfTheToolBarTellsWhetherItWorks) {
  for (const std::string_view key : store::ToolbarImageKeys) {
    const QIcon icon = IconOf(key);
    EXPECT_LT(StrongestOf(icon, QIcon::Disabled), StrongestOf(icon, QIcon::Normal) * 2 / 3) << key;
  }
}

}  // namespace
}  // namespace velmora::ui
