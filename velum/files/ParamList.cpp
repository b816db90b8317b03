#include <velum/files/ParamList.h>

#include <velum/files/detail/SettingText.h>

#include <string>

namespace vlm {

CParamList::CParamList() = default;
CParamList::CParamList(const CParamList&) = default;
CParamList::~CParamList() = default;
CParamList& CParamList::operator=(const CParamList&) = default;

void CParamList::DoSet(const GString& key, const GString& value) { (*this)[key] = value; }

bool CParamList::DoGet(const GString& key, GString& value) const {
  const auto found = find(key);
  if (found == end()) return false;
  value = found->second;
  return true;
}

GString CParamList::Concat(const GString& key, int n) {
  GString name = key;
  name += std::to_string(n).c_str();
  return name;
}

bool CParamList::Get(const GString& key, GString& value) const { return DoGet(key, value); }

bool CParamList::Get(const GString& key, int& value) const {
  GString text;
  return DoGet(key, text) && detail::ScanSetting(text, value);
}

bool CParamList::Get(const GString& key, unsigned int& value) const {
  GString text;
  return DoGet(key, text) && detail::ScanSetting(text, value);
}

bool CParamList::Get(const GString& key, double& value) const {
  GString text;
  return DoGet(key, text) && detail::ScanSetting(text, value);
}

bool CParamList::Get(const GString& key, bool& value) const {
  GString text;
  return DoGet(key, text) && detail::ScanSetting(text, value);
}

bool CParamList::GetN(const GString& key, int n, GString& value) const {
  return Get(Concat(key, n), value);
}

bool CParamList::GetN(const GString& key, int n, int& value) const {
  return Get(Concat(key, n), value);
}

bool CParamList::GetN(const GString& key, int n, unsigned int& value) const {
  return Get(Concat(key, n), value);
}

bool CParamList::GetN(const GString& key, int n, double& value) const {
  return Get(Concat(key, n), value);
}

bool CParamList::GetN(const GString& key, int n, bool& value) const {
  return Get(Concat(key, n), value);
}

void CParamList::Set(const GString& key, const GString& value) { DoSet(key, value); }
void CParamList::Set(const GString& key, const char* value) { DoSet(key, value ? value : ""); }
void CParamList::Set(const GString& key, int value) { DoSet(key, detail::SettingText(value)); }
void CParamList::Set(const GString& key, unsigned int value) {
  DoSet(key, detail::SettingText(value));
}
void CParamList::Set(const GString& key, double value) { DoSet(key, detail::SettingText(value)); }
void CParamList::Set(const GString& key, bool value) { DoSet(key, detail::SettingText(value)); }

void CParamList::SetN(const GString& key, int n, const GString& value) {
  Set(Concat(key, n), value);
}
void CParamList::SetN(const GString& key, int n, const char* value) { Set(Concat(key, n), value); }
void CParamList::SetN(const GString& key, int n, int value) { Set(Concat(key, n), value); }
void CParamList::SetN(const GString& key, int n, unsigned int value) { Set(Concat(key, n), value); }
void CParamList::SetN(const GString& key, int n, double value) { Set(Concat(key, n), value); }
void CParamList::SetN(const GString& key, int n, bool value) { Set(Concat(key, n), value); }

}  // namespace vlm
