#include <velum/files/Archive.h>

#include <velum/colour/Color4b.h>
#include <velum/core/Exception.h>
#include <velum/files/File.h>
#include <velum/files/Path.h>
#include <velum/files/detail/ArchiveTables.h>
#include <velum/geometry/Box3.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Quat4.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>
#include <velum/platform/detail/Stack.h>
#include <velum/platform/detail/Utf8.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm {
namespace {

static_assert(std::endian::native == std::endian::little,
              "values are stored as they lie in memory");

constexpr const char* kModule = "Velum";
constexpr const char* kSource = "Archive";
constexpr std::uint16_t kSyncWord = 0x5344;

// A chain of objects goes on in a new stack when less than kMargin is left of this one, which must
// do for the caller's Serialize functions in between, and stops after kMostStacks.
constexpr std::size_t kMargin = 128 * 1024;
constexpr std::size_t kStackSize = 64 * 1024 * 1024;
constexpr int kMostStacks = 16;

// Texts up to here are read without asking the file what is left of it.
constexpr unsigned int kShortText = 512;

// The sum of the bytes of a word.
constexpr std::uint16_t SumOfWord(std::uint64_t word) noexcept {
  constexpr std::uint64_t kEvenBytes = 0x00FF00FF00FF00FF;
  const std::uint64_t pairs = (word & kEvenBytes) + (word >> 8 & kEvenBytes);
  return static_cast<std::uint16_t>(pairs * 0x0001000100010001 >> 48);
}

std::uint16_t SumOfBytes(const void* data, std::size_t size) noexcept {
  const auto* const bytes = static_cast<const unsigned char*>(data);
  std::uint16_t sum = 0;
  std::size_t i = 0;
  for (; i + 8 <= size; i += 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes + i, sizeof(word));
    sum = static_cast<std::uint16_t>(sum + SumOfWord(word));
  }
  for (; i < size; ++i) sum = static_cast<std::uint16_t>(sum + bytes[i]);
  return sum;
}

// The bytes of a number, the low ones of a word.
template <class Number>
std::uint64_t WordOf(const Number& value) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, &value, sizeof(value));
  return word;
}

std::string_view UpToNul(const std::string& text) { return std::string_view(text.c_str()); }

// The units that a wide text is stored as: lone halves of pairs stay, as they do in memory.
std::u16string UpToNul(const std::wstring& text) {
  std::u16string units;
  for (const wchar_t element : text) {
    const auto code = static_cast<char32_t>(element);
    if (code == 0) break;
    wchar_t pair[2];
    const std::size_t count =
        platform::PutWide(code <= 0x10FFFF ? code : platform::kReplacement, pair);
    for (std::size_t i = 0; i < count; ++i) units += static_cast<char16_t>(pair[i]);
  }
  return units;
}

// The name that stands for a class in the stream.
const char* NameOf(const CTypeInfo& type) noexcept { return type.GetName() ? type.GetName() : ""; }

}  // namespace

Archive::Archive() : tables_(std::make_unique<detail::ArchiveTables>()) {}

Archive::Archive(const GString& path, Mode mode) : Archive() { OpenFile(path, mode); }

Archive::~Archive() {
  try {
    if (file_) file_->Close();
  } catch (...) {  // a destructor has no way to report it
  }
}

const unsigned char* Archive::GetBuffer() const noexcept {
  return file_ ? file_->GetBuffer() : nullptr;
}

unsigned int Archive::GetSize() const {
  return file_ ? static_cast<unsigned int>(file_->GetLength()) : 0;
}

const char* Archive::GetFilename() const noexcept {
  return file_ ? file_->GetFilePath().c_str() : nullptr;
}

void Archive::OpenFile(const GString& path, Mode mode) {
  if (path.empty() || file_) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  const GString fullPath = CPath(path).GetFullPath();
  auto file = std::make_unique<CFile>();
  // A path too long for its full form is opened as it is.
  const GString& opened = fullPath.empty() ? path : fullPath;
  if (mode == ModeLoad) {
    file->Open(opened, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyWrite);
  } else {
    file->Open(opened, CFile::AccessWrite, CFile::ModeCreateAlways, CFile::ShareDenyAll);
  }
  file_ = std::move(file);
  mode_ = mode;
}

void Archive::OpenMem() {
  auto file = std::make_unique<CFile>();
  file->Open();
  file_ = std::move(file);
  mode_ = ModeStore;
}

void Archive::OpenMem(const unsigned char* data, unsigned int size) {
  auto file = std::make_unique<CFile>();
  file->Open(const_cast<unsigned char*>(data), size);  // which is only read
  file_ = std::move(file);
  mode_ = ModeLoad;
}

void Archive::Close() {
  File();
  const std::unique_ptr<CFile> file = std::move(file_);
  Reset();
  file->Close();
}

void Archive::Transfer(bool& value) {
  // A byte that is neither 0 nor 1 must not come to lie in a bool.
  unsigned char byte = 0;
  if (IsStoring()) std::memcpy(&byte, &value, 1);
  Move(byte);
  if (IsLoading()) value = byte != 0;
}

void Archive::Transfer(char& value) { Move(value); }
void Archive::Transfer(unsigned char& value) { Move(value); }
void Archive::Transfer(short& value) { Move(value); }
void Archive::Transfer(unsigned short& value) { Move(value); }
void Archive::Transfer(int& value) { Move(value); }
void Archive::Transfer(unsigned int& value) { Move(value); }
void Archive::Transfer(float& value) { Move(value); }
void Archive::Transfer(double& value) { Move(value); }

void Archive::Transfer(long& value) {
  auto stored = static_cast<std::int32_t>(value);
  if (IsStoring() && stored != value) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  Move(stored);
  if (IsLoading()) value = stored;
}

void Archive::Transfer(unsigned long& value) {
  auto stored = static_cast<std::uint32_t>(value);
  if (IsStoring() && stored != value) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  Move(stored);
  if (IsLoading()) value = stored;
}

void Archive::Transfer(Vec2f& value) {
  Move(value.x);
  Move(value.y);
}

void Archive::Transfer(Vec3i& value) {
  Move(value.x);
  Move(value.y);
  Move(value.z);
}

void Archive::Transfer(Vec3d& value) {
  Move(value.x);
  Move(value.y);
  Move(value.z);
}

void Archive::Transfer(Quat4d& value) {
  Move(value.x);
  Move(value.y);
  Move(value.z);
  Move(value.w);
}

void Archive::Transfer(Mat4d& value) {
  constexpr unsigned int kSize = 16 * sizeof(double);
  if (IsStoring()) {
    Write(std::as_const(value).ToDoubleArray(), kSize);
  } else {
    Read(value.ToDoubleArray(), kSize);
  }
}

void Archive::Transfer(Box3d& value) {
  Vec3d minimum = value.MinCorner();
  Vec3d maximum = value.MaxCorner();
  Transfer(minimum);
  Transfer(maximum);
  if (IsLoading()) value = Box3d(minimum, maximum);
}

void Archive::Transfer(Color4b& value) {
  Move(value.R);
  Move(value.G);
  Move(value.B);
  Move(value.A);
}

void Archive::Transfer(std::string& value) {
  if (IsStoring()) {
    StoreText(UpToNul(value));
  } else {
    LoadText(value);
  }
}

void Archive::Transfer(std::wstring& value) {
  if (IsStoring()) {
    StoreText(UpToNul(value));
    return;
  }
  std::u16string units;
  LoadText(units);
  if (!units.empty()) value.assign(units.begin(), units.end());
}

void Archive::Transfer(char* text, unsigned int limit) {
  if (IsStoring()) {
    StoreText(std::string_view(text ? text : ""));
    return;
  }
  if (!text) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  const unsigned int length = LoadLength(limit);
  text[length] = 0;
  Read(text, length);
}

void Archive::Transfer(wchar_t* text, unsigned int limit) {
  if (IsStoring()) {
    StoreText(UpToNul(std::wstring(text ? text : L"")));
    return;
  }
  if (!text) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  const unsigned int length = LoadLength(limit);
  text[length] = 0;
  for (unsigned int i = 0; i < length; ++i) {
    std::uint16_t unit = 0;
    Move(unit);
    text[i] = unit;
  }
}

void Archive::Transfer(void* data, unsigned int size) {
  if (IsStoring()) {
    Write(data, size);
  } else {
    Read(data, size);
  }
}

void Archive::SyncCheck() {
  std::uint16_t word = kSyncWord;
  Move(word);
  const std::uint16_t computed = checksum_;
  std::uint16_t stored = computed;
  Move(stored);
  if (word == kSyncWord && stored == computed) return;
  ThrowErrorImpl(kSource, __LINE__, ERR_DAMAGED_FILE, GetFilename(),
                 static_cast<unsigned int>(File().GetPosition() - 2), unsigned{computed},
                 unsigned{stored});
}

void Archive::Read(void* data, unsigned int size) {
  CFile& file = File();
  if (size == 0) return;
  if (file.Read(data, size) != size) FailAtEnd();
  checksum_ = static_cast<std::uint16_t>(checksum_ + SumOfBytes(data, size));
}

void Archive::Write(const void* data, unsigned int size) {
  CFile& file = File();
  if (size == 0) return;
  file.Write(data, size);
  checksum_ = static_cast<std::uint16_t>(checksum_ + SumOfBytes(data, size));
}

// A number in either direction.
template <class Number>
void Archive::Move(Number& value) {
  Number moved = value;
  if (mode_ == ModeStore) {
    File().Write(&moved, sizeof(moved));
  } else {
    if (File().Read(&moved, sizeof(moved)) != sizeof(moved)) FailAtEnd();
    value = moved;
  }
  checksum_ = static_cast<std::uint16_t>(checksum_ + SumOfWord(WordOf(moved)));
}

template <class Text>
void Archive::StoreText(const Text& text) {
  constexpr std::size_t kElement = sizeof(typename Text::value_type);
  constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max() / kElement;
  if (text.size() > kMost) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  auto length = static_cast<std::uint32_t>(text.size());
  Move(length);
  if (length) Write(text.data(), static_cast<unsigned int>(length * kElement));
}

template <class Text>
void Archive::LoadText(Text& text) {
  using Element = typename Text::value_type;
  std::uint32_t length = 0;
  Move(length);
  if (length == 0) return;
  const std::uint64_t bytes = std::uint64_t{length} * sizeof(Element);
  if (bytes <= kShortText) {
    Element elements[kShortText / sizeof(Element)];
    Read(elements, static_cast<unsigned int>(bytes));
    text.assign(elements, length);
    return;
  }
  Require(bytes);
  text.resize(length);
  Read(text.data(), static_cast<unsigned int>(bytes));
}

// Reads the length of a text for which there are `limit` elements.
unsigned int Archive::LoadLength(unsigned int limit) {
  std::uint32_t length = 0;
  Move(length);
  if (length >= limit) {
    ThrowVelumError(kModule, kSource, __LINE__, ERR_CUSTOM, "Unrecoverable error reading archive.");
  }
  return length;
}

// Fails unless so many bytes are left to be read, which are then fewer than 4 GB.
void Archive::Require(std::uint64_t bytes) {
  const std::int64_t left = File().GetLength() - File().GetPosition();
  if (left < 0 || bytes > static_cast<std::uint64_t>(left) ||
      bytes > std::numeric_limits<std::uint32_t>::max()) {
    FailAtEnd();
  }
}

void Archive::FailAtEnd() const {
  ThrowErrorImpl(kSource, __LINE__, ERR_READ, GetFilename(), "Unexpected end of file");
}

inline CFile& Archive::File() const {
  if (!file_) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  return *file_;
}

unsigned int Archive::ClassToIndex(const CTypeInfo& type, bool& isNew) {
  std::vector<detail::NamedClass>& classes = tables_->classes;
  // The record alone tells most of the time; but it is the name that counts.
  auto found =
      std::find_if(classes.begin(), classes.end(),
                   [&type](const detail::NamedClass& known) { return known.type == &type; });
  if (found == classes.end()) {
    const char* const name = NameOf(type);
    found = std::find_if(classes.begin(), classes.end(),
                         [name](const detail::NamedClass& known) { return known.name == name; });
  }
  isNew = found == classes.end();
  const auto index = static_cast<unsigned int>(found - classes.begin());
  if (isNew) classes.push_back({NameOf(type), &type});
  return index;
}

void Archive::StoreClass(const CTypedObject& object) {
  const CTypeInfo& type = *object.GetTypeId();
  bool isNew = false;
  unsigned int index = ClassToIndex(type, isNew);
  Move(index);
  if (isNew) StoreText(std::string_view(NameOf(type)));
}

bool Archive::StoreReference(const CTypedObject* object) {
  File();
  bool isNew = false;
  std::uint32_t number = tables_->stored.NumberOf(object, isNew);
  Move(number);
  if (isNew) StoreClass(*object);
  return isNew;
}

bool Archive::StoreReference(const std::shared_ptr<CTypedObject>& object) {
  File();
  bool isNew = false;
  std::uint32_t number = tables_->storedShared.NumberOf(object.get(), isNew);
  if (isNew) tables_->kept.push_back(object);
  Move(number);
  if (isNew) StoreClass(*object);
  return isNew;
}

CTypedObject* Archive::FindOrMake(unsigned int number, bool& isNew) {
  CTypedObject* const* const known = tables_->loaded.Find(number);
  isNew = !known;
  if (known) return *known;
  std::unique_ptr<CTypedObject> made = MakeObject();
  tables_->loaded.Enter(number, made.get());
  return made.release();
}

const std::shared_ptr<CTypedObject>& Archive::FindOrMakeShared(unsigned int number, bool& isNew) {
  const std::shared_ptr<CTypedObject>* const known = tables_->loadedShared.Find(number);
  isNew = !known;
  return known ? *known : tables_->loadedShared.Enter(number, MakeObject());
}

// Reads a class and makes an object of it.
std::unique_ptr<CTypedObject> Archive::MakeObject() {
  std::vector<detail::NamedClass>& classes = tables_->classes;
  unsigned int index = 0;
  Move(index);
  if (index >= classes.size()) {
    index = static_cast<unsigned int>(classes.size());
    std::string name;
    LoadText(name);
    const CTypeInfo* const type = CTypeInfo::FromName(name.c_str());
    classes.push_back({std::move(name), type});
  }
  const detail::NamedClass& known = classes[index];
  void* const made = known.type ? known.type->CreateInstance() : nullptr;
  if (!made) ThrowVelumError(kModule, kSource, __LINE__, ERR_CREATE_OBJECT, known.name.c_str());
  return std::unique_ptr<CTypedObject>(static_cast<CTypedObject*>(made));
}

void Archive::Refuse(unsigned int number, CTypedObject* object, bool isNew) {
  const char* const name = NameOf(*object->GetTypeId());
  if (isNew) {
    tables_->loaded.Remove(number);
    delete object;
  }
  ThrowVelumError(kModule, kSource, __LINE__, ERR_CREATE_OBJECT, name);
}

void Archive::Refuse(unsigned int number, std::shared_ptr<CTypedObject> object, bool isNew) {
  if (isNew) tables_->loadedShared.Remove(number);
  ThrowVelumError(kModule, kSource, __LINE__, ERR_CREATE_OBJECT, NameOf(*object->GetTypeId()));
}

void Archive::SerializeBody(CTypedObject& object) {
  if (platform::StackLeft() > kMargin) {
    object.Serialize(*this);
    return;
  }
  if (stacks_ == kMostStacks) ThrowErrorImpl(kSource, __LINE__, ERR_OUT_OF_MEMORY);
  struct Work {
    Archive& archive;
    CTypedObject& object;
    explicit Work(Archive& a, CTypedObject& o) : archive(a), object(o) { ++archive.stacks_; }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work() { --archive.stacks_; }
  } work(*this, object);
  const auto serialize = [](void* argument) {
    auto& deeper = *static_cast<Work*>(argument);
    deeper.object.Serialize(deeper.archive);
  };
  if (!platform::RunOnNewStack(kStackSize, serialize, &work)) {
    ThrowErrorImpl(kSource, __LINE__, ERR_CREATE_THREAD, "archive");
  }
}

void Archive::Reset() {
  checksum_ = 0;
  tables_->Reset();
}

}  // namespace vlm
