#pragma once

/// \file
/// What a description of a face matches, and why: the score of each term.
///
///     vlm::specimen::Description description;
///     description.name = "Arial";
///     vlm::specimen::PrintMatch(std::cout, description, 5);

#include <examples/specimen/FaceFacts.h>

#include <array>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::specimen {

/// A description, as `CSystemFaceInfo::Match` takes it. A plain value.
struct Description {
  std::string name;
  long weight = 400;
  bool isItalic = false;
  int charset = 0;
  int pitchAndFamily = 0;
  int matchFlags = 1;      ///< what is compared, a sum of `FaceMatchFlags`
  unsigned int types = 3;  ///< which faces take part, bits of `CFaceInfo::FaceType`
};

/// A term of the score.
struct Term {
  const char* word;
  int flag;  ///< of `FaceMatchFlags`
  int full;  ///< what it gives if it is met, and if it is not compared
};

/// The terms in the order in which they are shown.
inline constexpr std::array<Term, 6> kTerms = {{{"name", 1, 300},
                                                {"weight", 2, 100},
                                                {"italic", 4, 100},
                                                {"charset", 8, 400},
                                                {"pitch", 16, 300},
                                                {"family", 32, 300}}};

/// A face with what it scores. A plain value.
struct Score {
  FaceFacts face;
  std::array<int, kTerms.size()> terms{};  ///< as `kTerms` has them
  int total = 0;
  bool isDefault = false;  ///< one of the two default faces, which come first among equals
};

/// Scores all faces of the accepted types by the rules of matching. The best comes first, the
/// others behind it by their totals and then by their places in the list.
[[nodiscard]] std::vector<Score> ScoreFaces(const Description& description);

/// Prints the answer of `CSystemFaceInfo::Match` and the scores of the best `count` faces.
void PrintMatch(std::ostream& out, const Description& description, std::size_t count);

}  // namespace vlm::specimen
