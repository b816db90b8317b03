#include <examples/specimen/MatchReport.h>

#include <velum/core/StringCompare.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <ostream>

namespace vlm::specimen {
namespace {

constexpr std::size_t kLongestFaceName = 31;
constexpr int kFullScore = 1500;

// Bit 0 of a record of measures is set for a variable pitch in outline faces, for a fixed one in
// stroked faces, and it is compared as it is.
int PitchBit(const FaceFacts& face) { return face.isFixed == face.isStroked ? 1 : 0; }

int ScoreOf(const Term& term, const FaceFacts& face, const Description& description) {
  if ((description.matchFlags & term.flag) == 0) return term.full;
  bool isMet = false;
  switch (term.flag) {
    case FACE_MATCH_NAME:
      isMet = StringEquivalent()(face.name, description.name.substr(0, kLongestFaceName));
      break;
    case FACE_MATCH_WEIGHT:
      return 10 *
             (10 -
              std::min(std::abs(static_cast<int>(face.weight - description.weight)), 1000) / 100);
    case FACE_MATCH_ITALIC:
      isMet = face.isItalic == description.isItalic;
      break;
    case FACE_MATCH_CHARSET:
      isMet = face.charset == description.charset;
      break;
    case FACE_MATCH_PITCH:
      isMet = PitchBit(face) == (description.pitchAndFamily & 1);
      break;
    default:
      isMet = face.familyBits == description.pitchAndFamily >> 4;
      break;
  }
  return isMet ? term.full : 0;
}

// Where the best score stands: among equals the first, but a default face comes before all others.
// A full score of the exact name comes before one of the name in another case.
std::vector<Score>::iterator BestOf(std::vector<Score>& scores, const Description& description) {
  auto best = scores.begin();
  for (auto score = scores.begin(); score != scores.end(); ++score) {
    if ((description.matchFlags & FACE_MATCH_NAME) != 0 && score->total == kFullScore &&
        score->face.name == description.name) {
      return score;
    }
  }
  for (auto score = scores.begin(); score != scores.end(); ++score) {
    if (best->total == kFullScore) break;
    if (score->total > best->total || (score->total == best->total && score->isDefault)) {
      best = score;
    }
  }
  return best;
}

void PrintFace(std::ostream& out, const FaceFacts& face) {
  out << face.index << " " << face.name << " (weight " << face.weight
      << (face.isItalic ? ", italic" : "") << ", " << (face.isStroked ? "stroked" : "outline")
      << ")";
}

}  // namespace

std::vector<Score> ScoreFaces(const Description& description) {
  const auto& faces = CSystemFaceInfo::GetInstance();
  const auto variable = faces.GetDefVariablePitchFaceInfo();
  const auto fixed = faces.GetDefFixedPitchFaceInfo();
  std::vector<Score> scores;
  for (const FaceFacts& face : ListFaces()) {
    const unsigned int type = face.isStroked ? 2 : 1;
    if ((description.types & type) == 0) continue;
    Score score;
    score.face = face;
    for (std::size_t i = 0; i < kTerms.size(); ++i) {
      score.terms[i] = ScoreOf(kTerms[i], face, description);
      score.total += score.terms[i];
    }
    const auto info = faces.GetFaceInfo(face.index);
    score.isDefault = info == variable || info == fixed;
    scores.push_back(score);
  }
  if (scores.empty()) return scores;
  const auto best = BestOf(scores, description);
  std::rotate(scores.begin(), best, best + 1);
  std::stable_sort(scores.begin() + 1, scores.end(),
                   [](const Score& a, const Score& b) { return a.total > b.total; });
  return scores;
}

void PrintMatch(std::ostream& out, const Description& description, std::size_t count) {
  auto& faces = CSystemFaceInfo::GetInstance();
  const int index = faces.Match(description.name, description.weight, description.isItalic ? 1 : 0,
                                static_cast<unsigned char>(description.charset),
                                static_cast<unsigned char>(description.pitchAndFamily),
                                description.matchFlags, description.types);
  const std::vector<Score> scores = ScoreFaces(description);
  if (index < 0 || scores.empty()) {
    out << "No face is of an accepted type.\n";
    return;
  }
  out << "Match gives ";
  PrintFace(out, FactsOf(static_cast<unsigned int>(index)));
  out << ".\n\n index  face                            ";
  for (const Term& term : kTerms) out << " " << std::setw(7) << term.word;
  out << "   total\n";
  for (std::size_t i = 0; i < std::min(count, scores.size()); ++i) {
    const Score& score = scores[i];
    std::string name = score.face.name;
    if (score.face.weight != 400) name += " " + std::to_string(score.face.weight);
    if (score.face.isItalic) name += " italic";
    if (score.isDefault) name += " *";
    out << std::setw(6) << score.face.index << "  " << std::left << std::setw(32) << name
        << std::right;
    for (std::size_t term = 0; term < kTerms.size(); ++term) {
      if ((description.matchFlags & kTerms[term].flag) == 0) {
        out << " " << std::setw(7) << "-";
      } else {
        out << " " << std::setw(7) << score.terms[term];
      }
    }
    out << " " << std::setw(7) << score.total << "\n";
  }
  if (scores.size() > count) out << "and " << scores.size() - count << " more\n";
  out << "\nA term that is not compared (-) counts in full:";
  for (const Term& term : kTerms) out << " " << term.word << " " << term.full;
  out << ".\nAmong equal totals a default face (*) comes first, then the list's order.\n";
}

}  // namespace vlm::specimen
