#include <velum/fonts/FaceInfo.h>
#include <velum/fonts/PolygonalGlyphCache.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <utility>

namespace vlm {
namespace {

/// Makes glyphs of `code` vertices, and counts them.
class CountingBuilder : public PolygonalGlyphBuilder {
 public:
  CountingBuilder() : PolygonalGlyphBuilder(CSystemFaceInfo::GetInstance()) {}

  std::unique_ptr<PolygonalGlyph> DoBuildGlyph(unsigned int, unsigned short code) const override {
    ++made;
    if (code == refused) return nullptr;
    auto glyph = std::make_unique<PolygonalGlyph>(indexOf ? indexOf : code);
    if (!isEmpty) glyph->Vertices().resize(code);
    glyph->Counts().push_back(code);
    return glyph;
  }

  mutable int made = 0;
  unsigned short refused = 0;
  unsigned short indexOf = 0;
  bool isEmpty = false;
};

constexpr unsigned int kVertex = 16;

unsigned int BytesIn(const PolygonalGlyphCache& cache) {
  unsigned int bytes = 0;
  for (const auto& [face, slots] : cache) {
    for (const auto& glyph : *slots) bytes += glyph ? glyph->ByteSize() : 0;
  }
  return bytes;
}

TEST(PolygonalGlyphCache, KeepsWhatItHasMade) {
  const CountingBuilder builder;
  PolygonalGlyphCache cache(builder, 10000);
  EXPECT_EQ(cache.Glyph(0, 65, false), nullptr);
  EXPECT_TRUE(cache.empty());
  const auto glyph = cache.Glyph(0, 65, true);
  ASSERT_NE(glyph, nullptr);
  EXPECT_EQ(glyph->Index(), 65);
  EXPECT_EQ(glyph->ByteSize(), 65 * kVertex);
  EXPECT_TRUE(cache.Has(0, 65));
  EXPECT_EQ(cache.Glyph(0, 65, true), glyph);
  EXPECT_EQ(cache.Glyph(0, 65, false), glyph);
  EXPECT_EQ(builder.made, 1);
  (void)cache.Glyph(0, 66, true);
  EXPECT_EQ(cache.size(), 1u) << "faces are counted";
  (void)cache.Glyph(1, 66, true);
  EXPECT_EQ(cache.size(), 2u);
  const auto& faces = CSystemFaceInfo::GetInstance();
  EXPECT_EQ(cache.begin()->second->size(), faces.GetFaceInfo(0)->GetLastChar() + 1u);
  cache.Clear();
  EXPECT_TRUE(cache.empty());
  EXPECT_EQ(glyph->Counts()[0], 65u) << "what was handed out lives on";
}

TEST(PolygonalGlyphCache, GivesNothingForWhatIsNotThere) {
  CountingBuilder builder;
  PolygonalGlyphCache cache(builder, 10000);
  const auto& faces = CSystemFaceInfo::GetInstance();
  EXPECT_EQ(cache.Glyph(faces.GetNumItems(), 65, true), nullptr);
  EXPECT_EQ(cache.Glyph(0xFFFFFFFF, 65, true), nullptr);
  EXPECT_EQ(
      cache.Glyph(0, static_cast<unsigned short>(faces.GetFaceInfo(0)->GetLastChar() + 1), true),
      nullptr);
  EXPECT_EQ(builder.made, 0);
  builder.refused = 70;
  EXPECT_EQ(cache.Glyph(0, 70, true), nullptr);
  EXPECT_TRUE(cache.empty());
  EXPECT_FALSE(cache.Has(0, 70));
  EXPECT_FALSE(cache.Has(0, 0xFFFF));
}

TEST(PolygonalGlyphCache, WithoutABudgetNothingIsMade) {
  const CountingBuilder builder;
  PolygonalGlyphCache cache(builder, 0);
  EXPECT_EQ(cache.Glyph(0, 65, true), nullptr);
  EXPECT_EQ(builder.made, 0);
  cache.MaxCacheSize(10000);
  EXPECT_NE(cache.Glyph(0, 65, true), nullptr);
  cache.MaxCacheSize(0);
  EXPECT_TRUE(cache.empty()) << "all is dropped";
  CountingBuilder noVertices;
  noVertices.isEmpty = true;
  PolygonalGlyphCache blanks(noVertices, 10000);
  EXPECT_NE(blanks.Glyph(0, 65, true), nullptr);
  blanks.MaxCacheSize(0);
  EXPECT_TRUE(blanks.empty()) << "glyphs without vertices too";
}

TEST(PolygonalGlyphCache, DropsWhatWasNotUsedForLongest) {
  const CountingBuilder builder;
  PolygonalGlyphCache cache(builder, 210 * kVertex);
  for (unsigned short code = 65; code <= 67; ++code) (void)cache.Glyph(0, code, true);
  (void)cache.Glyph(0, 65, false);
  (void)cache.Glyph(0, 68, true);
  EXPECT_TRUE(cache.Has(0, 65)) << "used again";
  EXPECT_FALSE(cache.Has(0, 66));
  EXPECT_TRUE(cache.Has(0, 68));
  cache.MaxCacheSize(133 * kVertex);
  EXPECT_FALSE(cache.Has(0, 67)) << "67, 65 and 68 make 200: 67 go, an exact fit";
  EXPECT_FALSE(cache.Has(0, 65)) << "and one more with an exact fit";
  EXPECT_TRUE(cache.Has(0, 68));
  EXPECT_EQ(BytesIn(cache), 68 * kVertex);
  (void)cache.Glyph(0, 250, true);
  EXPECT_EQ(BytesIn(cache), 250 * kVertex) << "one that is larger than the budget";
  (void)cache.Glyph(0, 65, true);
  EXPECT_EQ(BytesIn(cache), 65 * kVertex);
}

TEST(PolygonalGlyphCache, AGlyphOfAnotherCodeTakesThatPlace) {
  CountingBuilder builder;
  PolygonalGlyphCache cache(builder, 10000);
  (void)cache.Glyph(0, 65, true);
  builder.indexOf = 65;
  (void)cache.Glyph(0, 70, true);
  EXPECT_FALSE(cache.Has(0, 70));
  EXPECT_EQ(cache.Glyph(0, 65, false)->ByteSize(), 70 * kVertex);
  builder.indexOf = 0xFFFF;
  EXPECT_NE(cache.Glyph(0, 71, true), nullptr) << "given, and not kept";
  EXPECT_EQ(BytesIn(cache), 70 * kVertex);
}

TEST(PolygonalGlyphCache, CountsAGlyphThatAUserHasPutIn) {
  const CountingBuilder builder;
  PolygonalGlyphCache cache(builder, 300 * kVertex);
  (void)cache.Glyph(0, 65, true);
  PolygonalGlyphCache::Slots& slots = *cache.begin()->second;
  slots.resize(slots.size() + 50);
  const auto last = static_cast<unsigned short>(slots.size() - 1);
  for (const unsigned short code : {std::uint16_t{70}, last}) {
    auto glyph = std::make_shared<PolygonalGlyph>(code);
    glyph->Vertices().resize(70);
    slots[code] = glyph;
    EXPECT_EQ(cache.Glyph(0, code, false), glyph);
  }
  for (unsigned short code = 90; code < 100; ++code) {
    (void)cache.Glyph(0, code, true);
    EXPECT_LE(BytesIn(cache), 300 * kVertex);
  }
  EXPECT_FALSE(cache.Has(0, 70));
  EXPECT_FALSE(cache.Has(0, last));
  slots.resize(80);
  for (unsigned short code = 65; code < 80; ++code) (void)cache.Glyph(0, code, true);
  EXPECT_LE(BytesIn(cache), 300 * kVertex) << "what is gone is forgotten";
}

TEST(PolygonalGlyphCache, GivesWhatItHasNoMemoryToKeep) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP() << "the sanitizer has its own operator new";
  const CountingBuilder builder;
  for (std::size_t succeeding = 0; succeeding < 20; ++succeeding) {
    PolygonalGlyphCache cache(builder, 10000);
    std::shared_ptr<const PolygonalGlyph> glyph;
    bool isMade = true;
    bool haveFailed = false;
    {
      const testing::FailingAllocations exhausted(succeeding, 1);
      try {
        glyph = cache.Glyph(0, 65, true);
      } catch (const std::bad_alloc&) {
        isMade = false;
      }
      haveFailed = exhausted.HaveFailed();
    }
    EXPECT_EQ(isMade, glyph != nullptr) << succeeding;
    EXPECT_EQ(cache.Has(0, 65), !haveFailed) << succeeding;
    EXPECT_LE(cache.size(), 1u);
    const auto again = cache.Glyph(0, 65, true);
    ASSERT_NE(again, nullptr) << succeeding;
    EXPECT_TRUE(cache.Has(0, 65)) << succeeding;
    EXPECT_EQ(cache.Glyph(0, 65, false), again) << succeeding;
    if (!haveFailed) {
      EXPECT_GT(succeeding, 5u) << "some were for the cache";
      return;
    }
  }
  FAIL() << "no end of allocations";
}

/// The same cache, told by use numbers and a search for the lowest.
class PlainCache {
 public:
  explicit PlainCache(unsigned int maxSize) : maxSize_(maxSize) {}

  void Use(unsigned int face, unsigned short code) {
    const auto key = std::pair(face, code);
    if (glyphs_.count(key) == 0) {
      const unsigned int size = code * kVertex;
      if (size_ + size > maxSize_) Shrink(size);
      glyphs_[key].second = size;
      size_ += size;
    }
    glyphs_[key].first = serial_++;
  }
  void Limit(unsigned int maxSize) {
    maxSize_ = maxSize;
    if (size_ > maxSize_) Shrink(0);
  }
  [[nodiscard]] bool Has(unsigned int face, unsigned short code) const {
    return glyphs_.count(std::pair(face, code)) > 0;
  }

 private:
  void Shrink(unsigned int needed) {
    const unsigned int target = size_ + needed - maxSize_;
    for (unsigned int freed = 0; freed <= target && !glyphs_.empty();) {
      auto oldest = glyphs_.begin();
      for (auto at = glyphs_.begin(); at != glyphs_.end(); ++at) {
        if (at->second.first < oldest->second.first) oldest = at;
      }
      freed += oldest->second.second;
      size_ -= oldest->second.second;
      glyphs_.erase(oldest);
    }
  }

  unsigned int maxSize_;
  unsigned int size_ = 0;
  unsigned int serial_ = 0;
  std::map<std::pair<unsigned int, unsigned short>, std::pair<unsigned int, unsigned int>> glyphs_;
};

TEST(PolygonalGlyphCache, KeepsTheSameGlyphsAsAPlainOneOnRandomUse) {
  const unsigned int seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const CountingBuilder builder;
  const unsigned int faces = CSystemFaceInfo::GetInstance().GetNumItems();
  const auto anyCode = [&] { return static_cast<unsigned short>(33 + random() % 90); };
  PolygonalGlyphCache cache(builder, 40000);
  PlainCache plain(40000);
  for (int i = 0; i < 3000; ++i) {
    const unsigned int face = static_cast<unsigned int>(random() % std::min(faces, 4u));
    const unsigned short code = anyCode();
    if (i % 500 == 499) {
      const auto limit = static_cast<unsigned int>(1 + random() % 60000);
      cache.MaxCacheSize(limit);
      plain.Limit(limit);
    }
    ASSERT_NE(cache.Glyph(face, code, true), nullptr) << i;
    plain.Use(face, code);
    for (int n = 0; n < 20; ++n) {
      const unsigned short other = anyCode();
      ASSERT_EQ(cache.Has(face, other), plain.Has(face, other)) << i << ' ' << other;
    }
  }
}

}  // namespace
}  // namespace vlm
