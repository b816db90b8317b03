#include <velum/files/RegParamList.h>

#include <velum/core/Exception.h>
#include <velum/files/Path.h>
#include <velum/files/detail/SettingText.h>
#include <velum/platform/detail/Registry.h>

#include <limits>
#include <string>
#include <utility>

namespace vlm {

namespace {

/// Where an entry stands, as long as the texts do.
platform::RegistryEntry EntryOf(HKEY root, const GString& subKey, const GString& key) {
  const auto number = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(root));
  return {number, subKey.String(), key.String()};
}

}  // namespace

CRegParamList::CRegParamList(HKEY root, const GString& subKey) : root_(root), subKey_(subKey) {}
CRegParamList::CRegParamList(const CRegParamList&) = default;
CRegParamList::~CRegParamList() = default;
CRegParamList& CRegParamList::operator=(const CRegParamList&) = default;

void CRegParamList::DoSet(const GString& key, const GString& value, bool persistent) {
  const auto [known, isNew] = cache_.try_emplace(key);
  if (!isNew && known->second == value) return;
  known->second = value;
  if (!persistent) return;
  switch (platform::WriteRegistry(EntryOf(root_, subKey_, key), value.String())) {
    case platform::RegistryResult::kDone:
      return;
    case platform::RegistryResult::kNotOpened:
      ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_OPEN_REGISTRY_KEY, subKey_.c_str());
    case platform::RegistryResult::kNotWritten:
      ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_WRITE_REGISTRY_KEY, key.c_str());
  }
}

bool CRegParamList::DoGet(const GString& key, GString& value, bool persistent) const {
  auto known = cache_.find(key);
  if (known == cache_.end()) {
    std::string text;
    if (persistent && !platform::ReadRegistry(EntryOf(root_, subKey_, key), text)) text.clear();
    known = cache_.emplace(key, std::move(text)).first;
  }
  if (known->second.empty()) return false;
  value = known->second;
  return true;
}

void CRegParamList::SetRoot(HKEY root, const GString& subKey) {
  subKey_ = subKey;
  root_ = root;
  cache_.clear();
}

void CRegParamList::Remove(const GString& key, bool persistent) {
  if (persistent) platform::RemoveFromRegistry(EntryOf(root_, subKey_, key));
  cache_.erase(key);
}

bool CRegParamList::Get(const GString& key, GString& value, bool persistent) const {
  return DoGet(key, value, persistent);
}

bool CRegParamList::Get(const GString& key, int& value, bool persistent) const {
  GString text;
  return DoGet(key, text, persistent) && detail::ScanSetting(text, value);
}

bool CRegParamList::Get(const GString& key, unsigned int& value, bool persistent) const {
  GString text;
  return DoGet(key, text, persistent) && detail::ScanSetting(text, value);
}

bool CRegParamList::Get(const GString& key, unsigned long& value, bool persistent) const {
  GString text;
  return DoGet(key, text, persistent) && detail::ScanSetting(text, value);
}

bool CRegParamList::Get(const GString& key, std::int64_t& value, bool persistent) const {
  GString text;
  return DoGet(key, text, persistent) && detail::ScanSetting(text, value);
}

bool CRegParamList::Get(const GString& key, double& value, bool persistent) const {
  GString text;
  return DoGet(key, text, persistent) && detail::ScanSetting(text, value);
}

bool CRegParamList::Get(const GString& key, bool& value, bool persistent) const {
  GString text;
  return DoGet(key, text, persistent) && detail::ScanSetting(text, value);
}

GString CRegParamList::GetDef(const GString& key, const GString& otherwise, bool persistent) const {
  GString value;
  return Get(key, value, persistent) ? value : otherwise;
}

GString CRegParamList::GetDef(const GString& key, const char* otherwise, bool persistent) const {
  GString value;
  if (!Get(key, value, persistent) && otherwise) value = otherwise;
  return value;
}

int CRegParamList::GetDef(const GString& key, int otherwise, bool persistent) const {
  int value = 0;
  return Get(key, value, persistent) ? value : otherwise;
}

unsigned int CRegParamList::GetDef(const GString& key, unsigned int otherwise,
                                   bool persistent) const {
  unsigned int value = 0;
  return Get(key, value, persistent) ? value : otherwise;
}

std::int64_t CRegParamList::GetDef(const GString& key, std::int64_t otherwise,
                                   bool persistent) const {
  std::int64_t value = 0;
  return Get(key, value, persistent) ? value : otherwise;
}

double CRegParamList::GetDef(const GString& key, double otherwise, bool persistent) const {
  double value = 0;
  return Get(key, value, persistent) ? value : otherwise;
}

bool CRegParamList::GetDef(const GString& key, bool otherwise, bool persistent) const {
  bool value = false;
  return Get(key, value, persistent) ? value : otherwise;
}

void CRegParamList::Set(const GString& key, const GString& value, bool persistent) {
  DoSet(key, value, persistent);
}

void CRegParamList::Set(const GString& key, const char* value, bool persistent) {
  DoSet(key, value ? value : "", persistent);
}

void CRegParamList::Set(const GString& key, int value, bool persistent) {
  DoSet(key, detail::SettingText(value), persistent);
}

void CRegParamList::Set(const GString& key, unsigned int value, bool persistent) {
  DoSet(key, detail::SettingText(value), persistent);
}

void CRegParamList::Set(const GString& key, unsigned long value, bool persistent) {
  if (value > std::numeric_limits<std::uint32_t>::max()) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  }
  DoSet(key, detail::SettingText(static_cast<unsigned int>(value)), persistent);
}

void CRegParamList::Set(const GString& key, std::int64_t value, bool persistent) {
  DoSet(key, detail::SettingText(value), persistent);
}

void CRegParamList::Set(const GString& key, double value, bool persistent) {
  DoSet(key, detail::SettingText(value), persistent);
}

void CRegParamList::Set(const GString& key, bool value, bool persistent) {
  DoSet(key, detail::SettingText(value), persistent);
}

void SetRegistryFile(const GString& path) {
  const GString full = path.empty() ? path : CPath(path).GetFullPath();
  // A path that has no full form stays as it is: going back to the user's own file would be worse.
  platform::SetRegistryPath(full.empty() ? path.String() : full.String());
}

}  // namespace vlm
