// The progress box: what a long run is doing, how far it is, and the button that asks it to stop.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

#include "run/front_ends.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace velmora::ui {

// Controls ArcStr, ProgStr, ProgBar and the button "Abbrechen". Esc and the closing of the box ask to cancel
// as the button does; the box stays until the run has come to its end.
class ProgressBox final : public QDialog {
 public:
  ProgressBox(const QString& title, QWidget* parent);

  bool CancelRequested() const { return cancelRequested_; }
  void ShowState(const QString& archive, const QString& item, std::int64_t done, std::int64_t total);

  void reject() override;  // Esc, the button and the closing of the window end here

 private:
  QLabel* arcStr_;
  QLabel* progStr_;
  QLabel* remaining_;
  QProgressBar* progBar_;
  QPushButton* cancel_;
  QElapsedTimer shownFor_;
  bool cancelRequested_ = false;
};

class QtProgress final : public run::Progress {
 public:
  void Show(std::string_view title) override;
  void SetArchiveText(std::string_view text) override;
  void SetItemText(std::string_view text) override;
  void SetBar(std::int64_t done, std::int64_t total) override;
  void Close() override;
  bool Pump() override;

 private:
  void Breathe();

  std::unique_ptr<ProgressBox> box_;
  QElapsedTimer sincePump_;
  QString archiveText_, itemText_;
  std::int64_t done_ = 0, total_ = 0;
  bool pumping_ = false;
};

}  // namespace velmora::ui
