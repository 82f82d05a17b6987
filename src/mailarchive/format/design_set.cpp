#include <algorithm>
#include <iterator>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/forms.h"
#include "mailarchive/format/text_file.h"

namespace velmora::mailarchive {
namespace {

struct Section {
  std::string_view Name, DefaultForm;
};

// By Form.
constexpr Section Sections[FormCount] = {
    {"[TreeIndex]", "StdVelmoraTreeIndexForm.htm"},
    {"[MessageIndexByDate]", "StdVelmoraIndexForm.htm"},
    {"[MessageIndexBySubject]", "StdVelmoraIndex2Form.htm"},
    {"[MessageIndexByAddress]", "StdVelmoraIndex3Form.htm"},
    {"[Messages]", "StdVelmoraMailForm.htm"},
    {"[Fax]", "StdVelmoraFaxForm.htm"},
    {"[Voice]", "StdVelmoraVoiceMailForm.htm"},
    {"[ExcelAddrSheet]", "StdVelmoraAddressSheet.xls"},
    {"[ExcelUserSheet]", "StdVelmoraUserListSheet.xls"},
};

constexpr int FormKeyLines = 10;            // lines behind a section's head in which its form is looked for
constexpr int PictureKeyLines = 2;          // likewise its pictures
constexpr auto LastPageForm = Form::Voice;  // the forms behind it are workbooks and have no pictures

std::array<std::string, FormCount> DefaultNames() {
  std::array<std::string, FormCount> names;
  std::ranges::transform(Sections, names.begin(), [](const Section& section) { return section.DefaultForm; });
  return names;
}

bool IsHead(std::string_view line, const Section& section) { return EqualsFold(Trim(line), section.Name); }

// The form named in the lines behind a section's head, which are taken off `rest`; the head of the next
// section stays.
std::optional<std::string> TakeFormName(std::string_view& rest) {
  for (int count = 0; count < FormKeyLines && !rest.starts_with('['); ++count) {
    const auto line = TakeLine(rest);
    if (!line) break;
    const auto pair = SplitKeyValue(*line);
    if (pair && EqualsFold(pair->Key, "form") && !pair->Value.empty()) return std::string(pair->Value);
  }
  return std::nullopt;
}

// The list of pictures behind the section's head. Nothing when there is no such section.
std::optional<std::string> FindPictures(std::string_view text, const Section& section) {
  while (const auto line = TakeLine(text)) {
    if (!IsHead(*line, section)) continue;
    std::string pictures;
    for (int count = 0; count < PictureKeyLines; ++count) {
      const auto pair = SplitKeyValue(TakeLine(text).value_or(""));
      if (pair && (EqualsFold(pair->Key, "pictures") || EqualsFold(pair->Key, "files"))) {
        pictures = pair->Value;
      }
    }
    return pictures;
  }
  return std::nullopt;
}

// Makes the folders that lead to `picture` below the target. The folder of the picture.
Result<std::string> MakePictureFolder(platform::FileSystem& fileSystem, std::string_view targetDirectory,
                                      std::string_view picture) {
  std::string folder(targetDirectory);
  for (auto end = picture.find('\\'); end != std::string_view::npos; end = picture.find('\\')) {
    folder = JoinPath(folder, picture.substr(0, end));
    picture.remove_prefix(end + 1);
    if (fileSystem.FolderExists(folder)) continue;
    if (auto created = fileSystem.CreateFolder(folder); !created) return Fail(std::move(created.error()));
  }
  return folder;
}

}  // namespace

DesignSet::DesignSet(platform::FileSystem& fileSystem, std::string designPath, std::string designName)
    : fileSystem_(fileSystem),
      designPath_(std::move(designPath)),
      designName_(std::move(designName)),
      names_(DefaultNames()) {}

bool DesignSet::LoadDesignSet() {
  texts_.clear();
  const auto text = ReadDesignFile();
  if (!text) {
    names_ = DefaultNames();
    return false;
  }
  bool anyForm = false;
  std::string_view rest = *text;
  while (const auto line = TakeLine(rest)) {
    const auto* section =
        std::ranges::find_if(Sections, [&](const Section& candidate) { return IsHead(*line, candidate); });
    if (section == std::end(Sections)) continue;
    if (auto name = TakeFormName(rest)) {
      names_[static_cast<std::size_t>(section - std::begin(Sections))] = *std::move(name);
      anyForm = true;
    }
  }
  return anyForm;
}

std::string DesignSet::FormPath(Form form) const { return JoinPath(designPath_, FormName(form)); }

std::optional<std::string> DesignSet::ReadDesignFile() const {
  const auto bytes = ReadTextFile(fileSystem_, JoinPath(designPath_, designName_ + ".ini"));
  if (!bytes) return std::nullopt;
  return DecodeEditedFile(*bytes);
}

bool DesignSet::LoadDesignForm(Form form, std::string_view targetDirectory) {
  if (form > LastPageForm) return false;
  const auto text = ReadDesignFile();
  if (!text) return false;
  const auto pictures = FindPictures(*text, Sections[static_cast<std::size_t>(form)]);
  if (!pictures) return false;

  bool allCopied = true;
  for (const auto& entry : Split(*pictures, ",")) {
    const auto picture = ReplaceAll(Trim(entry), "/", "\\");
    const auto source = JoinPath(designPath_, picture);
    // A path that leads out of the design directory would lead out of the mail archive as well.
    if (!IsSafeRelativePath(picture) || !fileSystem_.FileExists(source)) continue;
    const auto folder = MakePictureFolder(fileSystem_, targetDirectory, picture);
    if (!folder || !fileSystem_.CopyFile(source, JoinPath(*folder, FileNameOf(picture)))) allCopied = false;
  }
  return allCopied;
}

Result<std::string_view> DesignSet::FormText(Form form) {
  auto text = texts_.find(form);
  if (text == texts_.end()) {
    auto bytes = fileSystem_.ReadFile(FormPath(form));
    if (!bytes) return Fail(std::move(bytes.error()));
    text = texts_.emplace(form, DecodeEditedFile(*bytes)).first;
  }
  return text->second;
}

}  // namespace velmora::mailarchive
