// The export of one voice mail: its wave file with page, descriptor and comment, or only recording or
// comment.
#pragma once

#include <string>
#include <string_view>

#include "mailarchive/entry_export.h"

namespace velmora::mailarchive {

class VoiceExport final : public EntryExport {
 public:
  VoiceExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
              store::DvVoiceItem& voice)
      : EntryExport(context, userTexts, place, voice.Item()), voice_(voice) {}

  void ReadValues() override;
  // Every voice mail passes: a call that ended badly has still left its message.
  bool ObeysSendStatus() const override { return false; }

 private:
  void WriteEntry(bool failed, std::string_view statusText) override;
  void WritePage();
  // Names the page and copies the recording; the link to it.
  std::string SaveRecording(Page& page);
  void WriteOnlyRecording();

  store::DvVoiceItem& voice_;
};

}  // namespace velmora::mailarchive
