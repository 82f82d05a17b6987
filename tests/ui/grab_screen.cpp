// Saves what the screen of the X display shows as a picture: grab_screen FILE.png

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <cstdio>

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("grab_screen FILE.png\n", stderr);
    return 2;
  }
  const bool isSaved = QGuiApplication::primaryScreen()->grabWindow(0).save(argv[1], "PNG");
  return isSaved ? 0 : 1;
}
