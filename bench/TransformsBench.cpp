// Matrices: transforms of a million points, products and inverses of matrices that the first cache
// holds, beside Eigen's fixed-size types with the same instruction set.

#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Mat4f.h>
#include <velum/geometry/Vec.h>

#include <benchmark/benchmark.h>

#include <Eigen/Core>
#include <Eigen/Geometry>
#include <Eigen/LU>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using vlm::Mat3d;
using vlm::Mat4d;
using vlm::Mat4f;
using vlm::Vec2d;
using vlm::Vec2i;
using vlm::Vec3d;

constexpr std::size_t kPoints = 1000000;
constexpr std::size_t kMatrices = 64;

// Row by row, for row vectors; Eigen takes the transposed matrix.
using Elements = Eigen::Matrix<double, 4, 4, Eigen::RowMajor>;

Elements Identity() { return Elements::Identity(); }

Elements Plane() {
  Elements m;
  m << 0.8, 0.6, 0, 0, -0.6, 0.8, 0, 0, 0, 0, 1, 0, 10, 20, 0, 1;
  return m;
}

Elements Affine() {
  Elements m;
  m << 0.8, 0.6, 0.1, 0, -0.6, 0.8, 0.2, 0, 0.3, 0.1, 0.9, 0, 10, 20, 30, 1;
  return m;
}

Elements Complex() {
  Elements m = Affine();
  m.col(3) << 0.0001, 0.0002, 0.0003, 2;
  return m;
}

// The same coordinates for every row.
template <class Point>
std::vector<Point> Points() {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> number(-1000, 1000);
  std::vector<Point> points(kPoints);
  auto* out = reinterpret_cast<double*>(points.data());
  for (std::size_t i = 0; i < kPoints * sizeof(Point) / sizeof(double); ++i) {
    out[i] = number(random);
  }
  return points;
}

void SetItems(benchmark::State& state, std::size_t count) {
  state.SetItemsProcessed(static_cast<std::int64_t>(count) * state.iterations());
}

template <class Source, class Target>
void TransformVelum(benchmark::State& state, const Elements& elements) {
  const Mat4d m(elements.data());
  const std::vector<Source> source = Points<Source>();
  std::vector<Target> target(kPoints);
  for (auto _ : state) {
    m.Transform(source.data(), target.data(), static_cast<unsigned>(kPoints));
    benchmark::ClobberMemory();
  }
  SetItems(state, kPoints);
}

// What Eigen's user writes for a known kind of transform: one point after the other.
struct CopyEigen {
  explicit CopyEigen(const Elements&) {}
  template <class Point>
  Point operator()(const Point& p) const {
    return p;
  }
};

struct PlaneEigen {
  Eigen::Affine2d transform;
  explicit PlaneEigen(const Elements& m) {
    transform.setIdentity();
    transform.linear() = m.topLeftCorner<2, 2>().transpose();
    transform.translation() = m.row(3).head<2>().transpose();
  }
  Eigen::Vector2d operator()(const Eigen::Vector2d& p) const { return transform * p; }
  Eigen::Vector3d operator()(const Eigen::Vector3d& p) const {
    Eigen::Vector3d out;
    out << transform * p.head<2>(), p.z();
    return out;
  }
};

struct AffineEigen {
  Eigen::Affine3d transform;
  explicit AffineEigen(const Elements& m) { transform.matrix() = m.transpose(); }
  Eigen::Vector2d operator()(const Eigen::Vector2d& p) const {
    return transform.linear().topLeftCorner<2, 2>() * p + transform.translation().head<2>();
  }
  Eigen::Vector3d operator()(const Eigen::Vector3d& p) const { return transform * p; }
};

struct ComplexEigen {
  Eigen::Projective3d transform;
  explicit ComplexEigen(const Elements& m) { transform.matrix() = m.transpose(); }
  Eigen::Vector2d operator()(const Eigen::Vector2d& p) const {
    const Eigen::Vector4d q = transform.matrix() * Eigen::Vector4d(p.x(), p.y(), 0, 1);
    return q.head<2>() / q.w();
  }
  Eigen::Vector3d operator()(const Eigen::Vector3d& p) const {
    return (transform * p.homogeneous()).hnormalized();
  }
};

void Assign(const Eigen::Vector2d& from, Eigen::Vector2d& to) { to = from; }
void Assign(const Eigen::Vector3d& from, Eigen::Vector3d& to) { to = from; }
template <class Point>
void Assign(const Point& from, Eigen::Vector2i& to) {
  // Rounded and limited as the library does it, with Eigen's own operations.
  to = from.template head<2>()
           .array()
           .round()
           .max(-2147483648.0)
           .min(2147483647.0)
           .template cast<int>();
}

template <class Source, class Target, class Transform>
void TransformEigen(benchmark::State& state, const Elements& elements) {
  const Transform transform(elements);
  const std::vector<Source> source = Points<Source>();
  std::vector<Target> target(kPoints);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kPoints; ++i) {
      Assign(transform(source[i]), target[i]);
    }
    benchmark::ClobberMemory();
  }
  SetItems(state, kPoints);
}

// The other way to write it: all points as the columns of one matrix.
void TransformEigenWhole(benchmark::State& state) {
  const Elements m = Affine();
  const Eigen::Matrix3d linear = m.topLeftCorner<3, 3>().transpose();
  const Eigen::Vector3d offset = m.row(3).head<3>().transpose();
  const std::vector<Eigen::Vector3d> source = Points<Eigen::Vector3d>();
  const Eigen::Map<const Eigen::Matrix3Xd> in(source.data()->data(), 3, kPoints);
  Eigen::Matrix3Xd out(3, kPoints);
  for (auto _ : state) {
    out.noalias() = linear * in;
    out.colwise() += offset;
    benchmark::ClobberMemory();
  }
  SetItems(state, kPoints);
}

template <class Source, class Target, class PeerSource, class PeerTarget, class Peer>
void Register(const std::string& input, const Elements& elements) {
  benchmark::RegisterBenchmark(
      ("Transform/velum/" + input).c_str(),
      [elements](benchmark::State& state) { TransformVelum<Source, Target>(state, elements); });
  benchmark::RegisterBenchmark(("Transform/Eigen/" + input).c_str(),
                               [elements](benchmark::State& state) {
                                 TransformEigen<PeerSource, PeerTarget, Peer>(state, elements);
                               });
}

template <class Peer>
void RegisterPairs(const std::string& type, const Elements& m) {
  Register<Vec3d, Vec3d, Eigen::Vector3d, Eigen::Vector3d, Peer>(type + "_3d_3d", m);
  Register<Vec2d, Vec2d, Eigen::Vector2d, Eigen::Vector2d, Peer>(type + "_2d_2d", m);
  Register<Vec3d, Vec2i, Eigen::Vector3d, Eigen::Vector2i, Peer>(type + "_3d_2i", m);
}

// Regular matrices of one kind, in the element order of the type that takes them.
template <class Mat, int kSize, class Number>
std::vector<Mat> Matrices(bool isAffine, bool isTransposed) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> number(-1, 1);
  std::vector<Mat> matrices(kMatrices);
  for (Mat& m : matrices) {
    Number elements[kSize][kSize];
    for (int r = 0; r < kSize; ++r) {
      for (int c = 0; c < kSize; ++c) {
        const double unit = r == c ? 1 : 0;
        const double free = number(random) + 3 * unit;
        const double value = isAffine && c == kSize - 1 ? unit : free;
        (isTransposed ? elements[c][r] : elements[r][c]) = static_cast<Number>(value);
      }
    }
    m = Mat(&elements[0][0]);
  }
  return matrices;
}

// Each product by the next matrix; Eigen's factors the other way round.
template <class Mat, int kSize, class Number, bool kIsEigen>
void Multiply(benchmark::State& state, bool isAffine) {
  const auto a = Matrices<Mat, kSize, Number>(isAffine, kIsEigen);
  std::vector<Mat> out = a;
  for (auto _ : state) {
    for (std::size_t i = 0; i + 1 < kMatrices; ++i) {
      if constexpr (kIsEigen) {
        out[i] = a[i + 1] * a[i];
      } else {
        out[i] = a[i] * a[i + 1];
      }
    }
    benchmark::ClobberMemory();
  }
  SetItems(state, kMatrices - 1);
}

template <class Mat, int kSize, class Number>
void InvertVelum(benchmark::State& state, bool isAffine) {
  const auto a = Matrices<Mat, kSize, Number>(isAffine, false);
  std::vector<Mat> out = a;
  bool all = true;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kMatrices; ++i) {
      all = a[i].Inverse(out[i]) && all;
    }
    benchmark::ClobberMemory();
  }
  if (!all) {
    state.SkipWithError("a matrix is singular");
  }
  SetItems(state, kMatrices);
}

// With the check for singular matrices that ours has as well.
template <class Mat, int kSize, class Number>
void InvertEigen(benchmark::State& state, bool isAffine) {
  const auto a = Matrices<Mat, kSize, Number>(isAffine, true);
  std::vector<Mat> out = a;
  bool all = true;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kMatrices; ++i) {
      bool isRegular = false;
      Mat inverse;
      a[i].computeInverseWithCheck(inverse, isRegular, Number(1e-11));
      if (isRegular) {
        out[i] = inverse;
      }
      all = isRegular && all;
    }
    benchmark::ClobberMemory();
  }
  if (!all) {
    state.SkipWithError("a matrix is singular");
  }
  SetItems(state, kMatrices);
}

// What a user of Eigen writes who knows the kind of transform: without a check, or with the same
// check as ours by hand.
template <class Transform, int kSize, bool kChecks>
void InvertEigenAffine(benchmark::State& state) {
  const auto a = Matrices<typename Transform::MatrixType, kSize, double>(true, true);
  std::vector<Transform> in(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    in[i].matrix() = a[i];
  }
  std::vector<Transform> out = in;
  bool all = true;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kMatrices; ++i) {
      if constexpr (kChecks) {
        typename Transform::LinearMatrixType inverse;
        bool isRegular = false;
        in[i].linear().computeInverseWithCheck(inverse, isRegular, 1e-11);
        if (isRegular) {
          out[i].linear() = inverse;
          out[i].translation().noalias() = -(inverse * in[i].translation());
          out[i].makeAffine();
        }
        all = isRegular && all;
      } else {
        out[i] = in[i].inverse(Eigen::Affine);
      }
    }
    benchmark::ClobberMemory();
  }
  if (!all) {
    state.SkipWithError("a matrix is singular");
  }
  SetItems(state, kMatrices);
}

template <class Transform, int kSize>
void MultiplyEigenAffine(benchmark::State& state) {
  const auto a = Matrices<typename Transform::MatrixType, kSize, double>(true, true);
  std::vector<Transform> in(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    in[i].matrix() = a[i];
  }
  std::vector<Transform> out = in;
  for (auto _ : state) {
    for (std::size_t i = 0; i + 1 < kMatrices; ++i) {
      out[i] = in[i + 1] * in[i];
    }
    benchmark::ClobberMemory();
  }
  SetItems(state, kMatrices - 1);
}

template <class Function, class... Arguments>
void Row(const char* name, Function function, Arguments... arguments) {
  benchmark::RegisterBenchmark(name, function, arguments...);
}

const bool kRegistered = [] {
  RegisterPairs<CopyEigen>("identity", Identity());
  RegisterPairs<PlaneEigen>("2d", Plane());
  RegisterPairs<AffineEigen>("affine", Affine());
  RegisterPairs<ComplexEigen>("complex", Complex());
  Row("Transform/Eigen_matrix/affine_3d_3d", TransformEigenWhole);

  Row("Multiply/velum/4d", Multiply<Mat4d, 4, double, false>, false);
  Row("Multiply/Eigen/4d", Multiply<Eigen::Matrix4d, 4, double, true>, false);
  Row("Multiply/velum/4d_affine", Multiply<Mat4d, 4, double, false>, true);
  Row("Multiply/Eigen/4d_affine", MultiplyEigenAffine<Eigen::Affine3d, 4>);
  Row("Multiply/velum/4f", Multiply<Mat4f, 4, float, false>, false);
  Row("Multiply/Eigen/4f", Multiply<Eigen::Matrix4f, 4, float, true>, false);
  Row("Multiply/velum/3d", Multiply<Mat3d, 3, double, false>, true);
  Row("Multiply/Eigen/3d", MultiplyEigenAffine<Eigen::Affine2d, 3>);
  Row("Multiply/Eigen_matrix/3d", Multiply<Eigen::Matrix3d, 3, double, true>, true);

  Row("Inverse/velum/4d", InvertVelum<Mat4d, 4, double>, false);
  Row("Inverse/Eigen/4d", InvertEigen<Eigen::Matrix4d, 4, double>, false);
  Row("Inverse/velum/4d_affine", InvertVelum<Mat4d, 4, double>, true);
  Row("Inverse/Eigen/4d_affine", InvertEigenAffine<Eigen::Affine3d, 4, false>);
  Row("Inverse/Eigen_by_hand/4d_affine", InvertEigenAffine<Eigen::Affine3d, 4, true>);
  Row("Inverse/velum/4f", InvertVelum<Mat4f, 4, float>, false);
  Row("Inverse/Eigen/4f", InvertEigen<Eigen::Matrix4f, 4, float>, false);
  Row("Inverse/velum/4f_affine", InvertVelum<Mat4f, 4, float>, true);
  Row("Inverse/Eigen/4f_affine", InvertEigen<Eigen::Matrix4f, 4, float>, true);
  Row("Inverse/velum/3d", InvertVelum<Mat3d, 3, double>, true);
  Row("Inverse/Eigen/3d", InvertEigenAffine<Eigen::Affine2d, 3, false>);
  Row("Inverse/Eigen_by_hand/3d", InvertEigenAffine<Eigen::Affine2d, 3, true>);
  return true;
}();

}  // namespace
