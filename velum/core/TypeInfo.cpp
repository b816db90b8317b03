#include <velum/core/TypeInfo.h>

#include <map>
#include <string_view>

namespace vlm {

namespace {

using Records = std::map<std::string_view, const CTypeInfo*>;

/// Never destroyed, since records may be destroyed at any time while the process ends.
Records& AllRecords() {
  static Records& records = *new Records;
  return records;
}

}  // namespace

CTypeInfo::CTypeInfo(const char* name, void* (*creator)(), const CTypeInfo* parent)
    : name_(name), creator_(creator), parent_(parent) {
  if (name_) AllRecords().emplace(name_, this);
}

CTypeInfo::CTypeInfo(const char* name) noexcept
    : name_(name), creator_(nullptr), parent_(nullptr) {}

CTypeInfo::~CTypeInfo() {
  if (name_) AllRecords().erase(name_);
}

const CTypeInfo* CTypeInfo::FromName(const char* name) {
  if (!name) return nullptr;
  const auto found = AllRecords().find(name);
  return found == AllRecords().end() ? nullptr : found->second;
}

void* CTypeInfo::CreateInstance() const { return creator_ ? creator_() : nullptr; }

bool CTypeInfo::IsKindOf(const CTypeInfo* other) const noexcept {
  const CTypeInfo* record = this;
  while (record && record != other) record = record->parent_;
  return record != nullptr;
}

}  // namespace vlm
