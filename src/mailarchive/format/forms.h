// Design sets and forms: the HTML files with %VELMORA_...% variables from which pages are made.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::mailarchive {

// Indexes of the sections of a design file.
enum class Form {
  TreeIndex = 0,
  IndexByDate = 1,
  IndexBySubject = 2,
  IndexByAddress = 3,
  Mail = 4,
  Fax = 5,
  Voice = 6,
  ExcelAddressSheet = 7,
  ExcelUserSheet = 8,
};
inline constexpr std::size_t FormCount = 9;

// The chosen design set. Owned by main, handed down by reference.
class DesignSet {
 public:
  // `designPath`: the design directory; `designName`: the design file without extension.
  DesignSet(platform::FileSystem& fileSystem, std::string designPath, std::string designName);

  // Another directory or design, which LoadDesignSet then reads.
  void Choose(std::string designPath, std::string designName) {
    designPath_ = std::move(designPath);
    designName_ = std::move(designName);
  }
  // Reads the form names of the design file; default names when it cannot be opened. True when a section
  // named a form.
  bool LoadDesignSet();
  const std::string& FormName(Form form) const { return names_[static_cast<std::size_t>(form)]; }
  std::string FormPath(Form form) const;

  // Copies the pictures of a form (index 0 to 6) into a target directory. True when the section was found and
  // all its files were copied; a picture missing from the design directory is skipped without failing.
  bool LoadDesignForm(Form form, std::string_view targetDirectory);
  // The text of a form as UTF-8 (the file is Windows-1252, or UTF-8 where an editor has put its mark at the
  // beginning); a good one is read once, until ForgetTexts or LoadDesignSet.
  Result<std::string_view> FormText(Form form);
  // A run begins: a form that was edited since the last one is read anew.
  void ForgetTexts() { texts_.clear(); }

 private:
  // The design file's text; nothing when it cannot be opened.
  std::optional<std::string> ReadDesignFile() const;

  platform::FileSystem& fileSystem_;
  std::string designPath_, designName_;
  std::array<std::string, FormCount> names_;
  std::map<Form, std::string> texts_;
};

// A variable ("%VELMORA_TO%") and its value, in the order of replacement.
using FormValue = std::pair<std::string_view, std::string_view>;

// Every occurrence of every variable replaced, in the order of the values. One pass over the text; only when
// a value itself holds "%VELMORA_" are the replacements made one after the other, with the result that this
// has.
std::string FillForm(std::string_view form, const std::vector<FormValue>& values);

}  // namespace velmora::mailarchive
