// A million small objects of two classes, which share a thousand styles, and ten million numbers
// one by one: stored to memory and loaded, beside two libraries for the same purpose that keep
// identity and class of objects as well.

#include <velum/core/TypedObject.h>
#include <velum/files/Archive.h>

#include <benchmark/benchmark.h>
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/base_object.hpp>
#include <boost/serialization/export.hpp>
#include <boost/serialization/shared_ptr.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/binary.hpp>
#include <cereal/types/base_class.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/polymorphic.hpp>
#include <cereal/types/vector.hpp>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace shapes {

using vlm::Archive;
using vlm::CTypedObject;
using vlm::CTypeInfo;

template <class T>
void* Make() {
  return static_cast<CTypedObject*>(new T);
}

struct Style : CTypedObject {
  double width = 0;
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override { archive.Transfer(width); }
  template <class A>
  void serialize(A& archive) {
    archive(width);
  }
  static const CTypeInfo kType;
};

struct Shape : CTypedObject {
  int id = 0;
  double x = 0;
  double y = 0;
  std::shared_ptr<Style> style;
  void Serialize(Archive& archive) override {
    archive.Transfer(id);
    archive.Transfer(x);
    archive.Transfer(y);
    archive.TransferObject(style);
  }
  template <class A>
  void serialize(A& archive) {
    archive(id, x, y, style);
  }
};

struct Circle : Shape {
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  template <class A>
  void serialize(A& archive) {
    archive(cereal::base_class<Shape>(this));
  }
  static const CTypeInfo kType;
};

struct Square : Shape {
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  template <class A>
  void serialize(A& archive) {
    archive(cereal::base_class<Shape>(this));
  }
  static const CTypeInfo kType;
};

const CTypeInfo Style::kType("Style", Make<Style>, CTypedObject::GetClassTypeId());
const CTypeInfo Circle::kType("Circle", Make<Circle>, CTypedObject::GetClassTypeId());
const CTypeInfo Square::kType("Square", Make<Square>, CTypedObject::GetClassTypeId());

}  // namespace shapes

namespace boost::serialization {

template <class A>
void serialize(A& archive, shapes::Style& style, unsigned) {
  archive& style.width;
}

template <class A>
void serialize(A& archive, shapes::Shape& shape, unsigned) {
  archive& shape.id& shape.x& shape.y& shape.style;
}

template <class A>
void serialize(A& archive, shapes::Circle& circle, unsigned) {
  archive& base_object<shapes::Shape>(circle);
}

template <class A>
void serialize(A& archive, shapes::Square& square, unsigned) {
  archive& base_object<shapes::Shape>(square);
}

}  // namespace boost::serialization

CEREAL_REGISTER_TYPE(shapes::Style)
CEREAL_REGISTER_TYPE(shapes::Circle)
CEREAL_REGISTER_TYPE(shapes::Square)
BOOST_CLASS_EXPORT(shapes::Circle)
BOOST_CLASS_EXPORT(shapes::Square)

namespace {

using shapes::Circle;
using shapes::Shape;
using shapes::Square;
using shapes::Style;
using Shapes = std::vector<std::shared_ptr<Shape>>;

Shapes Drawing(const benchmark::State& state) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(-10, 10);
  std::vector<std::shared_ptr<Style>> styles(1000);
  for (auto& style : styles) {
    style = std::make_shared<Style>();
    style->width = place(random);
  }
  Shapes shapes(static_cast<std::size_t>(state.range(0)));
  int id = 0;
  for (auto& shape : shapes) {
    if (random() % 2) {
      shape = std::make_shared<Circle>();
    } else {
      shape = std::make_shared<Square>();
    }
    shape->id = id++;
    shape->x = place(random);
    shape->y = place(random);
    shape->style = styles[random() % styles.size()];
  }
  return shapes;
}

void TransferShapes(vlm::Archive& archive, Shapes& shapes) {
  auto count = static_cast<unsigned int>(shapes.size());
  archive.Transfer(count);
  shapes.resize(count);
  for (auto& shape : shapes) archive.TransferObject(shape);
}

template <class OutArchive>
void StorePeer(std::ostream& stream, const Shapes& shapes) {
  OutArchive archive(stream);
  if constexpr (std::is_same_v<OutArchive, cereal::BinaryOutputArchive>) {
    archive(shapes);
  } else {
    archive << shapes;
  }
}

template <class InArchive>
void LoadPeer(std::istream& stream, Shapes& shapes) {
  InArchive archive(stream);
  if constexpr (std::is_same_v<InArchive, cereal::BinaryInputArchive>) {
    archive(shapes);
  } else {
    archive >> shapes;
  }
}

void Report(benchmark::State& state, std::size_t bytes) {
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["bytes"] = static_cast<double>(bytes);
}

void Check(benchmark::State& state, const Shapes& shapes, const Shapes& expected) {
  if (shapes.size() != expected.size() ||
      shapes.back()->style->width != expected.back()->style->width ||
      shapes.back()->x != expected.back()->x) {
    state.SkipWithError("the drawing did not come back");
  }
}

void StoreObjectsVelum(benchmark::State& state) {
  Shapes shapes = Drawing(state);
  std::size_t bytes = 0;
  for (auto _ : state) {
    vlm::Archive archive;
    archive.OpenMem();
    TransferShapes(archive, shapes);
    bytes = archive.GetSize();
  }
  Report(state, bytes);
}
BENCHMARK(StoreObjectsVelum)
    ->Name("StoreObjects/velum")
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

template <class OutArchive>
void StoreObjectsPeer(benchmark::State& state) {
  const Shapes shapes = Drawing(state);
  std::size_t bytes = 0;
  for (auto _ : state) {
    std::ostringstream stream;
    StorePeer<OutArchive>(stream, shapes);
    bytes = static_cast<std::size_t>(stream.tellp());
  }
  Report(state, bytes);
}
BENCHMARK(StoreObjectsPeer<cereal::BinaryOutputArchive>)
    ->Name("StoreObjects/cereal")
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(StoreObjectsPeer<boost::archive::binary_oarchive>)
    ->Name("StoreObjects/Boost")
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

void LoadObjectsVelum(benchmark::State& state) {
  Shapes drawing = Drawing(state);
  vlm::Archive stored;
  stored.OpenMem();
  TransferShapes(stored, drawing);
  Shapes shapes;
  for (auto _ : state) {
    state.PauseTiming();
    shapes.clear();
    state.ResumeTiming();
    vlm::Archive archive;
    archive.OpenMem(stored.GetBuffer(), stored.GetSize());
    TransferShapes(archive, shapes);
  }
  Check(state, shapes, drawing);
  Report(state, stored.GetSize());
}
BENCHMARK(LoadObjectsVelum)
    ->Name("LoadObjects/velum")
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

template <class OutArchive, class InArchive>
void LoadObjectsPeer(benchmark::State& state) {
  const Shapes drawing = Drawing(state);
  std::stringstream stream;
  StorePeer<OutArchive>(stream, drawing);
  Shapes shapes;
  for (auto _ : state) {
    state.PauseTiming();
    shapes.clear();
    state.ResumeTiming();
    stream.seekg(0);
    LoadPeer<InArchive>(stream, shapes);
  }
  Check(state, shapes, drawing);
  Report(state, static_cast<std::size_t>(stream.tellp()));
}
BENCHMARK(LoadObjectsPeer<cereal::BinaryOutputArchive, cereal::BinaryInputArchive>)
    ->Name("LoadObjects/cereal")
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(LoadObjectsPeer<boost::archive::binary_oarchive, boost::archive::binary_iarchive>)
    ->Name("LoadObjects/Boost")
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

std::vector<double> Numbers() {
  std::vector<double> numbers(10000000);
  std::mt19937_64 random(1);
  for (double& number : numbers) number = static_cast<double>(random());
  return numbers;
}

void StoreNumbersVelum(benchmark::State& state) {
  std::vector<double> numbers = Numbers();
  for (auto _ : state) {
    vlm::Archive archive;
    archive.OpenMem();
    for (double& number : numbers) archive.Transfer(number);
    archive.SyncCheck();
    benchmark::DoNotOptimize(archive.GetBuffer());
  }
}
BENCHMARK(StoreNumbersVelum)->Name("StoreNumbers/velum/10000000")->Unit(benchmark::kMillisecond);

// Copies each number behind the last into memory that grows as the archive's does, and adds its
// bytes to a 16-bit sum.
void StoreNumbersLoop(benchmark::State& state) {
  const std::vector<double> numbers = Numbers();
  for (auto _ : state) {
    std::size_t capacity = 1024;
    std::size_t length = 0;
    auto* buffer = static_cast<unsigned char*>(std::malloc(capacity));
    std::uint16_t sum = 0;
    for (const double& number : numbers) {
      if (length + sizeof(number) > capacity) {
        capacity *= 2;
        buffer = static_cast<unsigned char*>(std::realloc(buffer, capacity));
      }
      std::memcpy(buffer + length, &number, sizeof(number));
      for (std::size_t i = 0; i < sizeof(number); ++i) {
        sum = static_cast<std::uint16_t>(sum + buffer[length + i]);
      }
      length += sizeof(number);
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(buffer);
    std::free(buffer);
  }
}
BENCHMARK(StoreNumbersLoop)->Name("StoreNumbers/loop/10000000")->Unit(benchmark::kMillisecond);

}  // namespace
