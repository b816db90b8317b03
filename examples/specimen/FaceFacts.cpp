#include <examples/specimen/FaceFacts.h>

#include <velum/core/StringCompare.h>
#include <velum/fonts/SYMFaceInfo.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <velum/fonts/TrueTypeFaceInfo.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <stdexcept>

namespace vlm::specimen {
namespace {

constexpr int kFixedPitch = 1;
constexpr std::size_t kNamesToldAtMost = 5;

std::string Folded(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

bool Contains(const std::string& text, const std::string& part) {
  return Folded(text).find(Folded(part)) != std::string::npos;
}

// Names that hold a word of the one that was asked for.
std::string NamesLike(const std::string& name) {
  std::vector<std::string> like;
  const std::string word = name.substr(0, name.find(' '));
  for (const FaceFacts& face : ListFaces()) {
    if (like.size() == kNamesToldAtMost) break;
    if (!word.empty() && Contains(face.name, word) &&
        std::find(like.begin(), like.end(), face.name) == like.end()) {
      like.push_back(face.name);
    }
  }
  std::string names;
  for (const std::string& each : like) names += (names.empty() ? "; there is " : ", ") + each;
  return names;
}

}  // namespace

FaceFacts FactsOf(unsigned int index) {
  const auto face = CSystemFaceInfo::GetInstance().GetFaceInfo(index);
  FaceFacts facts;
  facts.index = index;
  facts.name = face->GetFaceName().String();
  facts.family = face->GetFamilyName().String();
  int pitchAndFamily = 0;
  if (const auto* stroked = dynamic_cast<const CSYMFaceInfo*>(face.get())) {
    const CSYMSetInfo& set = g_SYMSetList[stroked->GetSYMSetIndex()];
    facts.isStroked = true;
    facts.isMarkers = set.GetIndex() >= kFirstMarkerSet;
    facts.charset = set.GetCharSet();
    pitchAndFamily = set.GetPitchAndFamily();
  } else if (const auto* outline = dynamic_cast<const CTrueTypeFaceInfo*>(face.get())) {
    const LOGFONTA& description = outline->GetLogFont();
    facts.weight = description.lfWeight;
    facts.isItalic = description.lfItalic != 0;
    facts.charset = description.lfCharSet;
    pitchAndFamily = description.lfPitchAndFamily;
  }
  facts.isFixed = (pitchAndFamily & 3) == kFixedPitch;
  facts.familyBits = pitchAndFamily >> 4;
  return facts;
}

std::vector<FaceFacts> ListFaces() {
  std::vector<FaceFacts> faces;
  const unsigned int count = CSystemFaceInfo::GetInstance().GetNumItems();
  for (unsigned int i = 0; i < count; ++i) faces.push_back(FactsOf(i));
  return faces;
}

const char* FamilyWord(int familyBits) {
  constexpr const char* kWords[] = {"-", "roman", "swiss", "modern", "script", "decorative"};
  const auto count = static_cast<int>(std::size(kWords));
  return familyBits >= 0 && familyBits < count ? kWords[familyBits] : "-";
}

unsigned int FindFace(const std::string& name) {
  const FaceFacts* best = nullptr;
  const std::vector<FaceFacts> faces = ListFaces();
  const auto distance = [](const FaceFacts& face) {
    return std::abs(face.weight - 400) + (face.isItalic ? 1000 : 0);
  };
  for (const FaceFacts& face : faces) {
    if (!StringEquivalent()(face.name, name)) continue;
    if (best == nullptr || distance(face) < distance(*best)) best = &face;
  }
  if (best == nullptr) {
    unsigned int index = 0;
    const char* end = name.data() + name.size();
    const auto [rest, error] = std::from_chars(name.data(), end, index);
    if (error == std::errc() && rest == end && index < faces.size()) return index;
    throw std::runtime_error("there is no face '" + name + "'" + NamesLike(name));
  }
  return best->index;
}

std::vector<FaceFacts> SelectFaces(const FaceFilter& filter) {
  std::vector<FaceFacts> faces = ListFaces();
  faces.erase(std::remove_if(faces.begin(), faces.end(),
                             [&](const FaceFacts& face) {
                               return (filter.strokedOnly && !face.isStroked) ||
                                      (filter.outlineOnly && face.isStroked) ||
                                      (filter.italicOnly && !face.isItalic) ||
                                      (filter.weight != 0 && face.weight != filter.weight) ||
                                      (!Contains(face.name, filter.text) &&
                                       !Contains(face.family, filter.text));
                             }),
              faces.end());
  return faces;
}

}  // namespace vlm::specimen
