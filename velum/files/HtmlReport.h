#pragma once

/// \file
/// A page of HTML 4.01, written as a stream.
///
///     vlm::CHtmlReport report;
///     report << vlm::Preamble("Wells") << vlm::Heading(1, "Depths")
///            << vlm::Paragraph("The deepest has 412 m.");
///     report.WriteToFile("wells.html");

#include <velum/core/Api.h>
#include <velum/files/HtmlTags.h>  // IWYU pragma: export

#include <sstream>
#include <string>

namespace vlm {

/// A stream of text that becomes a page: the tags of HtmlTags.h go into it, and whatever else a
/// stream takes. Numbers have 14 significant digits, and the decimal point of the classic locale,
/// whatever the global one is; the caller may `imbue` another.
///
/// An object with identity, which can be moved. The page's head says that its bytes are iso-8859-1;
/// they are those that the caller writes, so that who has UTF-8 writes other characters as
/// entities, `&#955;` say.
///
/// Threads: a report belongs to one thread at a time.
class VELUM_API CHtmlReport : public std::ostringstream {
 public:
  /// An empty report.
  CHtmlReport();
  CHtmlReport(const CHtmlReport&) = delete;
  CHtmlReport& operator=(const CHtmlReport&) = delete;
  /// Takes the text and the format from `other`, which is empty then.
  CHtmlReport(CHtmlReport&& other);
  /// Takes the text and the format from `other`.
  CHtmlReport& operator=(CHtmlReport&& other);
  ~CHtmlReport() override;

  /// The text so far, with the ends of the body and the page behind it, which the report itself
  /// does not get.
  [[nodiscard]] std::string GetReport() const;
  /// Writes what `GetReport` gives and a line end to the file at `path`, in place of what it held.
  ///
  /// - Others see the old page or the new one, never a part: the new one is written into a file
  ///   `.NAME.velum-lock` beside `NAME`, which takes its place. Who writes to the same path at the
  ///   same time, from another process too, waits for that.
  /// - What can't be replaced so is emptied and written: a file of several names (hard links), a
  ///   pipe or a device, a file in a folder that takes no new one, another user's file in a sticky
  ///   folder.
  /// - The file can't be opened or written: nothing is said.
  void WriteToFile(const std::string& path) const;
};

}  // namespace vlm
