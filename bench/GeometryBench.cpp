// Vectors, boxes and bounds over a million points, beside Eigen's fixed-size types and beside a
// loop over a plain structure.

#include <velum/geometry/Box.h>
#include <velum/geometry/Vec.h>

#include <benchmark/benchmark.h>

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

namespace {

using vlm::Box2d;
using vlm::Box2f;
using vlm::Box3d;
using vlm::Vec2d;
using vlm::Vec2f;
using vlm::Vec3d;

constexpr std::size_t kCount = 1000000;

struct Plain2 {
  double x;
  double y;
};

struct Plain3 {
  double x;
  double y;
  double z;
};

// The same numbers for every row, `Size` to a point.
template <class Point, class Number, int Size>
std::vector<Point> Points(unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> number(-1000, 1000);
  std::vector<Point> points(kCount);
  auto* out = reinterpret_cast<Number*>(points.data());
  for (std::size_t i = 0; i < kCount * Size; ++i) {
    out[i] = static_cast<Number>(number(random));
  }
  return points;
}

template <class Point>
std::vector<Point> Points2(unsigned seed = 1) {
  return Points<Point, double, 2>(seed);
}

template <class Point>
std::vector<Point> Points3(unsigned seed = 1) {
  return Points<Point, double, 3>(seed);
}

void SetItems(benchmark::State& state) {
  state.SetItemsProcessed(static_cast<std::int64_t>(kCount) * state.iterations());
}

void SumVelum(benchmark::State& state) {
  const auto points = Points2<Vec2d>();
  for (auto _ : state) {
    Vec2d sum;
    for (const Vec2d& p : points) {
      sum += p;
    }
    benchmark::DoNotOptimize(sum);
  }
  SetItems(state);
}
BENCHMARK(SumVelum)->Name("VecSum/velum/2d");

void SumEigen(benchmark::State& state) {
  const auto points = Points2<Eigen::Vector2d>();
  for (auto _ : state) {
    Eigen::Vector2d sum = Eigen::Vector2d::Zero();
    for (const Eigen::Vector2d& p : points) {
      sum += p;
    }
    benchmark::DoNotOptimize(sum);
  }
  SetItems(state);
}
BENCHMARK(SumEigen)->Name("VecSum/Eigen/2d");

void SumPlain(benchmark::State& state) {
  const auto points = Points2<Plain2>();
  for (auto _ : state) {
    Plain2 sum{0, 0};
    for (const Plain2& p : points) {
      sum.x += p.x;
      sum.y += p.y;
    }
    benchmark::DoNotOptimize(sum);
  }
  SetItems(state);
}
BENCHMARK(SumPlain)->Name("VecSum/loop/2d");

void BlendVelum(benchmark::State& state) {
  const auto a = Points2<Vec2d>(1);
  const auto b = Points2<Vec2d>(2);
  std::vector<Vec2d> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      out[i] = a[i].Lerp(b[i], 0.3);
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(BlendVelum)->Name("VecLerp/velum/2d");

void BlendEigen(benchmark::State& state) {
  const auto a = Points2<Eigen::Vector2d>(1);
  const auto b = Points2<Eigen::Vector2d>(2);
  std::vector<Eigen::Vector2d> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      out[i] = a[i] + (b[i] - a[i]) * 0.3;
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(BlendEigen)->Name("VecLerp/Eigen/2d");

void BlendPlain(benchmark::State& state) {
  const auto a = Points2<Plain2>(1);
  const auto b = Points2<Plain2>(2);
  std::vector<Plain2> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      out[i].x = a[i].x + (b[i].x - a[i].x) * 0.3;
      out[i].y = a[i].y + (b[i].y - a[i].y) * 0.3;
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(BlendPlain)->Name("VecLerp/loop/2d");

void CrossVelum(benchmark::State& state) {
  const auto a = Points3<Vec3d>(1);
  const auto b = Points3<Vec3d>(2);
  std::vector<Vec3d> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      out[i] = a[i].Cross(b[i]);
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(CrossVelum)->Name("VecCross/velum/3d");

void CrossEigen(benchmark::State& state) {
  const auto a = Points3<Eigen::Vector3d>(1);
  const auto b = Points3<Eigen::Vector3d>(2);
  std::vector<Eigen::Vector3d> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      out[i] = a[i].cross(b[i]);
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(CrossEigen)->Name("VecCross/Eigen/3d");

void NormalizeVelum(benchmark::State& state) {
  const auto points = Points3<Vec3d>();
  std::vector<Vec3d> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      Vec3d p = points[i];
      p.Normalize();
      out[i] = p;
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(NormalizeVelum)->Name("VecNormalize/velum/3d");

void NormalizeEigen(benchmark::State& state) {
  const auto points = Points3<Eigen::Vector3d>();
  std::vector<Eigen::Vector3d> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      Eigen::Vector3d p = points[i];
      p.normalize();
      out[i] = p;
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(NormalizeEigen)->Name("VecNormalize/Eigen/3d");

void NormalizePlain(benchmark::State& state) {
  const auto points = Points3<Plain3>();
  std::vector<Plain3> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      Plain3 p = points[i];
      const double length = std::sqrt(p.x * p.x + p.y * p.y + p.z * p.z);
      if (length > 2.220446049250313e-16) {
        const double inverse = 1.0 / length;
        p.x *= inverse;
        p.y *= inverse;
        p.z *= inverse;
      }
      out[i] = p;
    }
    benchmark::ClobberMemory();
  }
  SetItems(state);
}
BENCHMARK(NormalizePlain)->Name("VecNormalize/loop/3d");

void ContainsVelum(benchmark::State& state) {
  const auto points = Points2<Vec2d>();
  const Box2d box(-500, -700, 600, 400);
  for (auto _ : state) {
    std::size_t inside = 0;
    for (const Vec2d& p : points) {
      inside += box.Contains(p) ? 1 : 0;
    }
    benchmark::DoNotOptimize(inside);
  }
  SetItems(state);
}
BENCHMARK(ContainsVelum)->Name("BoxContains/velum/2d");

void ContainsEigen(benchmark::State& state) {
  const auto points = Points2<Eigen::Vector2d>();
  Eigen::AlignedBox2d const box(Eigen::Vector2d(-500, -700), Eigen::Vector2d(600, 400));
  for (auto _ : state) {
    std::size_t inside = 0;
    for (const Eigen::Vector2d& p : points) {
      inside += box.contains(p) ? 1 : 0;
    }
    benchmark::DoNotOptimize(inside);
  }
  SetItems(state);
}
BENCHMARK(ContainsEigen)->Name("BoxContains/Eigen/2d");

void ContainsPlain(benchmark::State& state) {
  const auto points = Points2<Plain2>();
  for (auto _ : state) {
    std::size_t inside = 0;
    for (const Plain2& p : points) {
      inside += (p.x >= -500 && p.x <= 600 && p.y >= -700 && p.y <= 400) ? 1 : 0;
    }
    benchmark::DoNotOptimize(inside);
  }
  SetItems(state);
}
BENCHMARK(ContainsPlain)->Name("BoxContains/loop/2d");

void IntersectVelum(benchmark::State& state) {
  const auto a = Points2<Vec2d>(1);
  const auto b = Points2<Vec2d>(2);
  const Box2d window(-500, -700, 600, 400);
  for (auto _ : state) {
    double area = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
      Box2d box(a[i], b[i]);
      box.Intersect(window);
      area += box.GetArea();
    }
    benchmark::DoNotOptimize(area);
  }
  SetItems(state);
}
BENCHMARK(IntersectVelum)->Name("BoxIntersect/velum/2d");

void IntersectEigen(benchmark::State& state) {
  const auto a = Points2<Eigen::Vector2d>(1);
  const auto b = Points2<Eigen::Vector2d>(2);
  Eigen::AlignedBox2d const window(Eigen::Vector2d(-500, -700), Eigen::Vector2d(600, 400));
  for (auto _ : state) {
    double area = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
      Eigen::AlignedBox2d box(a[i], b[i]);
      box.clamp(window);
      area += box.isEmpty() ? 0.0 : box.volume();
    }
    benchmark::DoNotOptimize(area);
  }
  SetItems(state);
}
BENCHMARK(IntersectEigen)->Name("BoxIntersect/Eigen/2d");

template <class Box, class Vec, class Number, int Size>
void BoundVelum(benchmark::State& state) {
  const auto points = Points<Vec, Number, Size>(1);
  for (auto _ : state) {
    Box box;
    box.BoundPoints(points.data(), static_cast<unsigned>(points.size()));
    benchmark::DoNotOptimize(box);
  }
  SetItems(state);
}
BENCHMARK(BoundVelum<Box2d, Vec2d, double, 2>)->Name("BoundPoints/velum/2d");
BENCHMARK(BoundVelum<Box3d, Vec3d, double, 3>)->Name("BoundPoints/velum/3d");
BENCHMARK(BoundVelum<Box2f, Vec2f, float, 2>)->Name("BoundPoints/velum/2f");

template <class Box, class Vec, class Number, int Size>
void BoundEigen(benchmark::State& state) {
  const auto points = Points<Vec, Number, Size>(1);
  for (auto _ : state) {
    Box box;
    for (const Vec& p : points) {
      box.extend(p);
    }
    benchmark::DoNotOptimize(box);
  }
  SetItems(state);
}
BENCHMARK(BoundEigen<Eigen::AlignedBox2d, Eigen::Vector2d, double, 2>)
    ->Name("BoundPoints/Eigen/2d");
BENCHMARK(BoundEigen<Eigen::AlignedBox3d, Eigen::Vector3d, double, 3>)
    ->Name("BoundPoints/Eigen/3d");
BENCHMARK(BoundEigen<Eigen::AlignedBox2f, Eigen::Vector2f, float, 2>)->Name("BoundPoints/Eigen/2f");

void BoundPlain(benchmark::State& state) {
  const auto points = Points2<Plain2>();
  for (auto _ : state) {
    constexpr double kMost = std::numeric_limits<double>::max();
    double xMin = kMost, yMin = kMost, xMax = -kMost, yMax = -kMost;
    for (const Plain2& p : points) {
      xMin = p.x < xMin ? p.x : xMin;
      yMin = p.y < yMin ? p.y : yMin;
      xMax = p.x > xMax ? p.x : xMax;
      yMax = p.y > yMax ? p.y : yMax;
    }
    benchmark::DoNotOptimize(xMin + yMin + xMax + yMax);
  }
  SetItems(state);
}
BENCHMARK(BoundPlain)->Name("BoundPoints/loop/2d");

}  // namespace
