// The Qt application of the test program: on no display, so that tests run anywhere and beside each other.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <QApplication>
#include <QTranslator>
#include <memory>

#include "ui/application.h"

// The libraries of fonts and pictures keep what they have read until the process ends.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:libfreetype\nleak:libQt6\nleak:libqoffscreen\nleak:libglib\n";
}

namespace velmora::ui {
namespace {

class QtEnvironment final : public testing::Environment {
 public:
  void SetUp() override {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_SCALE_FACTOR", "1", 1);
    application_ = std::make_unique<QApplication>(argumentCount_, arguments_);
    PrepareApplication(german_);
  }
  void TearDown() override { application_.reset(); }

 private:
  int argumentCount_ = 1;
  char name_[8] = "test_ui";
  char* arguments_[2] = {name_, nullptr};
  QTranslator german_;
  std::unique_ptr<QApplication> application_;
};

// GoogleTest owns it.
[[maybe_unused]] testing::Environment* const Registered =
    testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace
}  // namespace velmora::ui
