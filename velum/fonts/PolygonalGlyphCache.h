#pragma once

/// \file
/// Keeps the glyphs that a builder has made, as many as there is room for.
///
///     vlm::PolygonalGlyphCache cache(flattener, 1 << 20);
///     for (const unsigned char c : text) {
///       if (const auto glyph = cache.Glyph(face, c, true)) Fill(*glyph);
///     }

#include <velum/core/Api.h>
#include <velum/fonts/PolygonalGlyph.h>

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace vlm {

/// Glyphs by face and code, within a budget of bytes; the glyph that was not used for longest makes
/// room for a new one.
///
/// An object with identity. Faces are told by their index in the list of faces. The bytes are those
/// of `PolygonalGlyph::ByteSize`. A glyph that was handed out lives on when the cache drops it.
///
/// Threads: a cache belongs to one thread at a time; glyphs may be read by any.
class VELUM_API PolygonalGlyphCache {
 public:
  /// The glyphs of a face by their codes; null where none is kept.
  using Slots = std::vector<std::shared_ptr<const PolygonalGlyph>>;
  /// The faces that have had a glyph since the last `Clear`.
  using Faces = std::map<unsigned int, std::shared_ptr<Slots>>;
  using const_iterator = Faces::const_iterator;                  ///< Walks through the faces.
  using const_reverse_iterator = Faces::const_reverse_iterator;  ///< Walks backwards.

  /// An empty cache with a budget of `maxSize` bytes, 0 for none, over a builder that outlives it.
  PolygonalGlyphCache(const PolygonalGlyphBuilder& builder, unsigned int maxSize);
  PolygonalGlyphCache(const PolygonalGlyphCache&) = delete;
  PolygonalGlyphCache& operator=(const PolygonalGlyphCache&) = delete;
  ~PolygonalGlyphCache();

  /// True if the glyph is kept; nothing is used or made.
  [[nodiscard]] bool Has(unsigned int face, unsigned short code) const;
  /// The budget.
  [[nodiscard]] unsigned int MaxCacheSize() const noexcept { return maxSize_; }
  /// True if no face has had a glyph.
  [[nodiscard]] bool empty() const noexcept { return faces_.empty(); }
  /// The number of faces that have had a glyph.
  [[nodiscard]] unsigned int size() const noexcept {
    return static_cast<unsigned int>(faces_.size());
  }
  /// The first face.
  [[nodiscard]] const_iterator begin() const noexcept { return faces_.begin(); }
  /// The first face.
  [[nodiscard]] const_iterator cbegin() const noexcept { return faces_.begin(); }
  /// Behind the last face.
  [[nodiscard]] const_iterator end() const noexcept { return faces_.end(); }
  /// Behind the last face.
  [[nodiscard]] const_iterator cend() const noexcept { return faces_.end(); }
  /// The last face, for a walk backwards.
  [[nodiscard]] const_reverse_iterator rbegin() const noexcept { return faces_.rbegin(); }
  /// The end of a walk backwards.
  [[nodiscard]] const_reverse_iterator rend() const noexcept { return faces_.rend(); }

  /// The glyph, which is thereby the one used last; with `build` it is made if it is not kept.
  ///
  /// - Null if it is neither kept nor to be made, or the builder has none to give.
  /// - With a budget of 0 nothing is made.
  /// - A glyph larger than the budget is kept all the same, until the next one is made.
  /// - A glyph for which there is no memory in the cache is given and not kept.
  ///
  /// *Errors*: what the builder throws; `std::bad_alloc` if there is no memory for the glyph.
  /// *Cost*: some nanoseconds for a glyph that is kept, in a face that was just used.
  std::shared_ptr<const PolygonalGlyph> Glyph(unsigned int face, unsigned short code, bool build);
  /// Sets the budget, and drops what is too much; 0 drops all glyphs and faces.
  void MaxCacheSize(unsigned int size);
  /// Drops all glyphs and faces.
  void Clear() noexcept;

 private:
  /// What is known of the use of a kept glyph. All records make a ring in the order of their last
  /// use; the first one is its anchor and stands for no glyph. Records that are free make a list.
  struct Record {
    std::uint32_t older;
    std::uint32_t newer;
    unsigned int byteSize;
    unsigned int face;
    unsigned short code;
  };
  struct Face;

  [[gnu::visibility("hidden")]] Face* FindFace(unsigned int face) const;
  [[gnu::visibility("hidden")]] std::shared_ptr<const PolygonalGlyph> AddGlyph(unsigned int face,
                                                                               unsigned short code);
  [[gnu::visibility("hidden")]] void AddToCache(unsigned int face, Face& kept,
                                                const std::shared_ptr<const PolygonalGlyph>& glyph);
  [[gnu::visibility("hidden")]] void UpdateCache(std::uint32_t record) noexcept;
  [[gnu::visibility("hidden")]] void CleanupCache(unsigned int needed) noexcept;
  [[gnu::visibility("hidden")]] void ResetLocalCache() noexcept;
  [[gnu::visibility("hidden")]] void Unlink(std::uint32_t record) noexcept;
  [[gnu::visibility("hidden")]] void MakeNewest(std::uint32_t record) noexcept;
  [[gnu::visibility("hidden")]] void Drop(std::uint32_t record) noexcept;

  const PolygonalGlyphBuilder& builder_;
  unsigned int maxSize_;
  std::uint64_t currentSize_ = 0;
  Faces faces_;
  unsigned int localFace_;
  Face* local_ = nullptr;
  std::vector<Record> records_;
  std::uint32_t freeRecords_ = 0;
};

}  // namespace vlm
