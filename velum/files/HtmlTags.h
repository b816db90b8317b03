#pragma once

/// \file
/// The tags that a report is made of, each a small value that writes itself to any stream.
///
///     out << vlm::Heading(2, "Wells") << vlm::TableBeg() << vlm::TRBeg();
///     out << vlm::TDBeg() << depth << vlm::TDEnd() << vlm::TREnd() << vlm::TableEnd();
///
/// Each tag ends with a line end, and nothing checks that they balance. Texts are written as they
/// stand: who has `<` or `&` in one writes `&lt;` or `&amp;`. A tag is written whatever the width,
/// the fill and the flags of the stream are.

#include <velum/core/Api.h>
#include <velum/files/HtmlAttributes.h>

#include <concepts>
#include <iosfwd>
#include <string>
#include <utility>

namespace vlm {

/// What stands before the page's body: the document type, the head with a style sheet. A value.
struct VELUM_API Preamble {
  /// A page with the title in its head, "Report" for an empty one, and lines at the end of its
  /// style sheet.
  explicit Preamble(std::string titleText = {}, std::string styleLines = {});

  std::string title;       ///< The page's title.
  std::string extraStyle;  ///< What is added to the style sheet.
};

/// Empty lines. A value.
struct VELUM_API VSpace {
  /// So many of them; fewer than 1 leave a line end in the file.
  explicit VSpace(int lineCount) noexcept : n(lineCount) {}

  int n;  ///< How many.
};

/// A picture: `IMG`. A value.
struct VELUM_API Img : ImageAttrib {
  /// A picture with its address, which replaces that among the attributes.
  explicit Img(std::string address, const ImageAttrib& attributes = {});
  /// The same with its size.
  Img(std::string address, std::string widthText, std::string heightText,
      const ImageAttrib& attributes = {});
  /// The same with the text in its place.
  Img(std::string address, std::string widthText, std::string heightText, std::string altText,
      const ImageAttrib& attributes);
  /// The same without other attributes. A template, so that `{}` as the last argument means those.
  template <std::convertible_to<std::string> Text>
  Img(std::string address, std::string widthText, std::string heightText, Text&& altText)
      : Img(std::move(address), std::move(widthText), std::move(heightText),
            std::string(std::forward<Text>(altText)), ImageAttrib()) {}
};

/// The present local time, in a line of 24 characters within `SPAN`. A value.
///
/// It is that of the moment of writing, in English: "Mon Nov 23 16:58:18 2026".
struct VELUM_API TimeStamp : CoreAttrib {
  /// A time without attributes.
  TimeStamp() = default;
  /// A time with attributes.
  explicit TimeStamp(const CoreAttrib& attributes);
};

/// A heading: `H1` to `H6`. A value.
struct VELUM_API Heading : CoreAttrib {
  /// A heading of a level with its text.
  Heading(int headingLevel, std::string headingText, const CoreAttrib& attributes = {});

  int level;         ///< 1 for the largest, to 6.
  std::string text;  ///< The text.
};

/// A link: `A`. A value.
struct VELUM_API Anchor : CoreAttrib {
  /// A link to an address with its text.
  Anchor(std::string address, std::string linkText, const CoreAttrib& attributes = {});

  std::string url;   ///< The address.
  std::string text;  ///< The text.
};

/// The beginning of a cell: `TD`. A value.
struct VELUM_API TDBeg : CellAttrib {
  /// A cell without attributes.
  TDBeg() = default;
  /// A cell over so many rows and columns; the two texts replace those among the attributes.
  explicit TDBeg(std::string rows, std::string columns = {}, const CellAttrib& attributes = {});
};

/// A paragraph: `P`. A value.
struct VELUM_API Paragraph : CoreAttrib {
  /// A text with attributes.
  explicit Paragraph(std::string contents, const CoreAttrib& attributes = {});

  std::string text;  ///< The text.
};

/// A text within a line: `SPAN`. A value.
struct VELUM_API Note : CoreAttrib {
  /// A text with attributes.
  explicit Note(std::string contents, const CoreAttrib& attributes = {});

  std::string text;  ///< The text.
};

/// The caption of a table, right behind its beginning: `CAPTION`. A value.
struct VELUM_API Caption : CoreAttrib {
  /// A text with attributes.
  explicit Caption(std::string contents, const CoreAttrib& attributes = {});

  std::string text;  ///< The text.
};

/// The beginning of a list of terms: `DL`. A value.
struct VELUM_API DLBeg : CoreAttrib {
  /// The tag alone.
  DLBeg() = default;
  /// The tag with attributes.
  explicit DLBeg(const CoreAttrib& attributes);
};

/// The beginning of a numbered list: `OL`. A value.
struct VELUM_API OLBeg : CoreAttrib {
  /// The tag alone.
  OLBeg() = default;
  /// The tag with attributes.
  explicit OLBeg(const CoreAttrib& attributes);
};

/// The beginning of a list: `UL`. A value.
struct VELUM_API ULBeg : CoreAttrib {
  /// The tag alone.
  ULBeg() = default;
  /// The tag with attributes.
  explicit ULBeg(const CoreAttrib& attributes);
};

/// The beginning of a list's item: `LI`. A value.
struct VELUM_API LIBeg : CoreAttrib {
  /// The tag alone.
  LIBeg() = default;
  /// The tag with attributes.
  explicit LIBeg(const CoreAttrib& attributes);
};

/// A column: `COL`. A value.
struct VELUM_API Col : ColAttrib {
  /// The tag alone.
  Col() = default;
  /// The tag with attributes.
  explicit Col(const ColAttrib& attributes);
};

/// A group of columns: `COLGROUP`. A value.
struct VELUM_API ColGroup : ColAttrib {
  /// The tag alone.
  ColGroup() = default;
  /// The tag with attributes.
  explicit ColGroup(const ColAttrib& attributes);
};

/// The beginning of a table: `TABLE`. A value.
struct VELUM_API TableBeg : TableAttrib {
  /// The tag alone.
  TableBeg() = default;
  /// The tag with attributes.
  explicit TableBeg(const TableAttrib& attributes);
};

/// The beginning of a table's body: `TBODY`. A value.
struct VELUM_API TBodyBeg : RowAttrib {
  /// The tag alone.
  TBodyBeg() = default;
  /// The tag with attributes.
  explicit TBodyBeg(const RowAttrib& attributes);
};

/// The beginning of a table's head: `THEAD`. A value.
struct VELUM_API THeadBeg : RowAttrib {
  /// The tag alone.
  THeadBeg() = default;
  /// The tag with attributes.
  explicit THeadBeg(const RowAttrib& attributes);
};

/// The beginning of a table's foot: `TFOOT`. A value.
struct VELUM_API TFootBeg : RowAttrib {
  /// The tag alone.
  TFootBeg() = default;
  /// The tag with attributes.
  explicit TFootBeg(const RowAttrib& attributes);
};

/// The beginning of a row: `TR`. A value.
struct VELUM_API TRBeg : RowAttrib {
  /// The tag alone.
  TRBeg() = default;
  /// The tag with attributes.
  explicit TRBeg(const RowAttrib& attributes);
};

/// A rule across the page: `HR`. A value.
struct VELUM_API HRule : CoreAttrib {
  /// The tag alone.
  HRule() = default;
  /// The tag with attributes.
  explicit HRule(const CoreAttrib& attributes);
};

/// The end of a list of terms: `DL`. A value.
struct VELUM_API DLEnd {};

/// The end of a numbered list: `OL`. A value.
struct VELUM_API OLEnd {};

/// The end of a list: `UL`. A value.
struct VELUM_API ULEnd {};

/// The end of a list's item: `LI`. A value.
struct VELUM_API LIEnd {};

/// The end of a table: `TABLE`. A value.
struct VELUM_API TableEnd {};

/// The end of a table's body: `TBODY`. A value.
struct VELUM_API TBodyEnd {};

/// The end of a table's head: `THEAD`. A value.
struct VELUM_API THeadEnd {};

/// The end of a table's foot: `TFOOT`. A value.
struct VELUM_API TFootEnd {};

/// The end of a row: `TR`. A value.
struct VELUM_API TREnd {};

/// The end of a cell: `TD`. A value.
struct VELUM_API TDEnd {};

/// Writes the document type of HTML 4.01 Transitional, the head, and the beginning of the body.
VELUM_API std::ostream& operator<<(std::ostream& out, const Preamble& tag);
/// Writes `BR` so many times, and one line end.
VELUM_API std::ostream& operator<<(std::ostream& out, const VSpace& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const HRule& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Img& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Paragraph& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Note& tag);
/// Writes the tag; the line ends behind the time, and again behind the tag's end.
VELUM_API std::ostream& operator<<(std::ostream& out, const TimeStamp& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Heading& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Anchor& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const DLBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const OLBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const ULBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const LIBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Col& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const ColGroup& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TableBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TBodyBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const THeadBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TFootBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TRBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const Caption& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TDBeg& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const DLEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const OLEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const ULEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const LIEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TableEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TBodyEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const THeadEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TFootEnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TREnd& tag);
/// Writes the tag.
VELUM_API std::ostream& operator<<(std::ostream& out, const TDEnd& tag);

}  // namespace vlm
