#include <velum/geometry/detail/Orientation.h>

#include <algorithm>
#include <cfloat>
#include <cstdint>
#include <limits>

namespace vlm::detail {

namespace {

__extension__ typedef unsigned __int128 Wide;

// A double product without rounding: magnitude * 2^exponent, the magnitude 0 or with its bit 105
// set.
struct Product {
  Product(double a, double b) noexcept {
    if (a == 0 || b == 0) return;
    sign = (a < 0) == (b < 0) ? 1 : -1;
    int exponentA = 0;
    int exponentB = 0;
    magnitude = Wide{Mantissa(a, exponentA)} * Mantissa(b, exponentB);
    exponent = exponentA + exponentB;
    if (!(magnitude >> 105)) {
      magnitude <<= 1;
      --exponent;
    }
  }

  static std::uint64_t Mantissa(double v, int& exponent) noexcept {
    return static_cast<std::uint64_t>(std::ldexp(std::frexp(std::abs(v), &exponent), 53));
  }

  int sign = 0;
  int exponent = 0;
  Wide magnitude = 0;
};

int SignOfDifference(const Product& p, const Product& q) noexcept {
  if (p.sign != q.sign) return p.sign > q.sign ? 1 : -1;
  if (p.exponent != q.exponent) return p.exponent > q.exponent ? p.sign : -p.sign;
  if (p.magnitude != q.magnitude) return p.magnitude > q.magnitude ? p.sign : -p.sign;
  return 0;
}

// The rounded sum and, exactly, what rounding took away.
template <class T>
void TwoSum(T a, T b, T& sum, T& rest) noexcept {
  sum = a + b;
  const T partOfB = sum - a;
  rest = (a - (sum - partOfB)) + (b - partOfB);
}

template <class T>
void Split(T v, T& high, T& low) noexcept {
  constexpr int kBits = (std::numeric_limits<T>::digits + 1) / 2;
  constexpr T kSplitter = static_cast<T>((std::uint64_t{1} << kBits) + 1);
  const T scaled = kSplitter * v;
  high = scaled - (scaled - v);
  low = v - high;
}

template <class T>
void TwoProduct(T a, T b, T& product, T& rest) noexcept {
  product = a * b;
  T aHigh, aLow, bHigh, bLow;
  Split(a, aHigh, aLow);
  Split(b, bHigh, bLow);
  rest = aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow);
}

// A sum of numbers without rounding: parts that do not overlap, the smallest first.
template <class T>
class ExactSum {
 public:
  void Add(T value) noexcept {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < count_; ++i) {
      T rest;
      TwoSum(value, parts_[i], value, rest);
      if (rest != 0) parts_[kept++] = rest;
    }
    if (value != 0) parts_[kept++] = value;
    count_ = kept;
    if (count_ == kRoom) Compress();
  }

  void AddProduct(double a, double b) noexcept {
    T product, rest;
    TwoProduct<T>(a, b, product, rest);
    Add(rest);
    Add(product);
  }

  [[nodiscard]] int Sign() const noexcept {
    return count_ == 0 ? 0 : parts_[count_ - 1] > 0 ? 1 : -1;
  }

 private:
  // Makes each part as long as it can be. Then less than `kRoom` of them fit between the bits of
  // the smallest and of the largest product of two doubles.
  void Compress() noexcept {
    T packed[kRoom];
    std::size_t first = kRoom;
    T sum = parts_[count_ - 1];
    for (std::size_t i = count_ - 1; i-- > 0;) {
      T rest;
      TwoSum(sum, parts_[i], sum, rest);
      if (rest == 0) continue;
      packed[--first] = sum;
      sum = rest;
    }
    packed[--first] = sum;
    count_ = kRoom - first;
    std::copy(packed + first, packed + kRoom, parts_);
  }

  static constexpr std::size_t kRoom = 128;
  T parts_[kRoom];
  std::size_t count_ = 0;
};

// Where both hold, products and their rests are normal numbers of `double`.
constexpr double kSmallest = 0x1p-450;
constexpr double kLargest = 0x1p450;

bool IsOfMiddleSize(const Vec2d& v) noexcept {
  const double x = std::abs(v.x);
  const double y = std::abs(v.y);
  return (x == 0 || (x >= kSmallest && x <= kLargest)) &&
         (y == 0 || (y >= kSmallest && y <= kLargest));
}

// `long double` is as precise as `double` and has room for the products of all doubles.
static_assert(LDBL_MANT_DIG >= DBL_MANT_DIG && LDBL_MAX_EXP > 4 * DBL_MAX_EXP);

template <class T>
int SignOfShoelace(const Vec2d* points, std::size_t count) noexcept {
  ExactSum<T> sum;
  for (std::size_t i = 0; i < count; ++i) {
    const Vec2d& p = points[i];
    const Vec2d& q = points[i + 1 < count ? i + 1 : 0];
    sum.AddProduct(p.x, q.y);
    sum.AddProduct(-p.y, q.x);
  }
  return sum.Sign();
}

int SignOfShoelace(const Vec2d* points, std::size_t count) noexcept {
  return std::all_of(points, points + count, IsOfMiddleSize)
             ? SignOfShoelace<double>(points, count)
             : SignOfShoelace<long double>(points, count);
}

bool IsExactDifference(double a, double b, double difference) noexcept {
  double sum, rest;
  TwoSum(a, -b, sum, rest);
  return rest == 0 && sum == difference;
}

}  // namespace

int OrientationExactly(const Vec2d& a, const Vec2d& b, const Vec2d& c) noexcept {
  const Vec2d ac = a - c;
  const Vec2d bc = b - c;
  // Points on a grid and points that coincide mostly end here.
  if (IsExactDifference(a.x, c.x, ac.x) && IsExactDifference(a.y, c.y, ac.y) &&
      IsExactDifference(b.x, c.x, bc.x) && IsExactDifference(b.y, c.y, bc.y)) {
    return SignOfDifference(Product(ac.x, bc.y), Product(ac.y, bc.x));
  }
  const Vec2d triangle[] = {a, b, c};
  return SignOfShoelace(triangle, 3);
}

int RingOrientation(const Vec2d* points, std::size_t count) noexcept {
  if (count < 3) return 0;
  double sum = 0;
  double size = 0;
  const Vec2d origin = points[0];
  for (std::size_t i = 1; i + 1 < count; ++i) {
    const Vec2d p = points[i] - origin;
    const Vec2d q = points[i + 1] - origin;
    const double left = p.x * q.y;
    const double right = p.y * q.x;
    sum += left - right;
    size += std::abs(left) + std::abs(right);
  }
  // Each term and each partial sum is off by at most a few units in the last place of `size`.
  const double bound = (static_cast<double>(count) + 8) * 2.3e-16 * size;
  if (std::abs(sum) > bound && std::abs(sum) > 1e-280 && size <= 1.7976931348623157e308) {
    return sum > 0 ? 1 : -1;
  }
  return SignOfShoelace(points, count);
}

}  // namespace vlm::detail
