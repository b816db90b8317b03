#include <velum/files/BufferedFile.h>

#include <velum/core/Exception.h>
#include <velum/core/StringFormat.h>
#include <velum/core/detail/FormatDirective.h>
#include <velum/files/detail/FileError.h>
#include <velum/files/detail/OpenModes.h>
#include <velum/platform/detail/FileAccess.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstring>
#include <utility>

namespace vlm {

namespace {

/// True for a format without the directives that the library's language adds to C's.
bool IsPlainC(const char* at) {
  while ((at = std::strchr(at, '%'))) {
    detail::FormatDirective directive;
    if (*++at == '%') {
      ++at;
    } else if (!detail::ReadDirective(at, directive)) {
      return true;
    } else if (!directive.IsNative()) {
      return false;
    }
  }
  return true;
}

}  // namespace

CBufferedFile::CBufferedFile(const GString& path, const GString& mode, Sharing sharing,
                             bool removeOnAbort) {
  Open(path, mode, sharing, removeOnAbort);
}

CBufferedFile::~CBufferedFile() {
  if (opened_ && IsOpen()) Abort(removeOnAbort_);
}

std::int64_t CBufferedFile::GetPosition() const {
  if (memory_) return memory_->GetPosition();
  return stream_ ? std::ftell(stream_) : -1;
}

std::int64_t CBufferedFile::GetLength() const {
  if (memory_) return memory_->GetLength();
  if (!stream_) return -1;
  const long position = std::ftell(stream_);
  if (position < 0 || std::fseek(stream_, 0, SEEK_END) != 0) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_SEEK, path_);
  }
  const long length = std::ftell(stream_);
  if (std::fseek(stream_, position, SEEK_SET) != 0 || std::ftell(stream_) != position) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  return length;
}

bool CBufferedFile::EndOfFile() const {
  if (memory_) return memory_->EndOfFile();
  return !stream_ || std::feof(stream_);
}

void CBufferedFile::Open() {
  if (stream_) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  memory_ = std::make_unique<CMemoryFile>();
  path_.clear();
  opened_ = true;
}

void CBufferedFile::Open(void* data, unsigned int size) {
  if (stream_) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  memory_ = std::make_unique<CMemoryFile>(static_cast<unsigned char*>(data), size);
  path_.clear();
  opened_ = true;
}

void CBufferedFile::Open(const GString& path, const GString& mode, Sharing sharing,
                         bool removeOnAbort) {
  if (!OpenNoThrow(path, mode, sharing, removeOnAbort)) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_OPEN, path);
  }
}

bool CBufferedFile::OpenNoThrow(const GString& path, const GString& mode, Sharing sharing,
                                bool removeOnAbort) {
  if (path.empty() || mode.empty() || IsOpen() || sharing < ShareDenyAll ||
      sharing > ShareDenyNone) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  GString name(path);
  const auto wish = detail::ReadStreamMode(mode.String(), sharing);
  if (wish) stream_ = platform::OpenStream(name.c_str(), *wish);
  if (!stream_) return false;
  path_ = std::move(name);
  removeOnAbort_ = removeOnAbort;
  opened_ = true;
  return true;
}

void CBufferedFile::Close() {
  const GString path = std::exchange(path_, GString());
  if (stream_) std::clearerr(stream_);
  if (!Release()) detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_CLOSE, path);
}

void CBufferedFile::Abort(bool removeFile) noexcept {
  const GString path = std::exchange(path_, GString());
  Release();
  if (removeFile) detail::RemoveQuietly(path);
}

unsigned int CBufferedFile::Read(void* data, unsigned int count) {
  if (!data) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (memory_) return memory_->Read(data, count);
  if (!stream_ || count == 0) return 0;
  const std::size_t got = std::fread(data, 1, count, stream_);
  if (got == 0 && std::ferror(stream_)) Fail(__LINE__, ERR_READ);
  return static_cast<unsigned int>(got);
}

void CBufferedFile::ReadN(void* data, unsigned int count) {
  if (Read(data, count) != count) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_END_OF_FILE, path_.c_str());
  }
}

int CBufferedFile::Getc() {
  if (memory_) return memory_->Getc();
  if (!stream_) return -1;
  const int c = std::getc(stream_);
  if (c == EOF && std::ferror(stream_)) Fail(__LINE__, ERR_READ);
  return c;
}

int CBufferedFile::UnGetc(int c) {
  if (memory_) return memory_->UnGetc(c);
  return stream_ ? std::ungetc(c, stream_) : -1;
}

char* CBufferedFile::ReadString(char* buffer, unsigned int size) {
  if (!buffer) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (memory_) return memory_->ReadString(buffer, size);
  if (!stream_ || size == 0) return nullptr;
  const auto limit = static_cast<int>(std::min<unsigned int>(size, INT_MAX));
  char* const text = std::fgets(buffer, limit, stream_);
  if (!text && !std::feof(stream_)) Fail(__LINE__, ERR_READ);
  return text;
}

bool CBufferedFile::ReadString(std::string& line) {
  line.clear();
  if (memory_) {
    ReadLineFromMemory(line);
  } else if (stream_ && !platform::AppendLine(stream_, line) && std::ferror(stream_)) {
    Fail(__LINE__, ERR_READ);
  }
  if (line.empty()) return false;
  if (line.back() == '\n') {
    line.pop_back();
    if (!line.empty() && line.back() == '\r') line.pop_back();
  }
  return true;
}

void CBufferedFile::Write(const void* data, unsigned int count) {
  if (!data) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (memory_) {
    memory_->Write(data, count);
  } else if (stream_ && std::fwrite(data, 1, count, stream_) != count) {
    Fail(__LINE__, ERR_WRITE);
  }
}

int CBufferedFile::Putc(int c) {
  if (memory_) return memory_->Putc(c);
  if (!stream_) return -1;
  const int put = std::putc(c, stream_);
  if (put == EOF) Fail(__LINE__, ERR_WRITE);
  return put;
}

void CBufferedFile::WriteString(const char* text) {
  if (!text) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  std::size_t left = std::strlen(text);
  while (left > 0) {
    const auto count = static_cast<unsigned int>(std::min<std::size_t>(left, UINT_MAX));
    Write(text, count);
    text += count;
    left -= count;
  }
}

int CBufferedFile::Printf(const char* format, ...) {
  if (!format) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (!IsOpen()) return -1;
  std::string text;
  int count = -1;
  errno = EINVAL;  // What a format that nobody takes comes to.
  va_list arguments;
  va_start(arguments, format);
  if (stream_ && IsPlainC(format)) {
    count = std::vfprintf(stream_, format, arguments);
  } else if (FormatStringVA(text, format, arguments)) {
    count = static_cast<int>(text.size());
  }
  va_end(arguments);
  if (count < 0) Fail(__LINE__, ERR_WRITE);
  Write(text.data(), static_cast<unsigned int>(text.size()));
  return count;
}

void CBufferedFile::Flush() {
  if (stream_ && std::fflush(stream_) != 0) Fail(__LINE__, ERR_WRITE);
}

std::int64_t CBufferedFile::Seek(std::int64_t offset, Origin origin) {
  if (!IsOpen()) return -1;
  if (offset < INT32_MIN || offset > INT32_MAX) {
    const char* const name = memory_ ? "memory file" : path_.c_str();
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_SEEK, name, "out of range");
  }
  if (memory_) {
    return memory_->Seek(static_cast<int>(offset), static_cast<CMemoryFile::Origin>(origin));
  }
  static_assert(SEEK_SET == OriginBegin && SEEK_CUR == OriginCurrent && SEEK_END == OriginEnd);
  if (std::fseek(stream_, static_cast<long>(offset), origin) != 0) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_SEEK, path_);
  }
  return GetPosition();
}

void CBufferedFile::Rewind() {
  if (memory_) memory_->Seek(0, CMemoryFile::OriginBegin);
  if (stream_) std::rewind(stream_);
}

bool CBufferedFile::Release() noexcept {
  std::FILE* const stream = std::exchange(stream_, nullptr);
  memory_.reset();
  opened_ = false;
  return !stream || std::fclose(stream) == 0;
}

void CBufferedFile::ReadLineFromMemory(std::string& line) {
  const unsigned int position = memory_->GetPosition();
  if (memory_->EndOfFile()) return;
  const char* const start = reinterpret_cast<const char*>(memory_->GetBuffer()) + position;
  const unsigned int left = memory_->GetLength() - position;
  const void* const feed = std::memchr(start, '\n', left);
  const auto count =
      feed ? static_cast<unsigned int>(static_cast<const char*>(feed) - start) + 1 : left;
  line.resize(count);
  memory_->Read(line.data(), count);
}

void CBufferedFile::Fail(int line, int code) const {
  const int error = errno;
  if (stream_) std::clearerr(stream_);
  errno = error;
  detail::ThrowSystemError(__FILE_NAME__, line, code, path_);
}

}  // namespace vlm
