#include <velum/core/GString.h>

#include <velum/core/StandardErrors.h>
#include <velum/core/StringConvert.h>
#include <velum/core/StringFormat.h>
#include <velum/core/StringText.h>
#include <velum/core/WideText.h>

#include <cstring>
#include <typeinfo>

namespace vlm {

namespace {

// Named, so that every compiler exports it with the library: a `boost::any` of one module is asked
// for its text by another.
[[gnu::used]] const std::type_info* const kTextType = &typeid(GString);

void RequirePosition(std::size_t position, const std::string& text) {
  if (position > text.size()) throw OutOfRangeError("invalid string position");
}

}  // namespace

void GString::ThrowTooLong() { throw LengthError("string too long"); }

GString GString::Join(const char* a, std::size_t aSize, const char* b, std::size_t bSize) {
  GString joined;
  joined.text_.reserve(Room(aSize + bSize));
  joined.text_.append(a, aSize).append(b, bSize);
  return joined;
}

GString GString::substr(unsigned int position, unsigned int count) const {
  RequirePosition(position, text_);
  return text_.substr(position, count);
}

GString& GString::assign(const char* text, unsigned int count) {
  text_.assign(text, Room(count));
  return *this;
}

GString& GString::erase(unsigned int position, unsigned int count) {
  RequirePosition(position, text_);
  text_.erase(position, count);
  return *this;
}

GString& GString::append(unsigned int count, char c) {
  Room(text_.size() + count);
  text_.append(count, c);
  return *this;
}

GString& GString::append(const char* text) { return Append(text, std::strlen(text)); }

GString& GString::append(const char* text, unsigned int count) { return Append(text, count); }

GString& GString::operator=(const std::string& text) {
  text_ = Checked(text);
  return *this;
}

GString& GString::operator=(std::string&& text) {
  text_ = std::move(Checked(text));
  return *this;
}

GString& GString::operator=(const char* text) {
  text_.assign(text, Room(std::strlen(text)));
  return *this;
}

GString& GString::operator=(char c) {
  text_ = c;
  return *this;
}

GString& GString::operator+=(char c) { return Append(&c, 1); }

const std::string& GString::ToNarrow(unsigned int /*codePage*/) const noexcept { return text_; }

std::wstring GString::ToWide(unsigned int codePage) const {
  return static_cast<const wchar_t*>(AtoW(text_, codePage));
}

std::string GString::WtoAForDiagnostics() const { return text_; }

GString& GString::FromNarrow(const char* text, unsigned int /*codePage*/) { return *this = text; }

GString& GString::FromWide(const wchar_t* text, unsigned int codePage) {
  const WtoA narrow(text, codePage);
  return *this = narrow ? static_cast<const char*>(narrow) : "";
}

bool GString::ToBool(bool& value) const { return StringToBool(text_, value); }
bool GString::ToDouble(double& value) const { return StringToDouble(text_, value); }
bool GString::ToInt(int& value) const { return StringToInt(text_, value); }
bool GString::ToInt64(std::int64_t& value) const { return StringToInt64(text_, value); }
bool GString::ToUnsignedInt(unsigned int& value) const { return StringToUnsigned(text_, value); }

GString GString::ToLower() const { return vlm::ToLower(text_); }
GString GString::ToUpper() const { return vlm::ToUpper(text_); }
void GString::MakeLower() { vlm::MakeLower(text_); }
void GString::MakeUpper() { vlm::MakeUpper(text_); }

GString& GString::Trim() {
  vlm::Trim(text_);
  return *this;
}

GString& GString::TrimLeft() {
  vlm::TrimLeft(text_);
  return *this;
}

GString& GString::TrimRight() {
  vlm::TrimRight(text_);
  return *this;
}

GString GString::ParseToken(unsigned int& position, char delimiter) const {
  return vlm::ParseToken(text_, position, delimiter);
}

bool GString::WildCmp(const GString& pattern, bool caseSensitive) const {
  return vlm::WildCmp(pattern.c_str(), c_str(), caseSensitive);
}

bool GString::FormatString(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const bool done = FormatStringVA(format, arguments);
  va_end(arguments);
  return done;
}

bool GString::FormatStringVA(const char* format, va_list arguments) {
  return vlm::FormatStringVA(text_, format, arguments);
}

bool GString::AppendFormatString(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  GString tail;
  const bool done = tail.FormatStringVA(format, arguments);
  va_end(arguments);
  if (done) *this += tail;
  return done;
}

}  // namespace vlm
