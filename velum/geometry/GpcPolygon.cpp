#include <velum/core/Exception.h>
#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/GpcAlloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

void FreeLists(gpc_vertex_list*& lists, std::int32_t& count) {
  for (std::int32_t i = 0; lists && i < count; ++i) std::free(lists[i].vertex);
  std::free(lists);
  lists = nullptr;
  count = 0;
}

}  // namespace

void gpc_add_contour(gpc_polygon* polygon, gpc_vertex_list* contour, int hole) {
  using vlm::detail::GPCAllocArray;
  using vlm::detail::GPCBlock;

  if (!polygon || polygon->num_contours < 0 || !contour || contour->num_vertices < 0 ||
      (contour->num_vertices > 0 && !contour->vertex)) {
    vlm::ThrowErrorImpl(__FILE_NAME__, __LINE__, vlm::ERR_INTERNAL);
  }
  const std::int32_t count = polygon->num_contours;
  // One more than can be counted fails as one more than there is room for.
  const std::size_t entries = count == std::numeric_limits<std::int32_t>::max()
                                  ? std::numeric_limits<std::size_t>::max()
                                  : static_cast<std::size_t>(count) + 1;
  GPCBlock<std::int32_t> holes(
      GPCAllocArray<std::int32_t>(__LINE__, "contour hole addition", entries));
  GPCBlock<gpc_vertex_list> contours(
      GPCAllocArray<gpc_vertex_list>(__LINE__, "contour addition", entries));
  const gpc_vertex_list added{
      contour->num_vertices,
      GPCAllocArray<gpc_vertex>(__LINE__, "contour addition",
                                static_cast<std::size_t>(contour->num_vertices))};

  std::copy_n(polygon->hole, count, holes.get());
  std::copy_n(polygon->contour, count, contours.get());
  std::copy_n(contour->vertex, added.num_vertices, added.vertex);
  holes[entries - 1] = hole;
  contours[entries - 1] = added;
  std::free(polygon->hole);
  std::free(polygon->contour);
  polygon->hole = holes.release();
  polygon->contour = contours.release();
  ++polygon->num_contours;
}

void gpc_free_polygon(gpc_polygon* polygon) {
  if (!polygon) return;
  FreeLists(polygon->contour, polygon->num_contours);
  std::free(polygon->hole);
  polygon->hole = nullptr;
}

void gpc_free_tristrip(gpc_tristrip* tristrip) {
  if (tristrip) FreeLists(tristrip->strip, tristrip->num_strips);
}
