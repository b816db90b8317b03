#pragma once

/// \file
/// Bounds the search for pairs of brackets that the Unicode Bidirectional Algorithm makes.
///
///     vlm::platform::BracketLimit limit;
///     for (char16_t& unit : units) unit = limit.Pass(unit);

#include <array>
#include <cstddef>
#include <vector>

namespace vlm::platform {

/// Takes the brackets out of a text from where there are too many open ones to look for pairs.
///
/// The algorithm gives up pairs for the rest of a sequence when its stack of 63 brackets is full
/// (Unicode Standard Annex 9, BD16). So does this, and also where one bracket stays open for a
/// thousand others, and for the rest of a paragraph where directions are nested more than 60
/// deep.
class BracketLimit {
 public:
  /// The next unit of the text as it is, or a neutral character in place of a bracket.
  [[nodiscard]] char16_t Pass(char16_t unit);

 private:
  /// What stands between the ends of an isolate, or outside of all.
  struct Sequence {
    std::array<char16_t, 63> closers;  ///< Those of the open brackets.
    std::size_t open = 0;
    std::size_t count = 0;  ///< How many brackets were opened since none was open.
    std::size_t embeddings = 0;
    bool isFull = false;
  };

  void Nest();
  [[nodiscard]] bool Admits(char16_t bracket, bool isOpening);

  std::vector<Sequence> sequences_{1};
  std::size_t depth_ = 0;
  bool isTooDeep_ = false;
};

}  // namespace vlm::platform
