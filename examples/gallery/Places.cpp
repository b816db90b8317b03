#include <examples/gallery/Places.h>

#include <filesystem>

namespace vlm::gallery {
namespace {

namespace fs = std::filesystem;

// Absolute, without `.` and `..`, without a separator at its end.
fs::path Clean(const fs::path& path) {
  const fs::path whole = fs::weakly_canonical(fs::absolute(path));
  return whole.has_filename() ? whole : whole.parent_path();
}

}  // namespace

Places PlacesOf(const std::string& list, const std::string& programs, const std::string& gallery) {
  const fs::path page = Clean(gallery);
  const fs::path examples = Clean(list).parent_path().parent_path();
  return {examples.lexically_relative(page).string(), Clean(programs).string(), page.string()};
}

std::string ShellWord(const std::string& text) {
  constexpr char kPlain[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./";
  if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos) return text;
  std::string word = "'";
  for (const char c : text) word += c == '\'' ? "'\\''" : std::string(1, c);
  return word + "'";
}

std::string CommandOf(const Example& example, const Places& places) {
  constexpr std::string_view kMark = "{examples}";
  const std::string path = ShellWord(places.examples);
  std::string command = example.command;
  for (std::size_t at = 0; (at = command.find(kMark, at)) != std::string::npos; at += path.size()) {
    command.replace(at, kMark.size(), path);
  }
  return command;
}

std::string SourceOf(const Example& example, const Places& places) {
  return places.examples + "/" + example.name + "/" + example.name + ".cpp";
}

}  // namespace vlm::gallery
