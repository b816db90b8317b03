#include <velum/dates/detail/TextShape.h>

#include <velum/dates/detail/Characters.h>
#include <velum/dates/detail/ShapePatterns.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vlm::detail {
namespace {

// The characters of patterns; all others are the one at the end.
constexpr std::string_view kSymbols = "nx/-:. ,";
constexpr std::size_t kOther = kSymbols.size();
constexpr std::size_t kColumns = kOther + 1;

constexpr std::array<std::uint8_t, 256> kSymbolOf = [] {
  std::array<std::uint8_t, 256> symbols{};
  for (std::size_t i = 0; i < symbols.size(); ++i) {
    const auto c = static_cast<char>(i);
    const char shape = i < 128 && IsLetter(c) ? 'x' : IsDigit(c) ? 'n' : c;
    symbols[i] = static_cast<std::uint8_t>(std::min(kSymbols.find(shape), kOther));
  }
  return symbols;
}();

// UNREACHED_BEGIN: the compiler runs it; the table that it makes is what is tested.
constexpr std::size_t CountOfPrefixes() {
  std::size_t count = 0;
  for (const ShapePattern& row : kDatePatterns) count += row.pattern.size();
  for (const ShapePattern& row : kTimePatterns) count += row.pattern.size();
  return count;
}

// All patterns are looked for at once. A state is the longest piece of a pattern that the shape so
// far ends in, and knows the first row of each table that the shape ends in.
//
// Source: A. V. Aho and M. J. Corasick, "Efficient string matching", Communications of the ACM 18
// (1975).
template <std::size_t States>
struct Automaton {
  struct State {
    std::array<std::uint16_t, kColumns> next{};
    std::uint8_t dateRow = static_cast<std::uint8_t>(kDatePatterns.size());
    std::uint8_t timeRow = static_cast<std::uint8_t>(kTimePatterns.size());
  };

  std::array<State, States> states{};
  std::size_t size = 1;

  constexpr State& Insert(std::string_view pattern) {
    std::size_t at = 0;
    for (const char c : pattern) {
      std::uint16_t& next = states[at].next[kSymbols.find(c)];
      if (next == 0) next = static_cast<std::uint16_t>(size++);
      at = next;
    }
    return states[at];
  }

  constexpr void InsertAll() {
    for (std::size_t i = kDatePatterns.size(); i-- > 0;) {
      Insert(kDatePatterns[i].pattern).dateRow = static_cast<std::uint8_t>(i);
    }
    for (std::size_t i = kTimePatterns.size(); i-- > 0;) {
      Insert(kTimePatterns[i].pattern).timeRow = static_cast<std::uint8_t>(i);
    }
  }

  // Where a pattern does not go on, what is left of its end may begin another.
  constexpr void Close() {
    std::array<std::uint16_t, States> ends{};  // the state of a state's longest proper end
    std::array<std::uint16_t, States> order{};
    std::size_t known = 1;
    for (std::size_t done = 0; done < known; ++done) {
      const std::uint16_t at = order[done];
      for (std::size_t symbol = 0; symbol < kColumns; ++symbol) {
        const std::uint16_t elsewhere = at == 0 ? std::uint16_t{0} : states[ends[at]].next[symbol];
        std::uint16_t& next = states[at].next[symbol];
        if (next == 0) {
          next = elsewhere;
          continue;
        }
        ends[next] = elsewhere;
        states[next].dateRow = std::min(states[next].dateRow, states[elsewhere].dateRow);
        states[next].timeRow = std::min(states[next].timeRow, states[elsewhere].timeRow);
        order[known++] = next;
      }
    }
  }

  constexpr Automaton() {
    InsertAll();
    Close();
  }
};
// UNREACHED_END

constexpr std::size_t kStates = Automaton<CountOfPrefixes() + 1>().size;
constexpr Automaton<kStates> kAutomaton;

}  // namespace

TextForm FormOfText(const char* text) noexcept {
  std::size_t dateRow = kDatePatterns.size();
  std::size_t timeRow = kTimePatterns.size();
  std::size_t at = 0;
  for (; *text != '\0'; ++text) {
    if (IsBlank(*text) && IsBlank(text[1])) continue;
    at = kAutomaton.states[at].next[kSymbolOf[static_cast<unsigned char>(*text)]];
    dateRow = std::min<std::size_t>(dateRow, kAutomaton.states[at].dateRow);
    timeRow = std::min<std::size_t>(timeRow, kAutomaton.states[at].timeRow);
  }
  const int date = dateRow < kDatePatterns.size() ? kDatePatterns[dateRow].type : 0;
  const int time = timeRow < kTimePatterns.size() ? kTimePatterns[timeRow].type : 0;
  return {static_cast<KQDateTime::DATE_FORMAT_TYPE>(date),
          static_cast<KQDateTime::TIME_FORMAT_TYPE>(time)};
}

}  // namespace vlm::detail
