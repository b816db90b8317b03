#pragma once

/// \file
/// The measures of an OpenType face, read from a few tables of its file.
///
///     vlm::OUTLINETEXTMETRICA record;
///     std::string problem;
///     const auto result = vlm::platform::ReadFontTables(file, 0, record, problem);
///
/// A list of thousands of faces takes these from each of them, so that no font library is asked:
/// opening a face there costs ten times as much.

#include <velum/platform/Types.h>

#include <string>
#include <string_view>

namespace vlm::platform {

/// How reading a font went.
enum class FontTables {
  kGood,     ///< The record is filled.
  kAbsent,   ///< No OpenType file, or one without the usual tables: it is for FreeType.
  kDamaged,  ///< A file that is cut, or tables that make no sense.
};

/// Reads the measures of the face at `index`, as `FontEntry` has it, without names and codes.
/// Whether the face is one of symbols is not told: `tmCharSet` is what its code pages say.
///
/// The record is in design units, as that of a face whose em square has the size `otmEMSquare`.
/// After `kDamaged` `problem` says why; the record has no meaning then.
FontTables ReadFontTables(const std::string& file, unsigned int index, OUTLINETEXTMETRICA& record,
                          std::string& problem);

/// The beginnings of the tables that measures come from; what a font lacks is empty. 96 bytes of
/// each are enough.
struct MeasureTables {
  std::string_view head;
  std::string_view hhea;
  std::string_view os2;
  std::string_view post;
  bool isTrueType = false;  ///< The outlines are in a table "glyf".
};

/// Sets what the tables tell of a face. What a table that is missing or short would tell stays in
/// the record; so does the height of the cell without OS/2.
void FillFromTables(const MeasureTables& tables, OUTLINETEXTMETRICA& record);

/// What must hold of a record before anyone divides by its numbers; null, or what is wrong.
[[nodiscard]] const char* RecordProblem(const OUTLINETEXTMETRICA& record) noexcept;

}  // namespace vlm::platform
