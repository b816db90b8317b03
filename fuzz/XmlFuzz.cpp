// Takes any bytes for an XML document and holds the tree, or the fault, against those of a plain
// transcription of the states.
#include <velum/core/Exception.h>
#include <velum/files/XMLScanner.h>
#include <velum/files/test/reference/PlainXmlReader.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

using vlm::test::FlatDocument;
using vlm::test::FlatElement;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

// A file in memory under a path that can be opened.
class MemoryPath {
 public:
  MemoryPath() : file_(memfd_create("XmlFuzz", MFD_CLOEXEC)) {
    Require(file_ >= 0, "there is a file in memory");
  }
  std::string Filled(const void* data, std::size_t size) const {
    Require(ftruncate(file_, 0) == 0, "the file is emptied");
    Require(pwrite(file_, data, size, 0) == static_cast<ssize_t>(size), "the file is filled");
    return "/proc/self/fd/" + std::to_string(file_);
  }

 private:
  int file_;
};

std::vector<FlatElement> Flat(const vlm::XMLNode& root) {
  std::vector<FlatElement> elements;
  std::vector<std::pair<const vlm::XMLNode*, std::size_t>> left = {{&root, 0}};
  while (!left.empty()) {
    const auto [node, parent] = left.back();
    left.pop_back();
    const std::size_t place = elements.size();
    elements.push_back(
        {parent, node->name, {node->attributes.begin(), node->attributes.end()}, node->value});
    for (auto child = node->children.rbegin(); child != node->children.rend(); ++child) {
      Require((*child)->parent.lock().get() == node, "a child knows its parent");
      left.emplace_back(child->get(), place);
    }
  }
  return elements;
}

// Gives the root also after a fault.
class Scanner : public vlm::XMLScanner {
 public:
  using XMLScanner::GetRoot;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryPath memory;
  const std::string path = memory.Filled(data, size);
  const FlatDocument plain = vlm::test::ReadPlainly({reinterpret_cast<const char*>(data), size});
  Scanner scanner;
  std::string fault;
  for (int i = 0; i < 2; ++i) {
    fault.clear();
    try {
      scanner.ScanFile(path);
    } catch (const vlm::Exception& error) {
      Require(error.GetErrCode() == vlm::ERR_PARSE, "a fault is one of parsing");
      fault = error.GetDescription();
    }
    Require(Flat(*scanner.GetRoot()) == plain.elements, "the elements are the same");
    Require(fault.empty() == plain.fault.empty(), "both find a fault or none");
    if (!fault.empty()) {
      const std::size_t colon = plain.fault.find(": ");
      const std::string end =
          ", line " + plain.fault.substr(0, colon) + ":\n" + plain.fault.substr(colon + 2);
      Require(fault.ends_with(end), "the faults are the same");
    }
    // The second scan begins afresh, whatever the first has left.
    scanner.Close();
    scanner.GetRoot()->value.clear();
  }
  return 0;
}
