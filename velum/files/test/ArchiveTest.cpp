#include <velum/files/Archive.h>

#include <velum/colour/Color4b.h>
#include <velum/core/Exception.h>
#include <velum/files/test/ArchiveNodes.h>
#include <velum/geometry/Box3.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Quat4.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>

#include <testing/FailingAllocations.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace vlm {
namespace {

using test::Leaf;
using test::Node;
using test::Nodes;
using Bytes = std::vector<unsigned char>;

// What `transfers` stores.
template <class Transfers>
Bytes Stored(Transfers transfers) {
  Archive archive;
  archive.OpenMem();
  transfers(archive);
  const unsigned char* const bytes = archive.GetBuffer();
  return Bytes(bytes, bytes + archive.GetSize());
}

// The error that `transfers` raises over a stream; -1 for none.
template <class Transfers>
int ErrorOf(const Bytes& stream, Transfers transfers, GString* description = nullptr) {
  Archive archive;
  archive.OpenMem(stream.data(), static_cast<unsigned int>(stream.size()));
  try {
    transfers(archive);
  } catch (const Exception& error) {
    if (description) *description = error.GetDescription();
    return error.GetErrCode();
  }
  return -1;
}

template <class Value>
Bytes StoredValue(Value value) {
  return Stored([&value](Archive& archive) { archive.Transfer(value); });
}

template <class Value>
Value Loaded(const Bytes& stream, Value before = Value()) {
  Archive archive;
  archive.OpenMem(stream.data(), static_cast<unsigned int>(stream.size()));
  archive.Transfer(before);
  return before;
}

class Foo : public CTypedObject {
 public:
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }

 private:
  static const CTypeInfo kType;
};

const CTypeInfo Foo::kType{"Foo", []() -> void* { return static_cast<CTypedObject*>(new Foo); },
                           CTypedObject::GetClassTypeId()};

class Abstract : public CTypedObject {
 public:
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }

 private:
  static inline const CTypeInfo kType{"Abstract", nullptr, GetClassTypeId()};
};

TEST(Archive, ValuesHaveFixedFormsInTheStream) {
  EXPECT_EQ(StoredValue(true), Bytes{1});
  EXPECT_EQ(StoredValue('A'), Bytes{0x41});
  EXPECT_EQ(StoredValue(static_cast<unsigned char>(0xFE)), Bytes{0xFE});
  EXPECT_EQ(StoredValue(static_cast<short>(-2)), (Bytes{0xFE, 0xFF}));
  EXPECT_EQ(StoredValue(static_cast<unsigned short>(0x1234)), (Bytes{0x34, 0x12}));
  EXPECT_EQ(StoredValue(-2), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(StoredValue(0x12345678u), (Bytes{0x78, 0x56, 0x34, 0x12}));
  EXPECT_EQ(StoredValue(-2L), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(StoredValue(0xFFFFFFFFul), (Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(StoredValue(1.5f), (Bytes{0, 0, 0xC0, 0x3F}));
  EXPECT_EQ(StoredValue(-2.0), (Bytes{0, 0, 0, 0, 0, 0, 0, 0xC0}));
  EXPECT_EQ(StoredValue(Vec2f(1.5f, 0)), (Bytes{0, 0, 0xC0, 0x3F, 0, 0, 0, 0}));
  EXPECT_EQ(StoredValue(Vec3i(1, 2, 3)), (Bytes{1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0}));
  EXPECT_EQ(StoredValue(Color4b(1, 2, 3, 4)), (Bytes{1, 2, 3, 4}));
  EXPECT_EQ(StoredValue(std::string("Foo")), (Bytes{3, 0, 0, 0, 'F', 'o', 'o'}));
  EXPECT_EQ(StoredValue(std::string("ab\0cd", 5)), (Bytes{2, 0, 0, 0, 'a', 'b'}));
  EXPECT_EQ(StoredValue(std::wstring(L"\xE4")), (Bytes{1, 0, 0, 0, 0xE4, 0}));
  EXPECT_EQ(StoredValue(std::wstring(L"\x1F600")), (Bytes{2, 0, 0, 0, 0x3D, 0xD8, 0x00, 0xDE}));
  EXPECT_EQ(StoredValue(std::wstring(1, L'\xD83D')), (Bytes{1, 0, 0, 0, 0x3D, 0xD8})) << "half";
  EXPECT_EQ(StoredValue(std::wstring(1, static_cast<wchar_t>(0x110000))),
            (Bytes{1, 0, 0, 0, 0xFD, 0xFF}));
  EXPECT_EQ(StoredValue(Vec3d(0, 0, -2)).size(), 24u);
  EXPECT_EQ(StoredValue(Quat4d(1, 2, 3, 4)).size(), 32u);
  EXPECT_EQ(StoredValue(Mat4d()).size(), 128u);
  EXPECT_EQ(StoredValue(Box3d(1, 2, 3, 4, 5, 6)), Stored([](Archive& archive) {
              for (double number : {1, 2, 3, 4, 5, 6}) archive.Transfer(number);
            }));
}

TEST(Archive, BytesGoAsTheyAre) {
  Bytes bytes{1, 0, 0xFF};
  const Bytes stored = Stored([&](Archive& archive) {
    archive.Transfer(static_cast<void*>(bytes.data()), 3u);
    archive.Transfer(static_cast<void*>(nullptr), 0u);
  });
  EXPECT_EQ(stored, bytes);
  Bytes back(4, 9);
  const auto load = [&](Archive& archive) {
    archive.Transfer(static_cast<void*>(back.data()), 3u);
    archive.Transfer(static_cast<void*>(nullptr), 0u);
  };
  EXPECT_EQ(ErrorOf(stored, load), -1);
  EXPECT_EQ(back, (Bytes{1, 0, 0xFF, 9}));
  EXPECT_EQ(ErrorOf(Bytes{1, 2}, load), ERR_READ);
}

TEST(Archive, ValuesComeBack) {
  const Mat4d matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  EXPECT_EQ(Loaded<Mat4d>(StoredValue(matrix)), matrix);
  EXPECT_EQ(Loaded<Mat4d>(StoredValue(matrix)).GetType(), Mat4d::TYPE_COMPLEX);
  EXPECT_EQ(Loaded<Quat4d>(StoredValue(Quat4d(1, 2, 3, 4))), Quat4d(1, 2, 3, 4));
  EXPECT_EQ(Loaded<Box3d>(StoredValue(Box3d(1, 2, 3, 4, 5, 6))), Box3d(1, 2, 3, 4, 5, 6));
  EXPECT_EQ(Loaded<Color4b>(StoredValue(Color4b(1, 2, 3, 4))), Color4b(1, 2, 3, 4));
  EXPECT_EQ(Loaded<long>(StoredValue(-5L)), -5);
  EXPECT_EQ(Loaded<unsigned long>(StoredValue(0xFFFFFFFFul)), 0xFFFFFFFFul);
  EXPECT_TRUE(Loaded<bool>({7})) << "any byte but 0";
  for (const std::size_t length : {1u, 255u, 256u, 257u, 511u, 512u, 513u, 100000u}) {
    EXPECT_EQ(Loaded<std::string>(StoredValue(std::string(length, 'x'))), std::string(length, 'x'));
    EXPECT_EQ(Loaded<std::wstring>(StoredValue(std::wstring(length, L'\xFFFF'))),
              std::wstring(length, L'\xFFFF'));
  }
  EXPECT_EQ(Loaded<std::string>(StoredValue(std::string()), "before"), "before");
  EXPECT_EQ(Loaded<GString>(StoredValue(GString("text"))), "text");
}

TEST(Archive, LongBeyond32BitsWritesNothing) {
  Archive archive;
  archive.OpenMem();
  long tooLong = LONG_MAX;
  unsigned long tooLarge = ULONG_MAX;
  EXPECT_THROW(archive.Transfer(tooLong), Exception);
  EXPECT_THROW(archive.Transfer(tooLarge), Exception);
  EXPECT_EQ(archive.GetSize(), 0u);
}

TEST(Archive, TextsWithALimitNeedRoomForTheirTerminator) {
  const Bytes three = StoredValue(std::string("abc"));
  char text[5] = "....";
  EXPECT_EQ(ErrorOf(three, [&text](Archive& archive) { archive.Transfer(text, 4u); }), -1);
  EXPECT_STREQ(text, "abc");
  GString description;
  EXPECT_EQ(ErrorOf(
                three, [&text](Archive& archive) { archive.Transfer(text, 3u); }, &description),
            ERR_CUSTOM);
  EXPECT_EQ(description, "Unrecoverable error reading archive.");
  wchar_t wide[4] = L"...";
  const Bytes two = StoredValue(std::wstring(L"\xE4x"));
  EXPECT_EQ(ErrorOf(two, [&wide](Archive& archive) { archive.Transfer(wide, 2u); }), ERR_CUSTOM);
  EXPECT_EQ(ErrorOf(two, [&wide](Archive& archive) { archive.Transfer(wide, 3u); }), -1);
  EXPECT_STREQ(wide, L"\xE4x");
  const Bytes none = Stored([](Archive& archive) {
    archive.Transfer(static_cast<char*>(nullptr), 0u);
    archive.Transfer(static_cast<wchar_t*>(nullptr), 0u);
  });
  EXPECT_EQ(none, Bytes(8, 0));
  EXPECT_EQ(
      ErrorOf(three, [](Archive& archive) { archive.Transfer(static_cast<char*>(nullptr), 4u); }),
      ERR_INTERNAL);
  EXPECT_EQ(
      ErrorOf(two, [](Archive& archive) { archive.Transfer(static_cast<wchar_t*>(nullptr), 3u); }),
      ERR_INTERNAL);
}

TEST(Archive, ObjectsAndSyncRecordsHaveTheFormOfTheStream) {
  Foo object;
  Foo* pointer = &object;
  Foo* null = nullptr;
  int five = 5;
  Bytes stream = Stored([&](Archive& archive) {
    archive.Transfer(five);
    archive.SyncCheck();
    archive.TransferObject(pointer);
    archive.TransferObject(pointer);
    archive.TransferObject(null);
  });
  EXPECT_EQ(stream, (Bytes{5, 0, 0, 0, 0x44, 0x53, 0x9C, 0, 1, 0, 0, 0, 0, 0, 0, 0,
                           3, 0, 0, 0, 'F',  'o',  'o',  1, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Stored([&](Archive& archive) {
              archive.Transfer(five);
              archive.SyncCheck();
              archive.SyncCheck();
            }),
            (Bytes{5, 0, 0, 0, 0x44, 0x53, 0x9C, 0, 0x44, 0x53, 0xCF, 0x01}));
}

TEST(Archive, GraphsComeBackWithTheirCyclesAndSharing) {
  const Nodes nodes;
  Node* first = new Node;
  first->number = 1;
  first->text = "first";
  first->wide = L"\xE4";
  first->next = new Node;
  first->next->next = first;
  first->next->other = first->next;
  first->leaf = first->next->leaf = std::make_shared<Leaf>();
  first->leaf->weight = 2.5;
  const Bytes stream = Stored([first](Archive& archive) mutable { archive.TransferObject(first); });

  Node* copy = nullptr;
  long shares = 0;
  EXPECT_EQ(ErrorOf(stream, [&](Archive& archive) { archive.TransferObject(copy); }), -1);
  ASSERT_TRUE(copy && copy->next && copy->leaf);
  shares = copy->leaf.use_count();
  EXPECT_NE(copy, first);
  EXPECT_EQ(copy->text, "first");
  EXPECT_EQ(copy->wide, L"\xE4");
  EXPECT_EQ(copy->next->next, copy);
  EXPECT_EQ(copy->next->other, copy->next);
  EXPECT_EQ(copy->leaf, copy->next->leaf);
  EXPECT_EQ(copy->leaf->weight, 2.5);
  EXPECT_EQ(shares, 2) << "a closed archive holds no share";
  EXPECT_EQ(Stored([copy](Archive& archive) mutable { archive.TransferObject(copy); }), stream);
}

TEST(Archive, ObjectsAreSharedHoweverManyThereAre) {
  constexpr std::size_t kCount = 1000;
  std::vector<std::shared_ptr<Leaf>> leaves(kCount);
  for (auto& leaf : leaves) leaf = std::make_shared<Leaf>();
  const auto transferTwice = [](Archive& archive, std::vector<std::shared_ptr<Leaf>>& first,
                                std::vector<std::shared_ptr<Leaf>>& again) {
    for (auto& leaf : first) archive.TransferObject(leaf);
    for (auto& leaf : again) archive.TransferObject(leaf);
  };
  const Bytes stream = Stored([&](Archive& archive) { transferTwice(archive, leaves, leaves); });
  std::vector<std::shared_ptr<Leaf>> first(kCount);
  std::vector<std::shared_ptr<Leaf>> again(kCount);
  EXPECT_EQ(ErrorOf(stream, [&](Archive& archive) { transferTwice(archive, first, again); }), -1);
  EXPECT_EQ(first, again);
  EXPECT_EQ(std::set(first.begin(), first.end()).size(), kCount);
}

TEST(Archive, ObjectOfTheWrongClassIsRefusedAndNotLeaked) {
  const Nodes nodes;
  Foo foo;
  Foo* pointer = &foo;
  const Bytes stream = Stored([&pointer](Archive& archive) { archive.TransferObject(pointer); });
  GString description;
  Node* node = nullptr;
  EXPECT_EQ(ErrorOf(
                stream, [&node](Archive& archive) { archive.TransferObject(node); }, &description),
            ERR_CREATE_OBJECT);
  EXPECT_EQ(node, nullptr);
  EXPECT_NE(description.find("Foo"), GString::npos) << description.c_str();
  std::shared_ptr<Node> shared;
  EXPECT_EQ(ErrorOf(stream, [&](Archive& archive) { archive.TransferObject(shared); }),
            ERR_CREATE_OBJECT);
  const Bytes twice = Stored([&pointer](Archive& archive) {
    archive.TransferObject(pointer);
    archive.TransferObject(pointer);
  });
  Foo* known = nullptr;
  EXPECT_EQ(ErrorOf(twice,
                    [&](Archive& archive) {
                      archive.TransferObject(known);
                      archive.TransferObject(node);
                    }),
            ERR_CREATE_OBJECT);
  ASSERT_NE(known, nullptr) << "an object that others have stays";
  delete known;
}

TEST(Archive, UnknownAndAbstractClassesCannotBeMade) {
  for (const char* const name : {"Nobody", "Abstract", ""}) {
    const Bytes stream = Stored([name](Archive& archive) {
      int index = 1;
      int classIndex = 0;
      std::string className = name;
      archive.Transfer(index);
      archive.Transfer(classIndex);
      archive.Transfer(className);
    });
    GString description;
    CTypedObject* object = nullptr;
    EXPECT_EQ(ErrorOf(
                  stream, [&](Archive& archive) { archive.TransferObject(object); }, &description),
              ERR_CREATE_OBJECT);
    EXPECT_NE(description.find(name), GString::npos);
  }
}

TEST(Archive, NumbersOutOfTheirOrderAreObjectsAndClassesAllTheSame) {
  struct Reference {
    int index;
    bool isNew;
  };
  const Bytes stream = Stored([](Archive& archive) {
    for (Reference reference : {Reference{900, true}, {3, true}, {900, false}, {3, false}}) {
      archive.Transfer(reference.index);
      if (!reference.isNew) continue;
      int newClass = INT_MAX;
      std::string name = "Foo";
      archive.Transfer(newClass);
      archive.Transfer(name);
    }
  });
  CTypedObject* objects[4] = {};
  EXPECT_EQ(ErrorOf(stream,
                    [&objects](Archive& archive) {
                      for (CTypedObject*& object : objects) archive.TransferObject(object);
                    }),
            -1);
  EXPECT_EQ(objects[0], objects[2]);
  EXPECT_EQ(objects[1], objects[3]);
  EXPECT_NE(objects[0], objects[1]);
  delete objects[0];
  delete objects[1];
}

// The thread sanitizer keeps a stack of calls of its own, which is too short for these.
#ifdef __has_feature
constexpr bool kCallsMayBeDeep = !__has_feature(thread_sanitizer);
#else
constexpr bool kCallsMayBeDeep = true;
#endif

TEST(Archive, ChainsOfAnyLengthAreStoredAndLoaded) {
  if (!kCallsMayBeDeep) GTEST_SKIP() << "the thread sanitizer's own stack is too short";
  constexpr std::size_t kLength = 100000;
  const Nodes nodes;
  std::vector<Node> chain(kLength);
  for (std::size_t i = 1; i < kLength; ++i) chain[i - 1].next = &chain[i];
  chain.back().number = 42;
  Node* first = &chain[0];
  const Bytes stream = Stored([&first](Archive& archive) { archive.TransferObject(first); });
  Node::Alive().clear();
  Node* copy = nullptr;
  EXPECT_EQ(ErrorOf(stream, [&copy](Archive& archive) { archive.TransferObject(copy); }), -1);
  std::size_t length = 1;
  const Node* last = copy;
  for (; last->next; last = last->next) ++length;
  EXPECT_EQ(length, kLength);
  EXPECT_EQ(last->number, 42);
}

// A link of a chain whose Serialize takes much stack.
class Deep : public CTypedObject {
 public:
  Deep* next = nullptr;
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override {
    volatile char stack[100 * 1024];
    stack[0] = 0;
    archive.TransferObject(next);
    stack[sizeof(stack) - 1] = 0;
  }

 private:
  static inline const CTypeInfo kType{"Deep", nullptr, GetClassTypeId()};
};

TEST(Archive, ChainThatWouldTakeMoreThanAGigabyteOfStackIsRefused) {
  if (!kCallsMayBeDeep) GTEST_SKIP() << "the thread sanitizer's own stack is too short";
  std::vector<Deep> chain(20000);
  for (std::size_t i = 1; i < chain.size(); ++i) chain[i - 1].next = &chain[i];
  Archive archive;
  archive.OpenMem();
  Deep* first = &chain[0];
  try {
    archive.TransferObject(first);
    FAIL() << "2 GB of stack";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_OUT_OF_MEMORY);
  }
  archive.Close();
  archive.OpenMem();
  first = &chain[chain.size() - 5000];
  EXPECT_NO_THROW(archive.TransferObject(first)) << "half a gigabyte, after the failure";
}

TEST(Archive, SyncRecordFindsAnyChangeOfAByteBeforeIt) {
  double number = 1234.5678;
  std::string text = "a text";
  const auto transfers = [&](Archive& archive) {
    archive.Transfer(number);
    archive.Transfer(text);
    archive.SyncCheck();
  };
  const Bytes sound = Stored(transfers);
  for (std::size_t at = 0; at < sound.size(); ++at) {
    if (at >= 8 && at < 12) continue;  // a length, which moves the record
    for (const int change : {1, 2, 0x55, 0x80, 0xFF}) {
      Bytes stream = sound;
      stream[at] = static_cast<unsigned char>(stream[at] ^ change);
      GString description;
      EXPECT_EQ(ErrorOf(stream, transfers, &description), ERR_DAMAGED_FILE) << at;
      EXPECT_NE(description.find("0x00000014"), GString::npos) << description.c_str();
    }
  }
  Bytes badWord = sound;
  ++badWord[sound.size() - 4];
  ++badWord[sound.size() - 2];
  EXPECT_EQ(ErrorOf(badWord, transfers), ERR_DAMAGED_FILE) << "the sums agree, the word does not";
}

// A document with all that a stream can hold.
Bytes Document() {
  const Nodes nodes;
  std::vector<Node*> all(20);
  for (std::size_t i = 0; i < all.size(); ++i) {
    all[i] = new Node;
    all[i]->number = static_cast<int>(i);
    all[i]->text = std::string(i, 'x');
    all[i]->wide = std::wstring(i, L'\xE4');
    if (i % 4 == 0) all[i]->leaf = std::make_shared<Leaf>();
    if (i > 0) all[i]->leaf = i % 3 == 0 ? all[i - 1]->leaf : all[i]->leaf;
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    all[i]->next = all[(i * 7 + 1) % all.size()];
    all[i]->other = all[(i * 3) % all.size()];
  }
  return Stored([&all](Archive& archive) { archive.TransferObject(all[0]); });
}

void LoadDocument(Archive& archive) {
  Node* first = nullptr;
  archive.TransferObject(first);
}

TEST(Archive, StreamCutAtAnyByteEndsTooEarly) {
  const Bytes sound = Document();
  EXPECT_EQ(ErrorOf(sound, LoadDocument), -1);
  for (std::size_t length = 0; length < sound.size(); ++length) {
    const Nodes nodes;
    const Bytes cut(sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(length));
    GString description;
    ASSERT_EQ(ErrorOf(cut, LoadDocument, &description), ERR_READ) << length;
    ASSERT_NE(description.find("Unexpected end of file"), GString::npos);
  }
}

// The memory that a load may hold at once.
std::size_t MostFor(const Bytes& stream) { return (std::size_t{64} << 20) + 4 * stream.size(); }

// How many of 10,000 streams with one changed byte are refused.
template <class Transfers>
int Refused(const Bytes& sound, Transfers transfers) {
  constexpr unsigned kSeed = 20261123;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  int refused = 0;
  for (int i = 0; i < 10000; ++i) {
    const Nodes nodes;
    Bytes stream = sound;
    stream[random() % stream.size()] ^= static_cast<unsigned char>(1 + random() % 255);
    const testing::AllocationPeak peak;
    const int error = ErrorOf(stream, transfers);
    EXPECT_LE(peak.Bytes(), MostFor(stream));
    EXPECT_TRUE(error == -1 || error == ERR_READ || error == ERR_DAMAGED_FILE ||
                error == ERR_CREATE_OBJECT)
        << error;
    refused += error != -1;
  }
  return refused;
}

TEST(Archive, DamagedStreamIsADocumentedErrorOrASoundLoad) {
  EXPECT_GT(Refused(Document(), LoadDocument), 9000);
}

TEST(Archive, DamagedStreamThatEndsInASyncRecordIsNeverAccepted) {
  double number = 1;
  std::string text = "a text of some length";
  auto object = std::make_shared<Foo>();
  const auto transfers = [&](Archive& archive) {
    archive.Transfer(number);
    archive.Transfer(text);
    archive.TransferObject(object);
    archive.SyncCheck();
  };
  EXPECT_EQ(Refused(Stored(transfers), transfers), 10000);
}

TEST(Archive, ObjectsThatAreAllTheirStreamHoldsTakeMemoryInProportionToIt) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new";
  constexpr std::uint32_t kObjects = 500000;
  const auto inARow = [](std::uint32_t i) { return i + 1; };
  const auto downwards = [](std::uint32_t i) { return 2 * (kObjects - i) + 5; };
  for (const auto& numberOf : {std::function<std::uint32_t(std::uint32_t)>(inARow),
                               std::function<std::uint32_t(std::uint32_t)>(downwards)}) {
    const Bytes stream = Stored([&numberOf](Archive& archive) {
      unsigned int firstClass = 0;
      for (std::uint32_t i = 0; i < kObjects; ++i) {
        unsigned int number = numberOf(i);
        archive.Transfer(number);
        archive.Transfer(firstClass);
        std::string name = "Foo";
        if (i == 0) archive.Transfer(name);
      }
    });
    const testing::AllocationPeak peak;
    EXPECT_EQ(ErrorOf(stream,
                      [](Archive& archive) {
                        std::shared_ptr<Foo> object;
                        for (std::uint32_t i = 0; i < kObjects; ++i) archive.TransferObject(object);
                      }),
              -1);
    EXPECT_GT(peak.Bytes(), stream.size());
    EXPECT_LE(peak.Bytes(), MostFor(stream));
  }
}

TEST(Archive, LengthBeyondTheStreamAsksForNoMemory) {
  const Bytes huge = {0xFF, 0xFF, 0xFF, 0xFF, 'x'};
  std::string text = "before";
  std::wstring wide = L"before";
  EXPECT_EQ(ErrorOf(huge, [&text](Archive& archive) { archive.Transfer(text); }), ERR_READ);
  EXPECT_EQ(ErrorOf(huge, [&wide](Archive& archive) { archive.Transfer(wide); }), ERR_READ);
  EXPECT_EQ(text, "before");
  EXPECT_LT(text.capacity(), 100u);
}

TEST(Archive, ServesFilesAsItServesMemory) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("document.dat");
  double number = 0.1;
  const Nodes nodes;
  Node* node = new Node;
  node->text = std::string(5000, 'x');
  const auto transfers = [&](Archive& archive) {
    archive.Transfer(number);
    archive.TransferObject(node);
    archive.SyncCheck();
  };
  Archive archive(path, Archive::ModeStore);
  EXPECT_TRUE(archive.IsStoring());
  EXPECT_EQ(archive.GetBuffer(), nullptr);
  transfers(archive);
  EXPECT_EQ(archive.GetSize(), Stored(transfers).size());
  EXPECT_THROW(Archive(path, Archive::ModeLoad), Exception) << "nobody else while it is written";
  EXPECT_THROW(archive.OpenFile(path, Archive::ModeLoad), Exception) << "open already";
  archive.Close();
  EXPECT_EQ(archive.GetFilename(), nullptr);

  archive.OpenFile(path, Archive::ModeLoad);
  number = 0;
  transfers(archive);
  EXPECT_EQ(number, 0.1);
  EXPECT_EQ(node->text, std::string(5000, 'x'));
  EXPECT_NO_THROW(Archive(path, Archive::ModeLoad)) << "others may read";
  EXPECT_THROW(Archive(path, Archive::ModeStore), Exception) << "but not write";
  archive.Close();
  EXPECT_THROW(Archive(folder.Path("missing.dat"), Archive::ModeLoad), Exception);
  EXPECT_THROW(Archive("", Archive::ModeLoad), Exception);
}

TEST(Archive, FullDiskIsAnErrorOfWriting) {
  Archive archive("/dev/full", Archive::ModeStore);
  int value = 1;
  try {
    archive.Transfer(value);
    FAIL() << "a full disk took a value";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_WRITE);
  }
}

TEST(Archive, ClosedArchiveTransfersNothing) {
  Archive archive;
  int value = 1;
  CTypedObject* object = nullptr;
  const std::function<void()> calls[] = {
      [&] { archive.Transfer(value); }, [&] { archive.TransferObject(object); },
      [&] { archive.SyncCheck(); }, [&] { archive.Close(); }, [&] { archive.Write(&value, 4); }};
  for (const auto& call : calls) EXPECT_THROW(call(), Exception);
  EXPECT_EQ(archive.GetSize(), 0u);
  EXPECT_EQ(archive.GetVersion(), 1);
  EXPECT_EQ(archive.GetData(), nullptr);
  EXPECT_TRUE(archive.IsLoading());
}

TEST(Archive, ClosingStartsNumbersAndSumsAfreshAndReopeningDoesNot) {
  Foo foo;
  Foo* pointer = &foo;
  const auto bytesOf = [](const Archive& archive) {
    return Bytes(archive.GetBuffer(), archive.GetBuffer() + archive.GetSize());
  };
  Archive archive;
  archive.OpenMem();
  archive.TransferObject(pointer);
  archive.SyncCheck();
  const Bytes first = bytesOf(archive);
  archive.OpenMem();
  archive.TransferObject(pointer);
  EXPECT_EQ(bytesOf(archive), (Bytes{1, 0, 0, 0})) << "the same object of the same archive";
  archive.Close();
  archive.OpenMem();
  archive.TransferObject(pointer);
  archive.SyncCheck();
  EXPECT_EQ(bytesOf(archive), first);
}

}  // namespace
}  // namespace vlm
