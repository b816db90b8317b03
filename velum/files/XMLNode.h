#pragma once

/// \file
/// An element of a small XML document, with all that stands in it.
///
///     const auto settings = scanner.ScanFile("settings.xml")->FindChild("settings", 0);
///     const auto title = settings->FindChild("title", 0);
///     if (title) puts(title->value.c_str());
///     for (const auto& child : settings->children) {
///       if (child->name == "column") Use(child->attributes["name"], child->value);
///     }

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vlm {

/// An element: its name, attributes, character data and child elements.
///
/// An object with identity that shared pointers hold. A parent owns its children; a child only
/// observes its parent. Texts are the bytes of the document. No operation recurses, so that the
/// depth of a tree is bounded by memory alone.
///
/// Threads: a tree belongs to one thread at a time.
class VELUM_API XMLNode {
 public:
  /// Copies all but the children themselves, which both nodes then have in common, and which go on
  /// observing their old parent.
  XMLNode(const XMLNode& other);
  /// Takes over what the copy constructor copies; children that nobody else holds are released.
  XMLNode& operator=(const XMLNode& other);
  /// Releases the children that nobody else holds.
  virtual ~XMLNode();

  /// Makes a node without a name and a parent.
  [[nodiscard]] static std::shared_ptr<XMLNode> Factory();
  /// Makes a node with a name and without a parent.
  [[nodiscard]] static std::shared_ptr<XMLNode> Factory(const std::string& nodeName);
  /// Makes a node without a name, as the last child of `enclosing`.
  ///
  /// *Errors*: `ERR_INTERNAL` for a null pointer. If memory ends nothing has changed.
  static std::shared_ptr<XMLNode> Factory(std::shared_ptr<XMLNode>& enclosing);

  /// Finds the child number `index`, counted from 0, among those whose name is `childName`; null if
  /// there are fewer.
  ///
  /// *Cost*: grows with the number of children; who wants all of a name walks `children`.
  [[nodiscard]] std::shared_ptr<XMLNode> FindChild(std::string childName, unsigned int index) const;

  /// Empties `children`, and releases those that nobody else holds.
  void Done() noexcept;

  std::string name;                                ///< The tag's name; empty for the root.
  std::map<GString, GString> attributes;           ///< The values by name.
  std::string value;                               ///< The text directly in this element, joined.
  std::vector<std::shared_ptr<XMLNode>> children;  ///< The child elements, in their order.
  std::weak_ptr<XMLNode> parent;                   ///< The enclosing node; empty for the root.

 private:
  struct [[gnu::visibility("hidden")]] Made;

  XMLNode();
  explicit XMLNode(const std::string& nodeName);
  explicit XMLNode(const std::shared_ptr<XMLNode>& enclosing);
};

}  // namespace vlm
