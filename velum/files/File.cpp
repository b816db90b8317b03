#include <velum/files/File.h>

#include <velum/core/Exception.h>
#include <velum/files/detail/FileError.h>
#include <velum/files/detail/OpenModes.h>
#include <velum/platform/detail/FileAccess.h>

#include <cstdint>
#include <utility>

namespace vlm {

namespace {

constexpr int kNoHandle = -1;

platform::OpenWish WishOf(CFile::Access access, CFile::Mode mode, CFile::Sharing sharing) {
  constexpr unsigned int kOwnerReadsAndWrites = 0600;
  platform::OpenWish wish;
  wish.permissions = kOwnerReadsAndWrites;
  wish.sharing.writes = access == CFile::AccessWrite || access == CFile::AccessReadWrite;
  wish.sharing.reads = access != CFile::AccessWrite;
  detail::Deny(sharing, wish);
  wish.creates = mode == CFile::ModeCreateNew || mode == CFile::ModeCreateAlways ||
                 mode == CFile::ModeOpenAlways || mode == CFile::ModeAppend;
  wish.mustBeNew = mode == CFile::ModeCreateNew;
  wish.empties = mode == CFile::ModeCreateAlways || mode == CFile::ModeTruncateExisting;
  wish.appends = mode == CFile::ModeAppend;
  return wish;
}

}  // namespace

CFile::CFile(const GString& path, Access access, Mode mode, Sharing sharing) {
  Open(path, access, mode, sharing);
}

CFile::~CFile() {
  if (opened_) Abort(false);
}

std::int64_t CFile::GetPosition() const {
  if (memory_) return memory_->GetPosition();
  if (!IsOpen()) return -1;
  const std::int64_t position = platform::SeekFile(handle_, 0, OriginCurrent);
  if (position < 0) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_SEEK, path_);
  return position;
}

std::int64_t CFile::GetLength() const {
  if (memory_) return memory_->GetLength();
  if (!IsOpen()) return -1;
  const std::int64_t position = GetPosition();
  const std::int64_t length = platform::SeekFile(handle_, 0, OriginEnd);
  if (length < 0) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_SEEK, path_);
  if (platform::SeekFile(handle_, position, OriginBegin) != position) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  return length;
}

bool CFile::EndOfFile() const {
  if (memory_) return memory_->EndOfFile();
  if (!IsOpen()) return true;
  const int atEnd = platform::IsAtEnd(handle_);
  if (atEnd < 0) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_CUSTOM, "EOF: Bad file handle");
  return atEnd == 1;
}

void CFile::Open() {
  if (handle_ != kNoHandle) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  memory_ = std::make_unique<CMemoryFile>();
  path_.clear();
  opened_ = true;
}

void CFile::Open(void* data, unsigned int size) {
  if (handle_ != kNoHandle) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  memory_ = std::make_unique<CMemoryFile>(static_cast<unsigned char*>(data), size);
  path_.clear();
  opened_ = true;
}

void CFile::Open(const GString& path, Access access, Mode mode, Sharing sharing) {
  if (path.empty() || IsOpen()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  GString name(path);
  const int handle = platform::OpenFile(name.c_str(), WishOf(access, mode, sharing));
  if (handle < 0) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_OPEN, name);
  path_ = std::move(name);
  handle_ = handle;
  opened_ = true;
}

bool CFile::OpenNoThrow(const GString& path, Access access, Mode mode, Sharing sharing) noexcept {
  try {
    Open(path, access, mode, sharing);
    return true;
  } catch (...) {
    return false;
  }
}

void CFile::Close() {
  const GString path = std::exchange(path_, GString());
  if (!Release()) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_CLOSE, path);
}

void CFile::Abort(bool removeFile) noexcept {
  const GString path = std::exchange(path_, GString());
  Release();
  if (removeFile) detail::RemoveQuietly(path);
}

void CFile::Flush() {
  if (handle_ != kNoHandle && !platform::CommitFile(handle_)) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_WRITE, path_);
  }
}

std::int64_t CFile::Seek(std::int64_t offset, Origin origin) {
  if (memory_) {
    if (offset < INT32_MIN || offset > INT32_MAX) {
      ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_SEEK, "memory file", "out of range");
    }
    return memory_->Seek(static_cast<int>(offset), static_cast<CMemoryFile::Origin>(origin));
  }
  if (!IsOpen()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  const std::int64_t position = platform::SeekFile(handle_, offset, origin);
  if (position < 0) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_SEEK, path_);
  return position;
}

bool CFile::Release() noexcept {
  const int handle = std::exchange(handle_, kNoHandle);
  memory_.reset();
  opened_ = false;
  return handle == kNoHandle || platform::CloseFile(handle);
}

unsigned int CFile::ReadFromHandle(void* data, unsigned int count) {
  if (!data) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (count == 0 || !IsOpen()) return 0;
  const std::int64_t got = platform::ReadFile(handle_, data, count);
  if (got < 0) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_READ, path_);
  return static_cast<unsigned int>(got);
}

void CFile::ReadAllFromHandle(void* data, unsigned int count) {
  if (ReadFromHandle(data, count) != count) FailForEarlyEnd();
}

void CFile::WriteToHandle(const void* data, unsigned int count) {
  if (!data) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (count == 0 || !IsOpen()) return;
  if (!platform::WriteFile(handle_, data, count)) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_WRITE, path_);
  }
}

void CFile::FailForEarlyEnd() const {
  ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_READ, path_.c_str(), "Unexpected end of file.");
}

}  // namespace vlm
