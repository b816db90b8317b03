#include <velum/core/TypedObject.h>

namespace vlm {

const CTypeInfo CTypedObject::ClassTypeId("CTypedObject", nullptr, nullptr);

CTypedObject::CTypedObject() noexcept = default;
CTypedObject::CTypedObject(const CTypedObject&) noexcept = default;
CTypedObject::~CTypedObject() = default;
CTypedObject& CTypedObject::operator=(const CTypedObject&) noexcept = default;

const CTypeInfo* CTypedObject::GetTypeId() const { return GetClassTypeId(); }

void CTypedObject::Serialize(Archive&) {}

const CTypeInfo* CTypedObject::GetClassTypeId() noexcept { return &ClassTypeId; }

bool CTypedObject::IsKindOf(const CTypeInfo* type) const { return GetTypeId()->IsKindOf(type); }

}  // namespace vlm
