#pragma once

/// \file
/// Objects made into a stream of bytes, and back.
///
///     void Circle::Serialize(vlm::Archive& archive) {  // one routine for both directions
///       archive.Transfer(center_);
///       archive.Transfer(radius_);
///       archive.TransferObject(style_);
///     }
///
///     vlm::Archive archive("sketch.dat", vlm::Archive::ModeStore);
///     archive.TransferObject(circle);
///     archive.SyncCheck();
///     archive.Close();
///
/// docs/documents.md has a whole program.

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/TypedObject.h>
#include <velum/geometry/Forward.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

namespace vlm {

class CFile;
class Color4b;

namespace detail {
struct ArchiveTables;
}  // namespace detail

/// Writes values and graphs of objects to a file or to memory, or reads them.
///
/// An object with identity: closed, loading or storing. A stream holds no names or types of values,
/// so what a sequence of transfers wrote, the same sequence reads.
///
/// - Numbers are little-endian: `bool` and characters 1 byte, `short` 2, `int` and `long` 4,
///   `float` 4, `double` 8; vectors, boxes and matrices are their components.
/// - A text is the number of its bytes or elements (4 bytes) and those bytes, without a
///   terminator; elements of a wide text are 2 bytes.
/// - A pointer is the number of its object (4 bytes), 0 for null. Where an object comes up first,
///   the number of its class follows (4 bytes), where the class comes up first its name as a text,
///   and then what the object's `Serialize` transfers. So shared objects stay shared and cycles
///   come back as cycles.
/// - `SyncCheck` puts in a sum of all bytes so far, by which damage is found.
///
/// A stream is not trusted: a length beyond what is left of the stream is the error of a stream
/// that ends too early, before memory is asked for.
///
/// Chains of objects may be of any length that 1 GB of stack has room for. The archive provides it
/// in threads of its own, while the caller's waits: a `Serialize` function relies on nothing that
/// belongs to a thread, such as a lock that it holds across a transfer, and takes less than 128 kB
/// of stack between two transfers of objects.
///
/// Ownership: objects that a load makes belong to whoever the pointers are handed to, also if it
/// fails on the way; the archive keeps a share in those of `std::shared_ptr` until it closes.
///
/// Threads: an archive belongs to one thread at a time.
///
/// *Errors*: `Exception` with `ERR_INTERNAL` for a transfer with no stream open; `ERR_READ`
/// "Unexpected end of file" for a stream that ends too early; else the codes of `CFile`. Only
/// `Close` is of use then.
///
/// *Cost*: one call of the system for each value on a file, a few nanoseconds in memory. Store to
/// memory and write that out, or load from memory, where it counts.
class VELUM_API Archive {
 public:
  /// Which way values go.
  enum Mode : int {
    ModeLoad = 0,   ///< From the stream.
    ModeStore = 1,  ///< To the stream.
  };

  /// A closed archive.
  Archive();
  /// Opens a file; see `OpenFile`.
  Archive(const GString& path, Mode mode);
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;
  /// Closes the archive without reporting a failure.
  ~Archive();

  /// True unless storing.
  [[nodiscard]] bool IsLoading() const noexcept { return mode_ == ModeLoad; }
  /// True from an opening that stores.
  [[nodiscard]] bool IsStoring() const noexcept { return mode_ == ModeStore; }
  /// The caller's own pointer; null at first.
  [[nodiscard]] void* GetData() const noexcept { return data_; }
  /// A number of the caller's own, 1 at first. The archive does not store it.
  [[nodiscard]] int GetVersion() const noexcept { return version_; }
  /// The bytes of a stream in memory; otherwise null.
  ///
  /// *Lifetime*: until the next transfer or `Close`.
  [[nodiscard]] const unsigned char* GetBuffer() const noexcept;
  /// The number of bytes of the stream; 0 when closed.
  [[nodiscard]] unsigned int GetSize() const;
  /// The path of the file, empty for memory; null when closed.
  ///
  /// *Lifetime*: until `Close`.
  [[nodiscard]] const char* GetFilename() const noexcept;

  /// Opens the file at `path`: to be read, while others may read it too, or created or emptied and
  /// written, while nobody else may open it. A text of more than 512 bytes is read from a file only
  /// that has a length, not from a pipe.
  ///
  /// *Errors*: `ERR_INTERNAL` for an empty path and an open archive; `ERR_OPEN`.
  void OpenFile(const GString& path, Mode mode);
  /// Stores to memory from now on. An open stream is replaced; the numbers of objects and classes
  /// and the sum go on.
  void OpenMem();
  /// Loads from the `size` bytes at `data` from now on, which stay the caller's and must live until
  /// `Close`. An open stream is replaced as above.
  void OpenMem(const unsigned char* data, unsigned int size);
  /// Closes the stream; bytes in memory are gone. Numbers of objects and classes start afresh.
  ///
  /// *Errors*: `ERR_INTERNAL` for a closed archive; `ERR_CLOSE`, the archive is closed all the
  /// same.
  void Close();
  /// Keeps a pointer for the caller's use, at which the archive does not look.
  void SetData(void* data) noexcept { data_ = data; }
  /// Keeps a number for the caller's use, for example of the format that was read from the stream.
  void SetVersion(int version) noexcept { version_ = version; }

  void Transfer(bool& value);            ///< 1 byte; any byte but 0 is true.
  void Transfer(char& value);            ///< 1 byte.
  void Transfer(unsigned char& value);   ///< 1 byte.
  void Transfer(short& value);           ///< 2 bytes.
  void Transfer(unsigned short& value);  ///< 2 bytes.
  void Transfer(int& value);             ///< 4 bytes.
  void Transfer(unsigned int& value);    ///< 4 bytes.
  /// 4 bytes, read with their sign.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for a value beyond 32 bits; nothing is written.
  void Transfer(long& value);
  /// 4 bytes.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for a value beyond 32 bits; nothing is written.
  void Transfer(unsigned long& value);
  void Transfer(float& value);    ///< 4 bytes.
  void Transfer(double& value);   ///< 8 bytes.
  void Transfer(Vec2f& value);    ///< x, y.
  void Transfer(Vec3i& value);    ///< x, y, z.
  void Transfer(Vec3d& value);    ///< x, y, z.
  void Transfer(Quat4d& value);   ///< x, y, z, w.
  void Transfer(Mat4d& value);    ///< 16 numbers, row by row.
  void Transfer(Box3d& value);    ///< The minimum corner and the maximum corner.
  void Transfer(Color4b& value);  ///< 4 bytes in the order of the fields.
  /// A text, written up to its first byte 0. An empty text in the stream leaves `value` as it is.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for 4 GB and more.
  void Transfer(std::string& value);
  /// A wide text, as above. An element above 0xFFFF is written as a surrogate pair.
  void Transfer(std::wstring& value);
  /// A terminated text; null is written as the empty text. `limit` counts the bytes that there are
  /// for reading, the terminator among them.
  ///
  /// *Errors*: `ERR_CUSTOM` "Unrecoverable error reading archive." for a text that does not fit.
  void Transfer(char* text, unsigned int limit);
  /// The same for a wide text.
  void Transfer(wchar_t* text, unsigned int limit);
  /// `size` bytes as they are; `data` may be null for 0.
  void Transfer(void* data, unsigned int size);

  /// An object or null, by its pointer. Reading makes the object, or finds it.
  ///
  /// The pointer is set before the object is read, so it leads to what there is if that fails.
  ///
  /// *Errors*: `ERR_CREATE_OBJECT` with the name of the class for a class without record or
  /// creator, and for an object that is no `T`; `ERR_OUT_OF_MEMORY` for a chain that is too long;
  /// `ERR_CREATE_THREAD` if the system gives no thread for a long one.
  template <class T>
  void TransferObject(T*& object);
  /// The same for an object that is shared. Its numbers are apart from those of plain pointers: an
  /// object that is transferred both ways becomes two. What is made does not know its own shared
  /// pointer: `shared_from_this` finds none.
  template <class T>
  void TransferObject(std::shared_ptr<T>& object);

  /// Writes the sum of all bytes since the opening, or reads one and compares.
  ///
  /// *Errors*: `ERR_DAMAGED_FILE` with the path, the offset of the sum in the stream, the sum that
  /// was computed and the one that was read. The archive stays open.
  void SyncCheck();

  /// Reads `size` bytes, whatever the mode.
  void Read(void* data, unsigned int size);
  /// Writes `size` bytes, whatever the mode: into a caller's bytes, too, that are being loaded
  /// from.
  void Write(const void* data, unsigned int size);

 private:
  // Writes the number of an object, and of a new one its class; the body comes next.
  bool StoreReference(const CTypedObject* object);
  bool StoreReference(const std::shared_ptr<CTypedObject>& object);
  // Gives the object of a number that was just read: one that is known, or one that is made, whose
  // body comes next.
  CTypedObject* FindOrMake(unsigned int number, bool& isNew);
  const std::shared_ptr<CTypedObject>& FindOrMakeShared(unsigned int number, bool& isNew);
  // Raise ERR_CREATE_OBJECT for an object of the wrong class; a new one is forgotten first.
  [[noreturn]] void Refuse(unsigned int number, CTypedObject* object, bool isNew);
  [[noreturn]] void Refuse(unsigned int number, std::shared_ptr<CTypedObject> object, bool isNew);
  void SerializeBody(CTypedObject& object);

  void StoreClass(const CTypedObject& object);
  unsigned int ClassToIndex(const CTypeInfo& type, bool& isNew);
  std::unique_ptr<CTypedObject> MakeObject();
  template <class Number>
  [[gnu::visibility("hidden")]] void Move(Number& value);
  template <class Text>
  [[gnu::visibility("hidden")]] void StoreText(const Text& text);
  template <class Text>
  [[gnu::visibility("hidden")]] void LoadText(Text& text);
  unsigned int LoadLength(unsigned int limit);
  void Require(std::uint64_t bytes);
  [[noreturn]] void FailAtEnd() const;
  [[gnu::visibility("hidden")]] CFile& File() const;
  void Reset();

  Mode mode_ = ModeLoad;
  void* data_ = nullptr;
  int version_ = 1;
  std::uint16_t checksum_ = 0;
  std::unique_ptr<CFile> file_;
  std::unique_ptr<detail::ArchiveTables> tables_;
  int stacks_ = 0;  // that a chain of objects under way has filled
};

template <class T>
void Archive::TransferObject(T*& object) {
  static_assert(std::is_base_of_v<CTypedObject, T>, "objects derive from CTypedObject");
  if (IsStoring()) {
    if (StoreReference(object)) SerializeBody(*object);
    return;
  }
  unsigned int number = 0;
  Transfer(number);
  object = nullptr;
  bool isNew = false;
  CTypedObject* const found = FindOrMake(number, isNew);
  object = dynamic_cast<T*>(found);
  if (found && !object) Refuse(number, found, isNew);
  if (isNew) SerializeBody(*found);
}

template <class T>
void Archive::TransferObject(std::shared_ptr<T>& object) {
  static_assert(std::is_base_of_v<CTypedObject, T>, "objects derive from CTypedObject");
  if (IsStoring()) {
    if (StoreReference(object)) SerializeBody(*object);
    return;
  }
  unsigned int number = 0;
  Transfer(number);
  object = nullptr;
  bool isNew = false;
  const std::shared_ptr<CTypedObject>& found = FindOrMakeShared(number, isNew);
  object = std::dynamic_pointer_cast<T>(found);
  if (found && !object) Refuse(number, found, isNew);
  if (isNew) SerializeBody(*object);
}

}  // namespace vlm
