#pragma once

/// \file
/// Who may open a file while others have it open.
///
///     vlm::platform::Sharing wish;
///     wish.reads = wish.deniesWrite = true;
///     if (!vlm::platform::ClaimSharing(descriptor, wish, false)) close(descriptor);

namespace vlm::platform {

/// What an opener does with a file and lets nobody else do.
struct Sharing {
  bool reads = false;        ///< Reads the file.
  bool writes = false;       ///< Writes the file.
  bool deniesRead = false;   ///< Lets nobody else read.
  bool deniesWrite = false;  ///< Lets nobody else write.
};

/// Claims an open file for as long as the descriptor, or a copy of it, is open. `empties` is a wish
/// to write that ends with this call.
///
/// False if another opener, in this process or another, denies what this one does or does what this
/// one denies; the claim then ends when the descriptor is closed. Of openers that come at the same
/// moment one gets in. A file that can't be locked is claimed without effect: what is not a regular
/// file, or lies on a file system without locks.
[[nodiscard]] bool ClaimSharing(int descriptor, const Sharing& wish, bool empties) noexcept;

}  // namespace vlm::platform
