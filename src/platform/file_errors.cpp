#include "platform/file_errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace velmora::platform {
namespace {

struct NumberedText {
  int Number;
  std::string_view Text;
};

constexpr std::array<NumberedText, 7> Texts{{
    {file_error::BadName, "Ungültiger Dateiname"},
    {file_error::FileNotFound, "Datei nicht gefunden"},
    {file_error::DeviceError, "Gerätefehler"},
    {file_error::AlreadyExists, "Datei existiert bereits"},
    {file_error::DiskFull, "Datenträger voll"},
    {file_error::AccessDenied, "Zugriff verweigert"},
    {file_error::PathNotFound, "Pfad nicht gefunden"},
}};

struct SystemError {
  int SystemNumber;
  int FileError;
};

// ENOENT and ELOOP stand elsewhere: what they mean depends on what was looked for.
constexpr std::array<SystemError, 15> SystemErrors{{
    {ENOTDIR, file_error::PathNotFound},
    {EEXIST, file_error::AlreadyExists},
    {EACCES, file_error::AccessDenied},
    {EPERM, file_error::AccessDenied},
    {EROFS, file_error::AccessDenied},
    {EBUSY, file_error::AccessDenied},
    {ETXTBSY, file_error::AccessDenied},
    {EISDIR, file_error::AccessDenied},
    {ENOTEMPTY, file_error::AccessDenied},
    {ENOSPC, file_error::DiskFull},
    {EDQUOT, file_error::DiskFull},
    {EFBIG, file_error::DiskFull},
    {ENAMETOOLONG, file_error::BadName},
    {EINVAL, file_error::BadName},
    {EILSEQ, file_error::BadName},
}};

}  // namespace

std::string FileErrorText(int number) {
  const auto* text = std::ranges::find(Texts, number, &NumberedText::Number);
  return std::string(text == Texts.end() ? std::string_view("Gerätefehler") : text->Text);
}

tl::unexpected<Error> FailWith(int fileError) { return Fail(fileError, FileErrorText(fileError)); }

tl::unexpected<Error> FailWithErrno(int errorNumber, int missing) {
  // A circle of symbolic links leads nowhere, as a dangling one does.
  if (errorNumber == ENOENT || errorNumber == ELOOP) return FailWith(missing);
  const auto* known = std::ranges::find(SystemErrors, errorNumber, &SystemError::SystemNumber);
  return FailWith(known == SystemErrors.end() ? file_error::DeviceError : known->FileError);
}

}  // namespace velmora::platform
