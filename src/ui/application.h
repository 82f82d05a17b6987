// The Qt application: made when the first box or window is needed, never by a run that shows none.
#pragma once

#include <QApplication>
#include <QTranslator>
#include <memory>

namespace velmora::ui {

class Application {
 public:
  // Both must live as long as the object: Qt keeps them.
  Application(int& argumentCount, char** arguments);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  ~Application();

  // Whether the environment names a display, or a platform that needs none. Does not touch it.
  static bool HasDisplay();
  // Makes the application, if there is none in this process yet: its name, German texts of the toolkit, icons
  // that fit the palette.
  void Ensure();

 private:
  int& argumentCount_;
  char** arguments_;
  QTranslator german_;
  std::unique_ptr<QApplication> application_;
};

// The same for an application that somebody else has made.
void PrepareApplication(QTranslator& german);

}  // namespace velmora::ui
