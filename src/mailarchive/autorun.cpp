// autorun.inf beside an index: a disc that holds a mail archive opens it by itself.
#include <fmt/format.h>

#include "base/code_page.h"
#include "base/date_time.h"
#include "base/paths.h"
#include "mailarchive/content_index.h"
#include "mailarchive/format/file_names.h"

namespace velmora::mailarchive {

using directory_file::Autorun, directory_file::Launcher;

void WriteAutorunInf(IndexContext& context, std::string_view directory) {
  platform::FileSystem& fileSystem = context.run.fileSystem();
  const std::string autorun = JoinPath(directory, Autorun);
  const std::string launcher = JoinPath(directory, Launcher);
  // Every failure here leaves the mail archive as usable as before.
  if (!context.CreateAutorunInf) {
    (void)fileSystem.DeleteFile(autorun, false);
    (void)fileSystem.DeleteFile(launcher, false);
    return;
  }
  const std::string text = fmt::format(
      "[autorun]\r\nopen={0} index.html\r\nicon={0}\r\n\r\n;Velmora Mail-Archiv\r\n;Created {1}\r\n",
      Launcher, FormatDateTime(context.run.clock().Now()));
  (void)fileSystem.WriteFile(autorun, ToCodePage(text));
  (void)fileSystem.CopyFile(JoinPath(context.ProgramDirectory, Launcher), launcher);
}

}  // namespace velmora::mailarchive
