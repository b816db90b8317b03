#include <velum/core/Exception.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/detail/GpcAlloc.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

namespace vlm {
namespace {

thread_local int left = 0;

void* FailWhenUsedUp(std::size_t size) { return left-- > 0 ? std::malloc(size) : nullptr; }

TEST(GPolygon, SurvivesEachFailingAllocation) {
  const Vec2d points[] = {{0, 0}, {2, 0}, {0, 2}, {5, 5}, {7, 5}, {5, 7}};
  const unsigned int counts[] = {3, 3};
  GPolygon polygon(0, 0, 1, 1);
  const GPolygon other(points, counts, 2);
  const std::function<void()> actions[] = {
      [&] { GPolygon(points, counts, 2); },
      [&] { GPolygon copy(other); },
      [&] { polygon.AddContours(points, counts, 2); },
      [&] { polygon.AddContours(other); },
      [&] { polygon = other; },
  };
  for (const auto& action : actions) {
    polygon = GPolygon(0, 0, 1, 1);
    int succeeding = 0;
    for (bool failed = true; failed; ++succeeding) {
      left = succeeding;
      detail::gpcMalloc = &FailWhenUsedUp;
      try {
        action();
        failed = false;
      } catch (const Exception& error) {
        EXPECT_EQ(error.GetErrCode(), ERR_OUT_OF_MEMORY);
        EXPECT_EQ(error.GetSrcFile(), GString("GPolygon"));
        EXPECT_EQ(polygon.GetTotalVertexCount(), 4u);
      }
      detail::gpcMalloc = &std::malloc;
    }
    EXPECT_GT(succeeding, 3);
  }
}

}  // namespace
}  // namespace vlm
