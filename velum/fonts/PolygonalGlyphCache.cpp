#include <velum/fonts/PolygonalGlyphCache.h>

#include <velum/fonts/FaceInfo.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace vlm {

namespace {

constexpr unsigned int kNoFace = std::numeric_limits<unsigned int>::max();
constexpr std::uint32_t kAnchor = 0;

}  // namespace

/// A face of the map: its glyphs, and the records of the glyphs. A user may put glyphs there too.
struct PolygonalGlyphCache::Face : Slots {
  explicit Face(std::size_t count) : Slots(count), records(count, kAnchor) {}

  [[nodiscard]] std::uint32_t RecordOf(unsigned short code) const {
    return code < records.size() ? records[code] : kAnchor;
  }

  std::vector<std::uint32_t> records;
};

PolygonalGlyphCache::PolygonalGlyphCache(const PolygonalGlyphBuilder& builder, unsigned int maxSize)
    : builder_(builder), maxSize_(maxSize), localFace_(kNoFace), records_(1) {}

PolygonalGlyphCache::~PolygonalGlyphCache() = default;

bool PolygonalGlyphCache::Has(unsigned int face, unsigned short code) const {
  const auto found = faces_.find(face);
  if (found == faces_.end()) return false;
  const Slots& slots = *found->second;
  return code < slots.size() && slots[code];
}

std::shared_ptr<const PolygonalGlyph> PolygonalGlyphCache::Glyph(unsigned int face,
                                                                 unsigned short code, bool build) {
  Face* const kept = local_ && face == localFace_ ? local_ : FindFace(face);
  if (kept && code < kept->size() && (*kept)[code]) {
    const std::uint32_t record = kept->RecordOf((*kept)[code]->Index());
    if (record != kAnchor) {
      UpdateCache(record);
      return (*kept)[code];
    }
    // Not a reference: to make room, slots are emptied.
    const std::shared_ptr<const PolygonalGlyph> glyph = (*kept)[code];
    AddToCache(face, *kept, glyph);
    return glyph;
  }
  return build && maxSize_ != 0 ? AddGlyph(face, code) : nullptr;
}

void PolygonalGlyphCache::MaxCacheSize(unsigned int size) {
  maxSize_ = size;
  if (maxSize_ == 0) {
    Clear();
  } else {
    CleanupCache(0);
  }
}

void PolygonalGlyphCache::Clear() noexcept {
  ResetLocalCache();
  faces_.clear();
  freeRecords_ = kAnchor;
  records_.resize(1);
  records_[kAnchor] = Record();
  currentSize_ = 0;
}

PolygonalGlyphCache::Face* PolygonalGlyphCache::FindFace(unsigned int face) const {
  const auto found = faces_.find(face);
  return found == faces_.end() ? nullptr : static_cast<Face*>(found->second.get());
}

std::shared_ptr<const PolygonalGlyph> PolygonalGlyphCache::AddGlyph(unsigned int face,
                                                                    unsigned short code) {
  const std::shared_ptr<const PolygonalGlyph> glyph = builder_.BuildGlyph(face, code);
  if (!glyph) {
    ResetLocalCache();
    return nullptr;
  }
  // Looked for now: a builder may use the cache itself.
  Face* kept = FindFace(face);
  if (!kept) {
    const std::size_t count = builder_.faces_.GetFaceInfo(face)->GetLastChar() + std::size_t{1};
    try {
      const auto made = std::make_shared<Face>(count);
      faces_.emplace(face, made);
      kept = made.get();
    } catch (const std::bad_alloc&) {
      return glyph;
    }
  }
  localFace_ = face;
  local_ = kept;
  AddToCache(face, *kept, glyph);
  return glyph;
}

void PolygonalGlyphCache::AddToCache(unsigned int face, Face& kept,
                                     const std::shared_ptr<const PolygonalGlyph>& glyph) {
  const unsigned short code = glyph->Index();
  if (maxSize_ == 0 || code >= kept.size()) return;
  try {
    if (kept.records.size() < kept.size()) kept.records.resize(kept.size(), kAnchor);
    if (freeRecords_ == kAnchor) {
      records_.emplace_back();
      freeRecords_ = static_cast<std::uint32_t>(records_.size() - 1);
    }
  } catch (const std::bad_alloc&) {
    return;
  }
  // A builder that gives its glyphs codes of its own may come to one that is kept.
  if (kept.records[code] != kAnchor) Drop(kept.records[code]);
  const unsigned int byteSize = glyph->ByteSize();
  CleanupCache(byteSize);
  const std::uint32_t record = std::exchange(freeRecords_, records_[freeRecords_].newer);
  records_[record] = {kAnchor, kAnchor, byteSize, face, code};
  MakeNewest(record);
  kept[code] = glyph;
  kept.records[code] = record;
  currentSize_ += byteSize;
}

void PolygonalGlyphCache::UpdateCache(std::uint32_t record) noexcept {
  if (records_[kAnchor].older == record) return;
  Unlink(record);
  MakeNewest(record);
}

void PolygonalGlyphCache::CleanupCache(unsigned int needed) noexcept {
  if (currentSize_ + needed <= maxSize_) return;
  const std::uint64_t target = currentSize_ + needed - maxSize_;
  // An exact fit takes one more: the room is then there for the next glyph too.
  for (std::uint64_t freed = 0; freed <= target && records_[kAnchor].newer != kAnchor;) {
    const std::uint32_t oldest = records_[kAnchor].newer;
    freed += records_[oldest].byteSize;
    Drop(oldest);
  }
}

void PolygonalGlyphCache::ResetLocalCache() noexcept {
  localFace_ = kNoFace;
  local_ = nullptr;
}

void PolygonalGlyphCache::Unlink(std::uint32_t record) noexcept {
  const Record& taken = records_[record];
  records_[taken.older].newer = taken.newer;
  records_[taken.newer].older = taken.older;
}

void PolygonalGlyphCache::MakeNewest(std::uint32_t record) noexcept {
  const std::uint32_t newest = records_[kAnchor].older;
  records_[record].older = newest;
  records_[record].newer = kAnchor;
  records_[newest].newer = record;
  records_[kAnchor].older = record;
}

void PolygonalGlyphCache::Drop(std::uint32_t record) noexcept {
  const Record& dropped = records_[record];
  Face& face = *FindFace(dropped.face);
  if (dropped.code < face.size()) face[dropped.code].reset();
  face.records[dropped.code] = kAnchor;
  currentSize_ -= dropped.byteSize;
  Unlink(record);
  records_[record].newer = std::exchange(freeRecords_, record);
}

}  // namespace vlm
