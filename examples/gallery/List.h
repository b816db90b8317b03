#pragma once

/// \file
/// The list of what the gallery shows, a small XML file. An example is the program of its name; the
/// page shows them in the list's order.
///
///     <gallery title="Gallery">
///       <intro>What the library draws.</intro>
///       <example name="overlay" title="Coastlines combined">
///         <story>Two outlines, and all that can be made of them.</story>
///         <command>overlay --output overlay.png {examples}/data/outlines.txt</command>
///         <picture file="overlay.png" about="Six maps"/>
///         <also file="overlay.svg">as SVG</also>
///       </example>
///     </gallery>
///
/// A command is one line or more for the shell, run in the gallery's folder; `{examples}` is the
/// path from there to the folder of the examples.

#include <string>
#include <vector>

namespace vlm::gallery {

/// A file that a command makes in the gallery's folder. A plain value.
struct MadeFile {
  std::string name;  ///< beside the page
  std::string text;  ///< of a picture, what it shows; of another file, the text of its link
};

/// One example. A plain value.
struct Example {
  std::string name;                ///< of its program, its folder, and the texts that are kept
  std::string title;               ///< its heading
  std::string story;               ///< a paragraph
  std::string command;             ///< lines for the shell, with `{examples}`
  std::vector<MadeFile> pictures;  ///< one at least
  std::vector<MadeFile> also;      ///< further files
};

/// The whole list. A plain value.
struct List {
  std::string title;              ///< of the page
  std::string intro;              ///< a paragraph
  std::vector<Example> examples;  ///< one at least
};

/// Reads a list.
///
/// *Errors*: `Exception` for a file that can't be read and for what is no XML; `std::runtime_error`
/// with the file's name for what is no list, and for names that would lead out of the gallery's
/// folder.
[[nodiscard]] List ReadList(const std::string& path);

}  // namespace vlm::gallery
