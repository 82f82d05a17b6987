// The front end of the window: boxes, choosers, progress box, viewers.
#pragma once

#include <QPointer>
#include <functional>
#include <memory>

#include "platform/file_system.h"
#include "run/front_ends.h"
#include "store/session.h"
#include "ui/progress_box.h"
#include "ui/prompts.h"

namespace velmora::ui {

// The choosers speak Windows paths to the program and host paths to the toolkit.
class QtChoosers final : public run::Choosers {
 public:
  // Before both are set, a chooser has nothing to offer and answers as if it had been cancelled.
  // A file's `start` without a directory is the name to begin with.
  void SetFileSystem(platform::FileSystem* fileSystem) { fileSystem_ = fileSystem; }
  void SetSession(store::Session* session) { session_ = session; }

  std::optional<std::string> ChooseFolder(std::string_view title, std::string_view start) override;
  std::optional<std::string> ChooseFile(std::string_view title, std::string_view start,
                                        const std::vector<run::FileFilter>& filters,
                                        run::FileUse use) override;
  std::optional<std::string> ChooseArchive(std::string_view title, std::string_view startFullPath) override;
  std::optional<std::string> ChooseUser(std::string_view title) override;

 private:
  QString HostPathOf(std::string_view path) const;
  QString StartOf(std::string_view start) const;

  platform::FileSystem* fileSystem_ = nullptr;  // not owned
  store::Session* session_ = nullptr;           // not owned
  QString lastFolder_;                          // of the last file chosen; empty before
};

class QtStatusDisplay final : public run::StatusDisplay {
 public:
  // Where the window shows the text; empty without a window.
  std::function<void(const QString&)> ShowText;

  void SetStatusText(std::string_view text) override;
  void ShowWait(std::string_view text) override;
  void EndWait() override;

 private:
  QPointer<QWidget> box_;  // the window that it stands on may take it along
  int depth_ = 0;
};

class QtViewers final : public run::Viewers {
 public:
  QtViewers(QtPrompts& prompts, QtChoosers& choosers) : prompts_(prompts), choosers_(choosers) {}
  void SetFileSystem(platform::FileSystem* fileSystem) { fileSystem_ = fileSystem; }

  void ShowText(std::string_view title, std::string_view text, const run::TextUses& uses) override;
  void OpenDocument(std::string_view path) override;

 private:
  // `name`: what the file is called unless another name is typed.
  void SaveText(const std::string& name, const std::string& text,
                const std::vector<run::FileFilter>& saveFilters);

  QtPrompts& prompts_;
  QtChoosers& choosers_;
  platform::FileSystem* fileSystem_ = nullptr;  // not owned
};

class QtFrontEnd {
 public:
  // `ensureApplication` runs before the first box is shown.
  explicit QtFrontEnd(std::function<void()> ensureApplication);
  QtFrontEnd(const QtFrontEnd&) = delete;
  QtFrontEnd& operator=(const QtFrontEnd&) = delete;
  ~QtFrontEnd();

  run::FrontEnd Set();
  QtStatusDisplay& Status() { return status_; }
  // Both null when they end before the front end does.
  void SetSession(platform::FileSystem* fileSystem, store::Session* session);

 private:
  class Lazy;  // hands on what is asked, after the application has been made

  QtPrompts prompts_;
  QtChoosers choosers_;
  QtProgress progress_;
  QtStatusDisplay status_;
  QtViewers viewers_;
  std::unique_ptr<Lazy> lazy_;
};

// "Textdatei (*.txt);;Alle Dateien (*)" of the program's filters.
QString ToQtFilters(const std::vector<run::FileFilter>& filters);

}  // namespace velmora::ui
