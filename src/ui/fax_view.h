// Shows the pages of a TIFF.
#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;
class QScrollArea;

namespace velmora::ui {

class FaxView final : public QWidget {
 public:
  explicit FaxView(QWidget* parent = nullptr);

  // The file at the host path. False when it is missing or no picture that can be read; Problem tells then.
  bool Load(const QString& hostPath);
  QString Problem() const { return problem_; }

  int PageCount() const { return pageCount_; }
  int Page() const { return page_; }  // from 0
  void ShowPage(int page);            // one that does not exist: nothing happens
  double Zoom() const { return zoom_; }
  void SetZoom(double zoom);  // 1: a dot of the fax is a dot of the screen
  void FitWidth();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Fail(const QString& problem);
  void Paint();

  QLabel* picture_;
  QScrollArea* area_;
  QLabel* pageText_;
  QPushButton *previous_, *next_;
  QString hostPath_, problem_;
  QImage image_;
  int pageCount_ = 0, page_ = 0;
  double zoom_ = 1.0;
  bool fitsWidth_ = true;
};

}  // namespace velmora::ui
