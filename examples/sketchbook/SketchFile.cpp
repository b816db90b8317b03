#include <examples/sketchbook/SketchFile.h>

#include <velum/files/Archive.h>
#include <examples/sketchbook/Refuse.h>
#include <examples/sketchbook/SafeFile.h>

namespace vlm::sketchbook {
namespace {

// One routine for both directions. The number of the format has a sum of its own, so that a file of
// another kind is found out before anything else is read of it.
void Transfer(Archive& archive, std::shared_ptr<Document>& document) {
  int format = kSketchFormat;
  archive.Transfer(format);
  archive.SyncCheck();
  if (format != kSketchFormat) {
    Refuse(GString("the sketch has the format ") + std::to_string(format) +
           ", which this program is too old to read");
  }
  archive.SetVersion(format);
  archive.TransferObject(document);
  archive.SyncCheck();
}

// The sums find what chance did to a stream, not what its writer did: the document is looked at
// too.
std::shared_ptr<Document> Read(Archive& archive) {
  std::shared_ptr<Document> document;
  Transfer(archive, document);
  const GString fault = document == nullptr ? "there is none" : document->Fault();
  if (!fault.empty()) {
    Refuse(GString("'") + archive.GetFilename() + "' holds no sound sketch: " + fault);
  }
  return document;
}

}  // namespace

std::string StoreSketch(const std::shared_ptr<Document>& document) {
  Archive archive;
  archive.OpenMem();
  std::shared_ptr<Document> stored = document;
  Transfer(archive, stored);
  return {reinterpret_cast<const char*>(archive.GetBuffer()), archive.GetSize()};
}

std::shared_ptr<Document> RestoreSketch(const std::string& stream) {
  Archive archive;
  archive.OpenMem(reinterpret_cast<const unsigned char*>(stream.data()),
                  static_cast<unsigned int>(stream.size()));
  return Read(archive);
}

void SaveSketch(const std::shared_ptr<Document>& document, const GString& path) {
  ReplaceFile(path, StoreSketch(document));
}

std::shared_ptr<Document> LoadSketch(const GString& path) {
  Archive archive(path, Archive::ModeLoad);
  return Read(archive);
}

}  // namespace vlm::sketchbook
