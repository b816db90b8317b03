#pragma once

/// \file
/// Reads the command lines of the examples: options with and without a value, and what else stands
/// there.
///
///     std::string output = "map.png", file;
///     vlm::examples::OptionReader reader;
///     reader.Picture({"-o", "--output"}, output);
///     reader.Operand(file, "file");
///     if (!reader.Read({"-o", "map.svg", "wells.csv"})) return;  // --help was asked for

#include <charconv>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace vlm::examples {

/// What a command line may hold, told first, and then read.
///
/// An object with identity for one reading. *Lifetime*: what is told by reference must live until
/// then.
class OptionReader {
 public:
  /// The names of an option, such as `{"-o", "--output"}`.
  using Names = std::initializer_list<const char*>;
  /// What is done with a value; it throws UsageError if the value makes no sense.
  using Take = std::function<void(const std::string& value)>;

  /// Of a program's only command line.
  OptionReader() = default;
  /// Of one of a program's commands, which is named where an option is unknown.
  explicit OptionReader(std::string command) : command_(std::move(command)) {}

  /// An option without a value, which sets `flag` to `value`.
  void Flag(const Names& names, bool& flag, bool value = true);
  /// An option without a value, which does what it is told.
  void Flag(const Names& names, std::function<void()> act);
  /// An option with a value.
  void Value(const Names& names, Take take);
  /// An option with any text; one that may not be empty if `needed` tells what it needs.
  void Text(const Names& names, std::string& text, const char* needed = nullptr);
  /// An option with the path of a picture, of a kind that CheckPicture knows.
  void Picture(const Names& names, std::string& path);
  /// An option with the character between the fields of a table, or the word `tab`.
  void Delimiter(const Names& names, char& delimiter);
  /// The one argument that may stand beside the options; `what` is what there is no second of.
  void Operand(std::string& operand, const char* what);
  /// All arguments beside the options, in their order. Without this and Operand there may be none.
  void Operands(Take take) { operands_ = std::move(take); }

  /// Reads the arguments, without the program's name; behind `--` stand no options. False if it
  /// meets
  /// `-h` or `--help`, where it stops.
  ///
  /// *Errors*: UsageError for an unknown option, a missing value, and whatever the takers refuse.
  [[nodiscard]] bool Read(const std::vector<std::string>& arguments) const;

 private:
  struct Option {
    std::vector<std::string> names;
    bool hasValue;
    std::function<void(const std::string& name, const std::string& value)> take;
  };

  const Option* Find(const std::string& name) const;

  std::string command_;
  std::vector<Option> options_;
  Take operands_;
};

/// *Errors*: UsageError if the path ends in none of .png, .svg and .pdf.
void CheckPicture(const std::string& path);

/// The number that all of the text is, if it lies from `low` to `high`.
template <class Number>
[[nodiscard]] std::optional<Number> NumberIn(const std::string& text, Number low, Number high) {
  Number value{};
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end || !(value >= low && value <= high)) return std::nullopt;
  return value;
}

}  // namespace vlm::examples
