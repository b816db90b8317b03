#pragma once

/// \file
/// The attributes of the tags that a report is made of.
///
///     vlm::TableAttrib attributes;
///     attributes.border = "1";
///     attributes.summary = "Depths of the wells";
///     report << vlm::TableBeg(attributes);
///
/// A field that is empty writes nothing. Texts are written as they stand: who has a quote in one
/// writes `&quot;`.

#include <velum/core/Api.h>

#include <iosfwd>
#include <string>

namespace vlm {

/// Attributes of every element. A value.
struct VELUM_API CoreAttrib {
  /// All fields are empty.
  CoreAttrib() = default;
  /// Takes the fields in their order.
  CoreAttrib(std::string idText, std::string classText, std::string styleText,
             std::string titleText);
  /// Empties all fields.
  void clear() noexcept;

  std::string id;      ///< `ID`: the element's name.
  std::string class_;  ///< `CLASS`: classes of the style sheet.
  std::string style;   ///< `STYLE`: a style of its own.
  std::string title;   ///< `TITLE`: what is shown at the pointer.
};

/// Attributes of pictures. A value.
struct VELUM_API ImageAttrib : CoreAttrib {
  /// All fields are empty.
  ImageAttrib() = default;
  /// Takes the fields in their order, those of the base first.
  ImageAttrib(std::string idText, std::string classText, std::string styleText,
              std::string titleText, std::string srcText, std::string altText,
              std::string longdescText, std::string widthText, std::string heightText,
              std::string usemapText, std::string ismapText);
  /// Empties all fields.
  void clear() noexcept;

  std::string src;       ///< `SRC`: the picture's address.
  std::string alt;       ///< `ALT`: the text in place of the picture.
  std::string longdesc;  ///< `LONGDESC`: the address of a longer text.
  std::string width;     ///< `WIDTH`: in pixels, or per cent.
  std::string height;    ///< `HEIGHT`: in pixels, or per cent.
  std::string usemap;    ///< `USEMAP`: the name of a map of links.
  std::string ismap;     ///< `ISMAP`: whether the server has the map.
};

/// Attributes of rows and of groups of rows. A value.
struct VELUM_API RowAttrib : CoreAttrib {
  /// All fields are empty.
  RowAttrib() = default;
  /// Takes the fields in their order, those of the base first.
  RowAttrib(std::string idText, std::string classText, std::string styleText, std::string titleText,
            std::string alignText, std::string charText, std::string charoffText,
            std::string valignText);
  /// Empties all fields.
  void clear() noexcept;

  std::string align;    ///< `ALIGN`: left, center, right, justify or char.
  std::string char_;    ///< `CHAR`: the character to align at.
  std::string charoff;  ///< `CHAROFF`: how far in that character stands.
  std::string valign;   ///< `VALIGN`: top, middle, bottom or baseline.
};

/// Attributes of columns. A value.
struct VELUM_API ColAttrib : RowAttrib {
  /// All fields are empty.
  ColAttrib() = default;
  /// Takes the fields in their order, those of the base first.
  ColAttrib(std::string idText, std::string classText, std::string styleText, std::string titleText,
            std::string alignText, std::string charText, std::string charoffText,
            std::string valignText, std::string spanText, std::string widthText);
  /// Empties all fields.
  void clear() noexcept;

  std::string span;   ///< `SPAN`: how many columns.
  std::string width;  ///< `WIDTH`: in pixels, per cent or shares.
};

/// Attributes of cells. A value.
struct VELUM_API CellAttrib : RowAttrib {
  /// All fields are empty.
  CellAttrib() = default;
  /// Takes the fields in their order, those of the base first.
  CellAttrib(std::string idText, std::string classText, std::string styleText,
             std::string titleText, std::string alignText, std::string charText,
             std::string charoffText, std::string valignText, std::string rowspanText,
             std::string colspanText, std::string headersText, std::string abbrText,
             std::string scopeText, std::string axisText);
  /// Empties all fields.
  void clear() noexcept;

  std::string rowspan;  ///< `ROWSPAN`: how many rows.
  std::string colspan;  ///< `COLSPAN`: how many columns.
  std::string headers;  ///< `HEADERS`: the names of the cell's headings.
  std::string abbr;     ///< `ABBR`: a shorter text.
  std::string scope;    ///< `SCOPE`: what a heading is for.
  std::string axis;     ///< `AXIS`: categories.
};

/// Attributes of tables. A value.
struct VELUM_API TableAttrib : CoreAttrib {
  /// All fields are empty.
  TableAttrib() = default;
  /// Takes the fields in their order, those of the base first.
  TableAttrib(std::string idText, std::string classText, std::string styleText,
              std::string titleText, std::string summaryText, std::string widthText,
              std::string borderText, std::string frameText, std::string rulesText,
              std::string cellspacingText, std::string cellpaddingText);
  /// Empties all fields.
  void clear() noexcept;

  std::string summary;      ///< `SUMMARY`: what the table is for.
  std::string width;        ///< `WIDTH`: in pixels, or per cent.
  std::string border;       ///< `BORDER`: of the frame, in pixels.
  std::string frame;        ///< `FRAME`: which sides of the frame.
  std::string rules;        ///< `RULES`: which lines between cells.
  std::string cellspacing;  ///< `CELLSPACING`: between cells.
  std::string cellpadding;  ///< `CELLPADDING`: around a cell's text.
};

/// Writes each field that is not empty, in their order: a blank, the name, an equals sign and the
/// text in double quotes.
VELUM_API std::ostream& operator<<(std::ostream& out, const CoreAttrib& attributes);
/// Writes the base's fields and then its own.
VELUM_API std::ostream& operator<<(std::ostream& out, const ImageAttrib& attributes);
/// Writes the base's fields and then its own.
VELUM_API std::ostream& operator<<(std::ostream& out, const RowAttrib& attributes);
/// Writes the base's fields and then its own.
VELUM_API std::ostream& operator<<(std::ostream& out, const ColAttrib& attributes);
/// Writes the base's fields and then its own.
VELUM_API std::ostream& operator<<(std::ostream& out, const CellAttrib& attributes);
/// Writes the base's fields and then its own.
VELUM_API std::ostream& operator<<(std::ostream& out, const TableAttrib& attributes);

}  // namespace vlm
