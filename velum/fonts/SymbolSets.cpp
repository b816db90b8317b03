#include <velum/fonts/SymbolSets.h>

#include <velum/fonts/detail/SymbolSetTable.h>

#include <mutex>
#include <utility>

namespace vlm {

namespace {

std::vector<CSYMSetInfo> setList;
constinit std::mutex faceMutex;

}  // namespace

const std::vector<CSYMSetInfo>& g_SYMSetList = setList;

CSYMSetInfo::CSYMSetInfo() noexcept = default;

CSYMSetInfo::CSYMSetInfo(const GString& faceName, const GString& fileName,
                         unsigned char pitchAndFamily, unsigned char charSet, unsigned int index)
    : faceName_(faceName),
      fileName_(fileName),
      pitchAndFamily_(pitchAndFamily),
      charSet_(charSet),
      index_(index) {}

CSYMSetInfo::CSYMSetInfo(const CSYMSetInfo& other)
    : CSYMSetInfo(other.faceName_, other.fileName_, other.pitchAndFamily_, other.charSet_,
                  other.index_) {
  const std::lock_guard lock(faceMutex);
  face_ = other.face_;
}

CSYMSetInfo& CSYMSetInfo::operator=(const CSYMSetInfo& other) {
  faceName_ = other.faceName_;
  fileName_ = other.fileName_;
  pitchAndFamily_ = other.pitchAndFamily_;
  charSet_ = other.charSet_;
  index_ = other.index_;
  const std::lock_guard lock(faceMutex);
  face_ = other.face_;
  return *this;
}

CSYMSetInfo::~CSYMSetInfo() = default;

std::shared_ptr<const CStrokedFace> CSYMSetInfo::GetStrokedFacePtr() const {
  const std::lock_guard lock(faceMutex);
  if (!face_) face_ = std::make_shared<CStrokedFace>(index_);
  return face_;
}

void detail::FillSymbolSetList() {
  if (!setList.empty()) return;
  std::vector<CSYMSetInfo> list;
  for (const SymbolSetRow& row : kSymbolSets) {
    list.emplace_back(row.faceName, row.fileName, row.pitchAndFamily, row.charSet,
                      static_cast<unsigned int>(list.size()));
  }
  setList = std::move(list);
}

}  // namespace vlm
