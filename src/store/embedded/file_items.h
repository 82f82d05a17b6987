// The typed views of the messages whose content is one file: content file 1 of the entry.
#pragma once

#include <string>
#include <string_view>

#include "store/embedded/message_view.h"

namespace velmora::store::embedded {

class FaxItem final : public MessageView<DvFaxItem> {
 public:
  using MessageView::MessageView;
  std::string ImagePath() override { return Message().ContentFilePath(); }
  Status SetImage(std::string_view path) override { return Message().SetContentFile(path); }
};

class VoiceItem final : public MessageView<DvVoiceItem> {
 public:
  using MessageView::MessageView;
  std::string WavePath() override { return Message().ContentFilePath(); }
  Status SetWave(std::string_view path) override { return Message().SetContentFile(path); }
};

}  // namespace velmora::store::embedded
