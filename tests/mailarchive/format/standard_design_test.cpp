// The design set that the program comes with, as the build made it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "base/text.h"
#include "mailarchive/format/folder_fixture.h"
#include "mailarchive/format/forms.h"

namespace velmora::mailarchive {
namespace {

constexpr Form PageForms[] = {Form::TreeIndex, Form::IndexByDate, Form::IndexBySubject, Form::IndexByAddress,
                              Form::Mail,      Form::Fax,         Form::Voice};

bool IsIndex(Form form) { return form <= Form::IndexByAddress; }

class StandardDesignTest : public FolderTest {
 protected:
  StandardDesignTest() { EXPECT_TRUE(Designs.LoadDesignSet()); }

  std::string Text(Form form) { return std::string(Designs.FormText(form).value()); }

  static std::set<std::string> Found(const std::string& text, const std::regex& pattern) {
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
      found.insert((*match)[1]);
    }
    return found;
  }

  DesignSet Designs{*Files, Files->FromHostPath(VELMORA_DESIGNS), "Standard"};
};

TEST_F(StandardDesignTest, FilesAreAsciiWithCarriageReturns) {
  for (const auto& file : std::filesystem::directory_iterator(VELMORA_DESIGNS)) {
    if (!file.is_regular_file() || file.path().extension() == ".xls") continue;
    std::ifstream stream(file.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_TRUE(std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }))
        << file.path();
    EXPECT_EQ(ReplaceAll(ReplaceAll(bytes, "\r\n", "\n"), "\n", "\r\n"), bytes) << file.path();
  }
}

TEST_F(StandardDesignTest, ThePolicyComesFirstAndTheCharsetEarly) {
  for (const auto form : PageForms) {
    const auto text = Text(form);
    EXPECT_TRUE(
        text.starts_with("<!DOCTYPE html>\r\n<html lang=\"de\">\r\n<head>\r\n"
                         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none';"))
        << Designs.FormName(form);
    EXPECT_LT(text.find("<meta charset=\"windows-1252\">"), 1024u) << Designs.FormName(form);
    for (const auto* forbidden :
         {"<script", "=\"http://", "https://", "<link", "@import", "unsafe-eval", "script-src"}) {
      EXPECT_EQ(text.find(forbidden), std::string::npos) << Designs.FormName(form) << ' ' << forbidden;
    }
  }
}

TEST_F(StandardDesignTest, EveryFormUsesItsVariables) {
  const std::set<std::string> entry = {"TITLE", "SUBJECT", "FROM",      "TO",
                                       "TIME",  "ARCDATE", "COPYRIGHT", "COMMENT"};
  const std::set<std::string> index = {"TITLE",     "IDXFOLDER", "IDXARCDATE",
                                       "COPYRIGHT", "COMMENT",   "IDXLINKS"};
  const std::map<Form, std::set<std::string>> own = {
      {Form::Mail, {"CONTENT", "MSGCOMMENT", "EML", "ATTLINKS"}},
      {Form::Fax, {"FAX", "MSGCOMMENT"}},
      {Form::Voice, {"VOICE", "MSGCOMMENT"}}};
  for (const auto form : PageForms) {
    auto expected = IsIndex(form) ? index : entry;
    if (own.contains(form)) expected.insert(own.at(form).begin(), own.at(form).end());
    EXPECT_EQ(Found(Text(form), std::regex("%VELMORA_(\\w+)%")), expected) << Designs.FormName(form);
  }
}

TEST_F(StandardDesignTest, ListsStandOnce) {
  for (const auto form : PageForms) {
    const auto text = Text(form);
    const std::string_view last = IsIndex(form) ? "%VELMORA_IDXLINKS%" : "%VELMORA_TITLE%";
    EXPECT_EQ(text.find(last), text.rfind(last)) << Designs.FormName(form);
  }
}

TEST_F(StandardDesignTest, TheContentOfAMailComesLast) {
  const auto text = Text(Form::Mail);
  EXPECT_EQ(text.substr(text.rfind("%VELMORA_")), "%VELMORA_CONTENT%</div></main>\r\n</body>\r\n</html>\r\n");
}

TEST_F(StandardDesignTest, MessageIndexesMarkTheirOrderAndATreeIndexHasNone) {
  const std::regex current("<a href=\"([^\"]+)\" aria-current=\"page\">");
  const std::regex link("<a href=\"([^\"]+)\"");
  const std::set<std::string> all = {"index.html", "index2.html", "index3.html"};
  EXPECT_EQ(Found(Text(Form::IndexByDate), current), std::set<std::string>{"index.html"});
  EXPECT_EQ(Found(Text(Form::IndexBySubject), current), std::set<std::string>{"index2.html"});
  EXPECT_EQ(Found(Text(Form::IndexByAddress), current), std::set<std::string>{"index3.html"});
  for (const auto form : {Form::IndexByDate, Form::IndexBySubject, Form::IndexByAddress}) {
    EXPECT_EQ(Found(Text(form), link), all);
  }
  EXPECT_TRUE(Found(Text(Form::TreeIndex), link).empty());
}

// A policy that allows pictures beside a page allows those on other computers, too.
TEST_F(StandardDesignTest, APageShowsNoFileBesideIt) {
  const std::regex image("<img src=\"([^\"]+)\"");
  const std::regex background("url\\(\"([^\"]+)\"\\)");
  for (const auto form : PageForms) {
    const auto text = Text(form);
    EXPECT_NE(text.substr(0, text.find('>', text.find("Content-Security-Policy"))).find("img-src data:;"),
              std::string::npos);
    auto pictures = Found(text, image);
    pictures.merge(Found(text, background));
    EXPECT_FALSE(pictures.empty());
    for (const auto& picture : pictures) {
      EXPECT_TRUE(picture.starts_with("data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg'"))
          << picture;
      EXPECT_TRUE(picture.ends_with("%3C/svg%3E")) << picture;
      EXPECT_EQ(picture.find('#'), std::string::npos) << picture;
    }
    const auto target = "target" + std::to_string(static_cast<int>(form));
    std::filesystem::create_directories(Folder.HostPath(target));
    EXPECT_TRUE(Designs.LoadDesignForm(form, Folder.Path(target)));
    EXPECT_TRUE(std::filesystem::is_empty(Folder.HostPath(target)));
  }
}

}  // namespace
}  // namespace velmora::mailarchive
