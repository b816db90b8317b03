#pragma once

/// \file
/// Sketches as bytes and as files.
///
///     vlm::sketchbook::SaveSketch(*sketch, "bench.sketch");
///     std::shared_ptr<vlm::sketchbook::Document> again =
///         vlm::sketchbook::LoadSketch("bench.sketch");

#include <velum/core/GString.h>
#include <examples/sketchbook/Document.h>

#include <memory>
#include <string>

namespace vlm::sketchbook {

/// The format of the stream, its first number.
inline constexpr int kSketchFormat = 1;

/// The stream of a document; equal documents have equal streams.
[[nodiscard]] std::string StoreSketch(const std::shared_ptr<Document>& document);

/// The document of a stream, checked; errors as those of LoadSketch.
[[nodiscard]] std::shared_ptr<Document> RestoreSketch(const std::string& stream);

/// Writes a document so that a crash in the middle leaves the old file or the new one.
///
/// *Errors*: `Exception`; the old file is then still there.
void SaveSketch(const std::shared_ptr<Document>& document, const GString& path);

/// Reads a document and checks all of it.
///
/// *Errors*: `Exception` of the archive for a file that can't be read or is damaged; of the module
/// "Sketchbook" for one that was written by a newer program, or whose contents make no sketch.
[[nodiscard]] std::shared_ptr<Document> LoadSketch(const GString& path);

}  // namespace vlm::sketchbook
