#include <velum/geometry/Gpc.h>

#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipErrors.h>
#include <velum/geometry/detail/clip/ClipRules.h>
#include <velum/geometry/detail/clip/ClipTables.h>
#include <velum/geometry/detail/clip/ContourBoxes.h>
#include <velum/geometry/detail/clip/ContourOutput.h>
#include <velum/geometry/detail/clip/StripOutput.h>
#include <velum/geometry/detail/clip/Sweep.h>

namespace {

using vlm::detail::ClipArray;
using vlm::detail::ClipRules;
using vlm::detail::ClipTables;
using vlm::detail::ContourBox;

/// *Errors*: `ERR_INTERNAL` for a null pointer, and for a number that is no operation.
void Check(gpc_op op, const gpc_polygon* subject, const gpc_polygon* clip, const void* result) {
  const bool isOperation = op == GPC_DIFF || op == GPC_INT || op == GPC_XOR || op == GPC_UNION;
  if (!isOperation || !subject || !clip || !result) vlm::detail::ThrowBadInput(__LINE__);
}

bool IsEmpty(const gpc_polygon& polygon) noexcept { return polygon.num_contours <= 0; }

/// Fills the tables with the contours that can matter: an intersection needs those that meet one of
/// the other polygon, and a difference those of the clip polygon that do.
///
/// \return  false if there is nothing to sweep.
bool FillTables(gpc_op op, const gpc_polygon& subject, const gpc_polygon& clip,
                ClipTables& tables) {
  ClipArray<ContourBox> subjectBoxes("Bounding box creation");
  ClipArray<ContourBox> clipBoxes("Bounding box creation");
  vlm::detail::MeasureContours(subject, subjectBoxes);
  vlm::detail::MeasureContours(clip, clipBoxes);
  if (IsEmpty(subject) && (IsEmpty(clip) || op == GPC_INT || op == GPC_DIFF)) return false;
  if (IsEmpty(clip) && op == GPC_INT) return false;

  ClipArray<bool> subjectEnabled("overlap table creation");
  ClipArray<bool> clipEnabled("overlap table creation");
  subjectEnabled.Fill(subjectBoxes.size(), true);
  clipEnabled.Fill(clipBoxes.size(), true);
  if ((op == GPC_INT || op == GPC_DIFF) && !IsEmpty(clip)) {
    vlm::detail::RejectApart(clipBoxes, subjectBoxes, clipEnabled);
    if (op == GPC_INT) vlm::detail::RejectApart(subjectBoxes, clipBoxes, subjectEnabled);
  }
  tables.Add(subject, subjectEnabled, vlm::detail::kSubjectBit);
  tables.Add(clip, clipEnabled, vlm::detail::kClipBit);
  tables.Sort();
  return tables.LineCount() > 0;
}

}  // namespace

void gpc_polygon_clip(gpc_op op, gpc_polygon* subject, gpc_polygon* clip, gpc_polygon* result) {
  Check(op, subject, clip, result);
  ClipTables tables;
  const bool any = FillTables(op, *subject, *clip, tables);
  if (result == subject || result == clip) gpc_free_polygon(result);
  *result = {};
  if (!any) return;
  vlm::detail::Sweep<vlm::detail::ContourOutput> sweep(tables, ClipRules(op));
  sweep.Run();
  gpc_polygon contours{};
  try {
    sweep.Result().Write(contours);
  } catch (...) {
    gpc_free_polygon(&contours);
    throw;
  }
  *result = contours;
}

void gpc_tristrip_clip(gpc_op op, gpc_polygon* subject, gpc_polygon* clip, gpc_tristrip* result) {
  Check(op, subject, clip, result);
  ClipTables tables;
  const bool any = FillTables(op, *subject, *clip, tables);
  *result = {};
  if (!any) return;
  vlm::detail::Sweep<vlm::detail::StripOutput> sweep(tables, ClipRules(op));
  sweep.Run();
  gpc_tristrip strips{};
  try {
    sweep.Result().Write(strips);
  } catch (...) {
    gpc_free_tristrip(&strips);
    throw;
  }
  *result = strips;
}

void gpc_polygon_to_tristrip(gpc_polygon* polygon, gpc_tristrip* result) {
  gpc_polygon nothing{};
  gpc_tristrip_clip(GPC_DIFF, polygon, &nothing, result);
}
