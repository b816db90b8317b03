// Loads any bytes as a stored document of objects with cycles and shared parts. Damage must be one
// of the errors that the archive documents; what loads must come back from its own stored form.
#include <velum/core/Exception.h>
#include <velum/files/Archive.h>
#include <velum/files/test/ArchiveNodes.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using vlm::Archive;
using vlm::test::Node;
using vlm::test::Nodes;
using Bytes = std::vector<unsigned char>;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

// The values that a document begins with, of each kind that nodes do not have.
struct Document {
  bool flag = false;
  long number = 0;
  std::string text;
  char limited[8] = "";
  wchar_t wide[4] = L"";
  Node* first = nullptr;
  std::shared_ptr<Node> shared;

  void Transfer(Archive& archive) {
    archive.Transfer(flag);
    archive.Transfer(number);
    archive.Transfer(text);
    archive.Transfer(limited, sizeof(limited));
    archive.Transfer(wide, 4u);
    archive.SyncCheck();
    archive.TransferObject(first);
    archive.TransferObject(shared);
  }
};

bool Load(const std::uint8_t* data, std::size_t size, Document& document) {
  Archive archive;
  archive.OpenMem(data, static_cast<unsigned int>(size));
  try {
    document.Transfer(archive);
    return true;
  } catch (const vlm::Exception& error) {
    const int code = error.GetErrCode();
    Require(code == vlm::ERR_READ || code == vlm::ERR_DAMAGED_FILE ||
                code == vlm::ERR_CREATE_OBJECT || code == vlm::ERR_CUSTOM,
            "the error is a documented one");
    return false;
  }
}

Bytes Store(Document& document) {
  Archive archive;
  archive.OpenMem();
  document.Transfer(archive);
  return Bytes(archive.GetBuffer(), archive.GetBuffer() + archive.GetSize());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Nodes nodes;
  Document document;
  if (!Load(data, size, document)) return 0;
  const Bytes stored = Store(document);
  Document again;
  Require(Load(stored.data(), stored.size(), again), "what was stored loads");
  Require(Store(again) == stored, "and is the same");
  return 0;
}
