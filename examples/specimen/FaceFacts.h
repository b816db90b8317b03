#pragma once

/// \file
/// What the list of faces tells of each face, without opening it.
///
///     for (const auto& face : vlm::specimen::ListFaces()) std::puts(face.name.c_str());

#include <string>
#include <vector>

namespace vlm::specimen {

/// The index of the first symbol set that holds markers and no letters; all behind it do so, too.
inline constexpr unsigned int kFirstMarkerSet = 26;

/// What is known of a face. A plain value.
struct FaceFacts {
  unsigned int index = 0;  ///< in the list of faces
  std::string name;        ///< by which it is matched
  std::string family;
  bool isStroked = false;  ///< a symbol set
  bool isMarkers = false;  ///< a symbol set of markers
  int weight = 400;
  bool isItalic = false;
  int charset = 0;
  bool isFixed = false;  ///< whether all its glyphs are equally wide
  int familyBits = 0;    ///< 1 roman, 2 swiss, 3 modern, 4 script, 5 decorative, 0 unknown
};

/// The facts of a face by its index.
///
/// *Errors*: `ERR_INVALID_PARAMETER` for an index that is none.
[[nodiscard]] FaceFacts FactsOf(unsigned int index);

/// The facts of all faces, in the order of the list.
[[nodiscard]] std::vector<FaceFacts> ListFaces();

/// The name of a family's bits: "roman".
[[nodiscard]] const char* FamilyWord(int familyBits);

/// The index of the face of a name, in any case: the upright one nearest to normal weight if there
/// are several. A number that is no name is an index itself.
///
/// *Errors*: `std::runtime_error` with the nearest names if there is none.
[[nodiscard]] unsigned int FindFace(const std::string& name);

/// Which faces `SelectFaces` takes. A plain value; what is not set takes all.
struct FaceFilter {
  std::string text;  ///< a part of the name or of the family, in any case
  bool strokedOnly = false;
  bool outlineOnly = false;
  bool italicOnly = false;
  int weight = 0;
};

/// The faces that a filter takes, in the order of the list.
[[nodiscard]] std::vector<FaceFacts> SelectFaces(const FaceFilter& filter);

}  // namespace vlm::specimen
