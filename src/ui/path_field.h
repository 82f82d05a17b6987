// The path of a pane: shows where it is, takes a typed path and completes it.
#pragma once

#include <QCompleter>
#include <QLineEdit>
#include <QStringListModel>
#include <functional>

namespace velmora::ui {

class PathField final : public QLineEdit {
 public:
  PathField(const QString& name, const QString& accessibleName, QWidget* parent = nullptr);

  std::function<void(const QString& path)> Entered;           // Return
  std::function<void()> Left;                                 // Esc: back to the list
  std::function<QStringList(const QString& typed)> Complete;  // whole paths

  void ShowPath(const QString& path);
  // The path of the active pane stands out.
  void SetActive(bool active);
  bool IsActive() const { return active_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Colour();

  QStringListModel* candidates_;
  QString path_;
  bool active_ = false;
};

}  // namespace velmora::ui
