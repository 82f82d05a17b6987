// The message viewer: header, body, fax pages, attachments.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "panes/commands/outcome.h"
#include "platform/file_system.h"
#include "run/front_ends.h"
#include "ui/message_content.h"

class QListWidget;

namespace velmora::ui {

class MessageViewer final : public QDialog {
 public:
  struct Parts {
    platform::FileSystem& fileSystem;
    run::FrontEnd frontEnd;
    std::string TempDir;  // where opened attachments are put, with "\" at its end
  };
  // Null, after a message, when the entry cannot be read.
  static std::unique_ptr<MessageViewer> Open(const Parts& parts, const panes::MessageRequest& request,
                                             QWidget* parent);

  const MessageContent& Content() const { return content_; }
  void OpenAttachment(int row);
  void SaveAttachment(int row);
  // Each under its own name, numbered where the folder has that name already.
  void SaveAllAttachments();

 private:
  MessageViewer(const Parts& parts, const panes::MessageRequest& request, MessageContent content,
                QWidget* parent);

  QWidget* MakeHeader();
  QWidget* MakeBody();
  QWidget* MakeText();
  QWidget* MakeHtml();
  QWidget* MakeFax();
  QWidget* MakeVoice();
  QWidget* MakeAttachments();
  QByteArray InlinePart(const QString& reference);
  // The attachment as a file at the path; a failure is told.
  bool SaveAs(int row, const std::string& path, bool exclusive);
  // A directory of this user alone, below the temporary directory; "" after a message.
  std::string PrivateDirectory();

  Parts parts_;
  panes::MessageRequest request_;
  MessageContent content_;
  QListWidget* attachments_ = nullptr;
};

}  // namespace velmora::ui
