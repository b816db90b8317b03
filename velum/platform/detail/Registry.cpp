#include <velum/platform/detail/Registry.h>

#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/UserFolders.h>

#include <pthread.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>

namespace vlm::platform {

namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kApplicationId = 0x766C6D72;  // "vlmr"

constexpr char kSetUp[] =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE IF NOT EXISTS entries("
    " root INTEGER NOT NULL,"
    " path TEXT NOT NULL COLLATE NOCASE,"
    " name TEXT NOT NULL COLLATE NOCASE,"
    " value,"
    " PRIMARY KEY(root, path, name)) WITHOUT ROWID;"
    "PRAGMA application_id = 1986817394;"
    "COMMIT";
static_assert(kApplicationId == 1986817394);

constexpr char kRead[] = "SELECT value FROM entries WHERE root = ?1 AND path = ?2 AND name = ?3";
constexpr char kWrite[] =
    "INSERT INTO entries(root, path, name, value) VALUES(?1, ?2, ?3, ?4)"
    " ON CONFLICT DO UPDATE SET value = excluded.value";
constexpr char kRemove[] = "DELETE FROM entries WHERE root = ?1 AND path = ?2 AND name = ?3";

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

struct CloseConnection {
  void operator()(sqlite3* connection) const noexcept { sqlite3_close_v2(connection); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

bool Run(sqlite3* connection, const char* sql) {
  return sqlite3_exec(connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// The first number of the first row; -1 for failure.
int Number(sqlite3* connection, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(connection, sql, -1, &statement, nullptr);
  const Statement owner(statement);
  return sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : -1;
}

Statement Prepare(sqlite3* connection, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v3(connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  return Statement(statement);
}

/// Gives a statement its arguments for one run, and takes them back after it.
class Bound {
 public:
  Bound(sqlite3_stmt* statement, const RegistryEntry& entry) : statement_(statement) {
    std::string_view path = entry.path.substr(0, entry.path.find('\0'));
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    path = path.substr(0, path.find_last_not_of('\\') + 1);
    sqlite3_bind_int64(statement, 1, entry.root);
    Text(2, path);
    Text(3, entry.name.substr(0, entry.name.find('\0')));
  }
  Bound(const Bound&) = delete;
  Bound& operator=(const Bound&) = delete;
  ~Bound() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }

  void Text(int number, std::string_view text) {
    // A null pointer would be no text.
    const char* const data = text.empty() ? "" : text.data();
    sqlite3_bind_text64(statement_, number, data, text.size(), SQLITE_STATIC, SQLITE_UTF8);
  }
  [[nodiscard]] int Step() { return sqlite3_step(statement_); }

 private:
  sqlite3_stmt* statement_;
};

/// The connection of the process. It is never destroyed, so that the destructors of an
/// application's static objects may still write; then it is opened once more, and the system closes
/// it.
class Store {
 public:
  static Store& Instance() {
    alignas(Store) static char room[sizeof(Store)];
    static Store* const store = Make(room);
    return *store;
  }

  void SetPath(const std::string& path) {
    const std::lock_guard lock(mutex_);
    Close(true);
    chosen_ = path;
  }

  bool Read(const RegistryEntry& entry, std::string& value) {
    const std::lock_guard lock(mutex_);
    if (!Open(false)) return false;
    Bound statement(read_.get(), entry);
    if (statement.Step() != SQLITE_ROW) return false;
    if (sqlite3_column_type(read_.get(), 0) != SQLITE_TEXT) return false;
    const unsigned char* const text = sqlite3_column_text(read_.get(), 0);
    if (!text) return false;
    value.assign(reinterpret_cast<const char*>(text),
                 static_cast<std::size_t>(sqlite3_column_bytes(read_.get(), 0)));
    return true;
  }

  RegistryResult Write(const RegistryEntry& entry, std::string_view value) {
    const std::lock_guard lock(mutex_);
    if (!Open(true)) return RegistryResult::kNotOpened;
    Bound statement(write_.get(), entry);
    statement.Text(4, value);
    return statement.Step() == SQLITE_DONE ? RegistryResult::kDone : RegistryResult::kNotWritten;
  }

  void Remove(const RegistryEntry& entry) {
    const std::lock_guard lock(mutex_);
    if (!Open(false)) return;
    static_cast<void>(Bound(remove_.get(), entry).Step());
  }

 private:
  /// Closes the connection when the process ends in order.
  struct AtExit {
    ~AtExit() {
      Store& store = Instance();
      const std::lock_guard lock(store.mutex_);
      store.Close(true);
    }
  };

  Store() = default;

  static Store* Make(void* room) {
    Store* const store = new (room) Store;
    // The locks that a connection holds belong to the process, and SQLite takes those of its parent
    // for its own: nothing may be open on either side.
    pthread_atfork(
        [] {
          Instance().mutex_.lock();
          Instance().Close(false);
        },
        [] { Instance().mutex_.unlock(); }, [] { Instance().mutex_.unlock(); });
    return store;
  }

  [[nodiscard]] std::string Path() const {
    if (!chosen_.empty()) return NativePath(chosen_.c_str());
    const char* const named = std::getenv("VELUM_REGISTRY");
    if (named && *named) return named;
    const std::string folder = UserConfigFolder();
    return folder.empty() ? folder : folder + "/velum/registry.db";
  }

  /// Opens the file, unless it is open; with `create` also one that is not there or has no table.
  bool Open(bool create) {
    if (connection_ && HasMoved()) Close(false);
    if (connection_) return true;
    const std::string path = Path();
    if (path.empty()) return false;
    const std::size_t name = path.rfind('/');
    if (create && name != std::string::npos && name > 0) {
      static_cast<void>(MakePrivateFolders(path.substr(0, name)));
    }
    sqlite3* opened = nullptr;
    const int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    connection_.reset(opened);
    if (result == SQLITE_OK && IsReady(create)) {
      static const AtExit atExit;
      return true;
    }
    Close(false);
    return false;
  }

  /// Makes sure that the file is a registry, or makes it one if it is empty.
  bool IsReady(bool create) {
    sqlite3* const connection = connection_.get();
    sqlite3_busy_timeout(connection, kBusyMilliseconds);
    int id = Number(connection, "PRAGMA application_id");
    if (create && id == 0 && Number(connection, "SELECT count(*) FROM sqlite_schema") == 0) {
      if (!Run(connection, "PRAGMA journal_mode = WAL") || !Run(connection, kSetUp)) return false;
      id = kApplicationId;
    }
    if (id != kApplicationId) return false;
    // A kill loses nothing in this mode; the log is put on the disk before it goes into the file.
    Run(connection, "PRAGMA synchronous = NORMAL");
    read_ = Prepare(connection, kRead);
    write_ = Prepare(connection, kWrite);
    remove_ = Prepare(connection, kRemove);
    return read_ && write_ && remove_;
  }

  /// True if another file, or none, stands at the path now. The system is asked ten times a second
  /// at most: it takes as long as a tenth of a write.
  [[nodiscard]] bool HasMoved() {
    const auto now = std::chrono::steady_clock::now();
    if (now - checked_ < std::chrono::milliseconds(100)) return false;
    checked_ = now;
    int moved = 0;
    sqlite3_file_control(connection_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
  }

  /// Closes the connection. With `settle` the last one to close puts the log into the file and
  /// removes it; without, nothing is touched that may be another file's by now.
  void Close(bool settle) {
    if (!connection_) return;
    if (!settle) {
      sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    read_.reset();
    write_.reset();
    remove_.reset();
    connection_.reset();
  }

  std::mutex mutex_;
  std::string chosen_;
  std::chrono::steady_clock::time_point checked_{};
  Connection connection_;
  Statement read_;
  Statement write_;
  Statement remove_;
};

}  // namespace

bool ReadRegistry(const RegistryEntry& entry, std::string& value) {
  return Store::Instance().Read(entry, value);
}

RegistryResult WriteRegistry(const RegistryEntry& entry, std::string_view value) {
  return Store::Instance().Write(entry, value);
}

void RemoveFromRegistry(const RegistryEntry& entry) noexcept {
  try {
    Store::Instance().Remove(entry);
  } catch (const std::bad_alloc&) {
  }
}

void SetRegistryPath(const std::string& path) { Store::Instance().SetPath(path); }

}  // namespace vlm::platform
