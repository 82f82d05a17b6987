// What the commands of a control file share: the file, the counting of errors over the whole run, the result
// mail.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "startup/control_file.h"
#include "startup/process.h"
#include "startup/text_replacement.h"

namespace velmora::startup {

// Numbers of failures that are neither the file system's nor the store's.
namespace batch_error {
inline constexpr int NoCommand = 1;
inline constexpr int NoArchive = 2;
inline constexpr int NoRight = 3;
inline constexpr int BadTarget = 4;
inline constexpr int BadLogType = 5;
inline constexpr int NoReport = 6;
}  // namespace batch_error

MomentTexts MomentNow(platform::Clock& clock);

class BatchRun {
 public:
  // `path`: the Windows path of the control file, "" when its lines came from elsewhere.
  BatchRun(Context& context, ControlFile file, std::string name, std::string path);

  Context& GetContext() { return context_; }
  const ControlFile& File() const { return file_; }
  const std::string& Name() const { return name_; }
  const std::string& Path() const { return path_; }

  // `object`: the path or archive concerned; `text`: what went wrong with it. One line of the log each.
  void LogFailure(std::string_view object, int number, std::string_view text);
  // A failure of the object layer.
  void LogStoreFailure(std::string_view object, const Error& error);

  // Starts new counters and keeps the count of errors so far.
  void ResetRunCounters();
  bool HadErrors();

  // The result mail, if the file asks for it. `bodyValues`: what "%5" and the following stand for.
  void SendMail(const Replacements& bodyValues, std::string_view attachments);

 private:
  Context& context_;
  ControlFile file_;
  std::string name_, path_;
  std::int64_t startMilliseconds_;
  std::int64_t earlierErrors_ = 0;
};

}  // namespace velmora::startup
