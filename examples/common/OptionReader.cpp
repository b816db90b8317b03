#include <examples/common/OptionReader.h>

#include <examples/common/Picture.h>
#include <examples/common/Program.h>

#include <algorithm>

namespace vlm::examples {
namespace {

char DelimiterOf(const std::string& text) {
  if (text == "tab" || text == "\\t") return '\t';
  if (text.size() != 1) throw UsageError("a delimiter is one byte or tab, not '" + text + "'");
  if (text == "\"" || text == "\n" || text == "\r") {
    throw UsageError("a quote or a line end can't delimit fields");
  }
  return text[0];
}

}  // namespace

void OptionReader::Flag(const Names& names, bool& flag, bool value) {
  Flag(names, [&flag, value] { flag = value; });
}

void OptionReader::Flag(const Names& names, std::function<void()> act) {
  options_.push_back({{names.begin(), names.end()},
                      false,
                      [act = std::move(act)](const std::string&, const std::string&) { act(); }});
}

void OptionReader::Value(const Names& names, Take take) {
  options_.push_back(
      {{names.begin(), names.end()},
       true,
       [take = std::move(take)](const std::string&, const std::string& value) { take(value); }});
}

void OptionReader::Text(const Names& names, std::string& text, const char* needed) {
  options_.push_back({{names.begin(), names.end()},
                      true,
                      [&text, needed](const std::string& name, const std::string& value) {
                        if (needed && value.empty()) throw UsageError(name + " needs " + needed);
                        text = value;
                      }});
}

void OptionReader::Picture(const Names& names, std::string& path) {
  Value(names, [&path](const std::string& value) {
    CheckPicture(value);
    path = value;
  });
}

void OptionReader::Delimiter(const Names& names, char& delimiter) {
  Value(names, [&delimiter](const std::string& value) { delimiter = DelimiterOf(value); });
}

void OptionReader::Operand(std::string& operand, const char* what) {
  operands_ = [&operand, what](const std::string& word) {
    if (!operand.empty()) throw UsageError(std::string("more than one ") + what);
    operand = word;
  };
}

bool OptionReader::Read(const std::vector<std::string>& arguments) const {
  bool hasEnded = false;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& name = *argument;
    if (hasEnded || name.size() < 2 || name.front() != '-') {
      if (!operands_) throw UsageError("what is '" + name + "'");
      operands_(name);
    } else if (name == "--") {
      hasEnded = true;
    } else if (name == "-h" || name == "--help") {
      return false;
    } else if (const Option* const option = Find(name); !option) {
      throw UsageError("unknown option '" + name + "'" + (command_.empty() ? "" : " of ") +
                       command_);
    } else if (option->hasValue && argument + 1 == arguments.end()) {
      throw UsageError(name + " needs a value");
    } else {
      option->take(name, option->hasValue ? *++argument : name);
    }
  }
  return true;
}

const OptionReader::Option* OptionReader::Find(const std::string& name) const {
  for (const Option& option : options_) {
    if (std::find(option.names.begin(), option.names.end(), name) != option.names.end()) {
      return &option;
    }
  }
  return nullptr;
}

void CheckPicture(const std::string& path) {
  if (!PictureFormatOf(path)) {
    throw UsageError("'" + path + "' ends in none of .png, .svg and .pdf");
  }
}

}  // namespace vlm::examples
