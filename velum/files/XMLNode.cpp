#include <velum/files/XMLNode.h>

#include <velum/core/Exception.h>

#include <utility>

namespace vlm {

// Lets std::make_shared reach the constructors.
struct XMLNode::Made final : XMLNode {
  Made() = default;
  explicit Made(const std::string& nodeName) : XMLNode(nodeName) {}
  explicit Made(const std::shared_ptr<XMLNode>& enclosing) : XMLNode(enclosing) {}
};

XMLNode::XMLNode() = default;

XMLNode::XMLNode(const std::string& nodeName) : name(nodeName) {}

XMLNode::XMLNode(const std::shared_ptr<XMLNode>& enclosing) : parent(enclosing) {}

XMLNode::XMLNode(const XMLNode& other) = default;

XMLNode& XMLNode::operator=(const XMLNode& other) {
  // The other may be one of the children that go.
  XMLNode copy(other);
  name.swap(copy.name);
  attributes.swap(copy.attributes);
  value.swap(copy.value);
  children.swap(copy.children);
  parent.swap(copy.parent);
  return *this;
}

XMLNode::~XMLNode() { Done(); }

std::shared_ptr<XMLNode> XMLNode::Factory() { return std::make_shared<Made>(); }

std::shared_ptr<XMLNode> XMLNode::Factory(const std::string& nodeName) {
  return std::make_shared<Made>(nodeName);
}

std::shared_ptr<XMLNode> XMLNode::Factory(std::shared_ptr<XMLNode>& enclosing) {
  if (!enclosing) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  std::shared_ptr<XMLNode> node = std::make_shared<Made>(enclosing);
  enclosing->children.push_back(node);
  return node;
}

std::shared_ptr<XMLNode> XMLNode::FindChild(std::string childName, unsigned int index) const {
  for (const std::shared_ptr<XMLNode>& child : children) {
    if (child && child->name == childName && index-- == 0) return child;
  }
  return nullptr;
}

void XMLNode::Done() noexcept {
  // Walks down the last child that is held here alone and releases on the way back. What is left to
  // do above is kept in that child's own list, and the way up in the place that the child had
  // there: so the walk needs neither recursion nor memory.
  std::vector<std::shared_ptr<XMLNode>> left;
  left.swap(children);
  std::shared_ptr<XMLNode> above;
  while (true) {
    if (left.empty()) {
      if (!above) return;
      left.swap(above->children);
      above = std::move(left.back());
      left.pop_back();
      continue;
    }
    std::shared_ptr<XMLNode> last = std::move(left.back());
    if (!last || last.use_count() > 1 || last->children.empty()) {
      left.pop_back();
      continue;
    }
    left.swap(last->children);
    last->children.back() = std::move(above);
    above = std::move(last);
  }
}

}  // namespace vlm
