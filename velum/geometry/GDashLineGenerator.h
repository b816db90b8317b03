#pragma once

/// \file
/// Dashing of paths in the plane and in space: GDashLineGenerator and GDashLine3Generator.
///
///     double const pattern[] = {10, 5};  // drawn, skipped
///     vlm::GDashLineGenerator generator(pattern, 2);
///     vlm::Vec2d const path[] = {{0, 0}, {30, 0}};
///     std::vector<vlm::GLine2> dashes;
///     generator.Decompose(path, 2, dashes);  // 0 to 10 and 15 to 25

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/GLine.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>

#include <concepts>
#include <vector>

namespace vlm {

/// Cuts paths into the drawn pieces of a pattern; use it as GDashLineGenerator or
/// GDashLine3Generator.
///
/// The pattern is a list of lengths in the units of the path. The pen goes down at the start of a
/// path and changes at the end of each entry: so a list of an odd number of entries exchanges drawn
/// and skipped ones in each pass. The place in the pattern is kept between calls: a path handed
/// over in pieces is dashed as one, if each piece begins exactly where the last one ended.
///
/// What can't be dashed is drawn whole: with a list whose entries add up to nothing (as a generator
/// has that was given none), or in which one is below 0 or not a number, every path; otherwise a
/// segment so long that the ends of dashes can't be told apart in a `double`, which it would meet
/// more than 2 to the power 52 entries for, or whose length is not finite. Such a segment leaves
/// the place in the pattern as it was.
///
/// A value, but one to derive from: its destructor is virtual.
///
/// Threads: an object belongs to one thread at a time.
template <class Vec>
class VELUM_API BasicDashLineGenerator {
 public:
  /// Receives a drawn piece by its two ends, and what the caller gave as `context`.
  using Sink = void (*)(Vec begin, Vec end, void* context);

  /// Makes a generator that draws paths whole.
  BasicDashLineGenerator() : BasicDashLineGenerator(nullptr, 0) {}
  /// Makes a generator that draws paths whole, whatever the array holds.
  explicit BasicDashLineGenerator(const double* dashes) : BasicDashLineGenerator(dashes, 0) {}
  /// Makes a generator with a list of dashes, as `SetDashes` sets it.
  BasicDashLineGenerator(const double* dashes, unsigned count) { Construct(dashes, count); }
  /// Copies the list and the place in the pattern.
  BasicDashLineGenerator(const BasicDashLineGenerator& other)
      : dashes_(other.dashes_),
        last_(other.last_),
        index_(other.index_),
        isPenDown_(other.isPenDown_),
        remaining_(other.remaining_) {}
  virtual ~BasicDashLineGenerator() {}

  /// Copies the list and the place in the pattern.
  BasicDashLineGenerator& operator=(const BasicDashLineGenerator& other) {
    dashes_ = other.dashes_;
    last_ = other.last_;
    index_ = other.index_;
    isPenDown_ = other.isPenDown_;
    remaining_ = other.remaining_;
    return *this;
  }

  /// Replaces the list, and starts at its first entry with the pen down.
  ///
  /// - No entries: the list is a single 0.
  ///
  /// *Errors*: `ERR_INTERNAL` for a null array of entries, `ERR_OUT_OF_MEMORY`; the generator is as
  /// it was then.
  void SetDashes(const double* dashes, unsigned count) { Construct(dashes, count); }

  /// Hands the drawn pieces of a path to `sink`. A dash that goes round corners arrives as several
  /// pieces, one for each segment; one that is open where the path ends goes on in the next call.
  ///
  /// - `sink` null: nothing is handed over; the place in the pattern moves on.
  /// - The path does not begin where the last one ended: the pattern starts anew.
  /// - Fewer than 2 points, or a null array: nothing, and the pattern starts anew.
  ///
  /// *Errors*: those of `sink`, with the place in the pattern as it was when the path began.
  void Decompose(const Vec* points, unsigned count, Sink sink, void* context);
  /// Appends the drawn pieces of a path to `out`.
  void Decompose(const Vec* points, unsigned count, std::vector<BasicGLine<Vec>>& out);
  /// Appends the drawn pieces of a GPolyline to `out`; the plane's generator only.
  ///
  /// - An empty path: nothing at all, the place in the pattern stays.
  template <std::derived_from<GPolyline> Line>
  requires std::same_as<Vec, Vec2d>
  void Decompose(const Line& line, std::vector<GLine2>& out) {
    if (line.GetNumVertices() != 0) Decompose(&line[0], line.GetNumVertices(), out);
  }

 protected:
  /// Sets the list and the initial state.
  void Construct(const double* dashes, unsigned count);
  /// Empties the list: until there is another one, paths are drawn whole.
  void FreeAll() noexcept { dashes_.clear(); }
  /// Starts the pattern anew: the first entry, the pen down, no last point.
  void InitState() noexcept;

 private:
  template <class Draw>
  [[gnu::visibility("hidden")]] void Run(const Vec* points, unsigned count, const Draw& draw);
  [[gnu::visibility("hidden")]] double LongestDashed() const noexcept;

  std::vector<double> dashes_;
  Vec last_;
  unsigned index_ = 0;
  bool isPenDown_ = true;
  double remaining_ = 0;
};

extern template class BasicDashLineGenerator<Vec2d>;
extern template class BasicDashLineGenerator<Vec3d>;

}  // namespace vlm
