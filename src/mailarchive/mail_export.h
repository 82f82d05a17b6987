// The export of one mail (also SMS, video and audio entries): its page with descriptor and components, or
// only the parts that were asked for.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mailarchive/entry_export.h"

namespace velmora::mailarchive {

class MailExport final : public EntryExport {
 public:
  MailExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
             store::DvMailItem& mail)
      : EntryExport(context, userTexts, place, mail.Item()), mail_(mail) {}

  void ReadValues() override;

 private:
  void WriteEntry(bool failed, std::string_view statusText) override;
  void WritePage();
  void WriteOnlyOriginal(bool failed, std::string_view statusText);
  void WriteOnlyAttachments();

  struct MailPage : Page {
    bool IsHtml = false;
    std::string BodyFile;  // of an HTML mail
    std::string Body;
    std::string Content, OriginalLink, AttachmentLinks;
  };
  void NamePage(MailPage& page);
  void WriteOriginal(MailPage& page);
  // The relative paths of the attachments in the message's order, "" for one that could not be saved.
  std::vector<std::string> WriteAttachments(MailPage& page);
  void WriteHtmlBody(MailPage& page, const std::vector<std::string>& attachments);
  int DescriptorFlags();

  std::optional<std::string> CopyOriginal(std::optional<Component> component, std::string_view fileName,
                                          const std::string& source);
  std::optional<std::string> WriteSmtpHeader(std::optional<Component> component, std::string_view fileName);
  std::optional<std::string> SaveAttachment(std::optional<Component> component, std::string_view fileName,
                                            store::DvAttachment& attachment);

  store::DvMailItem& mail_;
};

}  // namespace velmora::mailarchive
