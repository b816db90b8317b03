#include <velum/fonts/UCS2DecompIF.h>

#include <utility>

namespace vlm {

UCS2DecompSubSet::UCS2DecompSubSet(const std::wstring& text, std::shared_ptr<const CFaceInfo> face,
                                   bool rtl)
    : text_(text), face_(std::move(face)), rtl_(rtl) {}

UCS2DecompSubSet::UCS2DecompSubSet(const UCS2DecompSubSet& other) = default;
UCS2DecompSubSet& UCS2DecompSubSet::operator=(const UCS2DecompSubSet& other) = default;
UCS2DecompSubSet::~UCS2DecompSubSet() = default;

UCS2DecompIF::~UCS2DecompIF() = default;

}  // namespace vlm
