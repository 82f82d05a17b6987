#include "panes/commands/external_program.h"

#include <fmt/format.h>

#include "base/text.h"

namespace velmora::panes {
namespace {

// A piece of the command line: text as the setting has it, or a path.
struct Piece {
  std::string Text;
  bool IsPath = false;
};

const std::string* PathOf(std::string_view text, const PanePaths& paths) {
  if (text.starts_with("%l") || text.starts_with("%L")) return &paths.Left;
  if (text.starts_with("%r") || text.starts_with("%R")) return &paths.Right;
  return nullptr;
}

std::vector<Piece> Pieces(std::string_view setting, const PanePaths& paths) {
  std::vector<Piece> pieces(1);
  bool hasPath = false;
  for (std::size_t position = 0; position < setting.size();) {
    if (const std::string* path = PathOf(setting.substr(position), paths)) {
      pieces.push_back({*path, true});
      pieces.emplace_back();
      hasPath = true;
      position += 2;
    } else {
      pieces.back().Text += setting[position++];
    }
  }
  if (!hasPath) {
    pieces.back().Text += ' ';
    pieces.push_back({paths.Active, true});
  }
  return pieces;
}

// Splits at blanks outside of double quotes; a path is never split nor looked into.
class ArgumentSplitter {
 public:
  void AddText(std::string_view text) {
    for (const char character : text) {
      if (character == '"') {
        isQuoted_ = !isQuoted_;
        isOpen_ = true;
      } else if ((character == ' ' || character == '\t') && !isQuoted_) {
        End();
      } else {
        argument_ += character;
        isOpen_ = true;
      }
    }
  }
  void AddPath(std::string_view path) {
    argument_ += path;
    isOpen_ = true;
  }
  std::vector<std::string> Finish() {
    End();
    return std::move(arguments_);
  }

 private:
  void End() {
    if (isOpen_) arguments_.push_back(std::move(argument_));
    argument_.clear();
    isOpen_ = false;
  }

  std::vector<std::string> arguments_;
  std::string argument_;
  bool isQuoted_ = false, isOpen_ = false;
};

}  // namespace

std::string ExternalCommandLine(std::string_view setting, const PanePaths& paths) {
  std::string line;
  for (const Piece& piece : Pieces(setting, paths)) {
    line += piece.IsPath ? fmt::format("\"{}\"", piece.Text) : piece.Text;
  }
  return line;
}

std::vector<std::string> ExternalArguments(std::string_view setting, const PanePaths& paths) {
  ArgumentSplitter splitter;
  for (const Piece& piece : Pieces(setting, paths)) {
    if (piece.IsPath) {
      splitter.AddPath(piece.Text);
    } else {
      splitter.AddText(piece.Text);
    }
  }
  return splitter.Finish();
}

std::string ProgramOf(std::string_view setting) {
  ArgumentSplitter splitter;
  splitter.AddText(setting);
  const std::vector<std::string> arguments = splitter.Finish();
  return arguments.empty() ? "" : arguments.front();
}

}  // namespace velmora::panes
