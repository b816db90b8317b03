#include <examples/gallery/List.h>

#include <velum/files/XMLScanner.h>
#include <examples/common/XmlParts.h>

#include <memory>
#include <sstream>
#include <stdexcept>

namespace vlm::gallery {
namespace {

using examples::PlainText;
using examples::TakeAttributes;

// The words with one blank between them.
std::string Paragraph(const std::string& text) {
  std::istringstream words(PlainText(text));
  std::string out;
  for (std::string word; words >> word;) out += (out.empty() ? "" : " ") + word;
  return out;
}

// The lines without empty ones and what indents them, but for those that continue another.
std::string Lines(const std::string& text) {
  std::istringstream lines(PlainText(text));
  std::string out;
  for (std::string line; std::getline(lines >> std::ws, line);) {
    if (!out.empty()) out += out.ends_with('\\') ? "\n  " : "\n";
    out += line;
  }
  return out;
}

std::string NeededText(const std::string& text, const std::string& whose) {
  if (text.empty()) throw std::runtime_error(whose + " is empty");
  return text;
}

// A name that needs no quotes in the shell or an address, and stays in its folder.
std::string PlainName(const std::string& text) {
  constexpr char kAllowed[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.";
  if (text.empty() || text.front() == '.' || text.front() == '-' ||
      text.find_first_not_of(kAllowed) != std::string::npos) {
    throw std::runtime_error("a name consists of letters, digits, - _ and ., unlike '" + text +
                             "'");
  }
  return text;
}

MadeFile PictureOf(const XMLNode& node) {
  MadeFile picture;
  TakeAttributes(node, {{"file", [&](const auto& text) { picture.name = PlainName(text); }},
                        {"about", [&](const auto& text) { picture.text = text; }}});
  NeededText(picture.name, "the name of a picture");
  NeededText(picture.text, "what '" + picture.name + "' is about");
  return picture;
}

MadeFile FileOf(const XMLNode& node) {
  MadeFile file;
  TakeAttributes(node, {{"file", [&](const auto& text) { file.name = PlainName(text); }}});
  NeededText(file.name, "the name of a file");
  file.text = NeededText(Paragraph(node.value), "the text of '" + file.name + "'");
  return file;
}

Example ExampleOf(const XMLNode& node) {
  Example example;
  TakeAttributes(node, {{"name", [&](const auto& text) { example.name = PlainName(text); }},
                        {"title", [&](const auto& text) { example.title = text; }}});
  NeededText(example.name, "the name of an example");
  for (const auto& child : node.children) {
    if (child->name == "story") {
      example.story = Paragraph(child->value);
    } else if (child->name == "command") {
      example.command = Lines(child->value);
    } else if (child->name == "picture") {
      example.pictures.push_back(PictureOf(*child));
    } else if (child->name == "also") {
      example.also.push_back(FileOf(*child));
    } else {
      throw std::runtime_error("what is <" + child->name + "> of " + example.name + "?");
    }
  }
  NeededText(example.title, "the title of " + example.name);
  NeededText(example.story, "the story of " + example.name);
  NeededText(example.command, "the command of " + example.name);
  if (example.pictures.empty()) throw std::runtime_error(example.name + " has no picture");
  return example;
}

List ListOf(const XMLNode& root) {
  const auto gallery = root.FindChild("gallery", 0);
  if (!gallery) throw std::runtime_error("there is no element <gallery>");
  List list;
  TakeAttributes(*gallery, {{"title", [&](const auto& text) { list.title = text; }}});
  for (const auto& child : gallery->children) {
    if (child->name == "intro") {
      list.intro = Paragraph(child->value);
    } else if (child->name == "example") {
      list.examples.push_back(ExampleOf(*child));
    } else {
      throw std::runtime_error("what is <" + child->name + ">?");
    }
  }
  NeededText(list.title, "the title");
  if (list.examples.empty()) throw std::runtime_error("there is no example");
  return list;
}

}  // namespace

List ReadList(const std::string& path) {
  XMLScanner scanner;
  const auto root = scanner.ScanFile(path);
  try {
    return ListOf(*root);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

}  // namespace vlm::gallery
