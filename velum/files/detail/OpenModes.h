#pragma once

/// \file
/// The modes that files are opened in, as wishes to the system.
///
///     const auto wish = vlm::detail::ReadStreamMode("r+b", vlm::CFile::ShareDenyNone);
///     if (wish) stream = vlm::platform::OpenStream("\\tmp\\a.txt", *wish);

#include <velum/platform/detail/FileAccess.h>

#include <optional>
#include <string_view>

namespace vlm::detail {

/// Takes over what a sharing mode denies others. `sharing` is its number, which is the same in all
/// classes of files.
void Deny(int sharing, platform::OpenWish& wish) noexcept;

/// How C's `fopen` opens a file in `mode`, which is not empty, with a sharing mode as above;
/// nothing for letters that make no mode, which leaves EINVAL in errno.
[[nodiscard]] std::optional<platform::OpenWish> ReadStreamMode(std::string_view mode, int sharing);

}  // namespace vlm::detail
