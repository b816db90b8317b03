#include <velum/platform/detail/Registry.h>

#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/UserFolders.h>

#include <fcntl.h>
#include <pthread.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <thread>

namespace vlm::platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kLongestWait(5);
constexpr std::chrono::milliseconds kWaitStep(1);
constexpr char kApplicationId[] = "1986817394";  // "vlmr" in ASCII.

constexpr char kSetUp[] =
    "CREATE TABLE entries("
    " root INTEGER NOT NULL,"
    " path TEXT NOT NULL COLLATE NOCASE,"
    " name TEXT NOT NULL COLLATE NOCASE,"
    " value,"
    " PRIMARY KEY(root, path, name)) WITHOUT ROWID;"
    "PRAGMA application_id = 1986817394";

constexpr char kReadEntry[] =
    "SELECT value FROM entries WHERE root = ?1 AND path = ?2 AND name = ?3";
constexpr char kWriteEntry[] =
    "INSERT INTO entries(root, path, name, value) VALUES(?1, ?2, ?3, ?4)"
    " ON CONFLICT DO UPDATE SET value = excluded.value";
constexpr char kRemoveEntry[] = "DELETE FROM entries WHERE root = ?1 AND path = ?2 AND name = ?3";

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

struct CloseConnection {
  void operator()(sqlite3* connection) const noexcept { sqlite3_close_v2(connection); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

/// True for a failure that is over when another process has done its work.
bool IsBusy(int result) {
  return (result & 0xFF) == SQLITE_BUSY || (result & 0xFF) == SQLITE_PROTOCOL;
}

int Run(sqlite3* connection, const char* sql) {
  return sqlite3_exec(connection, sql, nullptr, nullptr, nullptr);
}

int Prepare(sqlite3* connection, const char* sql, Statement& statement) {
  sqlite3_stmt* made = nullptr;
  const int result =
      sqlite3_prepare_v3(connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &made, nullptr);
  statement.reset(made);
  return result;
}

/// Gets the first text of the first row.
int Ask(sqlite3* connection, const char* sql, std::string& answer) {
  Statement statement;
  const int prepared = Prepare(connection, sql, statement);
  if (prepared != SQLITE_OK) return prepared;
  const int result = sqlite3_step(statement.get());
  if (result != SQLITE_ROW) return result == SQLITE_DONE ? SQLITE_ERROR : result;
  const unsigned char* const text = sqlite3_column_text(statement.get(), 0);
  answer = text ? reinterpret_cast<const char*>(text) : "";
  return SQLITE_OK;
}

/// Does all of `work` or nothing, which sees and leaves one state of the file.
template <class Work>
int InTransaction(sqlite3* connection, const char* begin, Work work) {
  int result = Run(connection, begin);
  if (result != SQLITE_OK) return result;
  result = work();
  if (result == SQLITE_OK) result = Run(connection, "COMMIT");
  if (result != SQLITE_OK) Run(connection, "ROLLBACK");
  return result;
}

enum class Contents { kNothing, kRegistry, kOther };

/// Tells what is in the file; in a transaction, so that nobody makes it something else meanwhile.
int Look(sqlite3* connection, Contents& contents) {
  std::string id;
  std::string tables;
  int result = Ask(connection, "PRAGMA application_id", id);
  if (result == SQLITE_OK) {
    result = Ask(connection, "SELECT count(*) FROM sqlite_schema", tables);
  }
  contents = id == kApplicationId         ? Contents::kRegistry
             : id == "0" && tables == "0" ? Contents::kNothing
                                          : Contents::kOther;
  return result;
}

/// Asks for write-ahead logging, where the file system has it.
int UseLog(sqlite3* connection) {
  std::string mode;
  const int result = Ask(connection, "PRAGMA journal_mode = WAL", mode);
  if (result != SQLITE_OK || mode != "wal") return result;
  // A kill loses nothing in this mode; the log is put on the disk before it goes into the file.
  return Run(connection, "PRAGMA synchronous = NORMAL");
}

bool IsThere(const std::string& path, int access) {
  return ::faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0;
}

/// The file at a path in the form that takes further wishes.
std::string UriOf(const std::string& path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string uri = "file:";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain = c != '%' && c != '?' && c != '#' && byte > ' ' && byte < 0x7F;
    uri += isPlain ? std::string{c} : std::string{'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return uri;
}

/// Gives a statement its arguments for one run, and takes them back after it.
class Bound {
 public:
  Bound(sqlite3_stmt* statement, const RegistryEntry& entry) : statement_(statement) {
    std::string_view path = entry.path.substr(0, entry.path.find('\0'));
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    path = path.substr(0, path.find_last_not_of('\\') + 1);
    result_ = sqlite3_bind_int64(statement, 1, entry.root);
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
    const int result =
        sqlite3_bind_text64(statement_, number, data, text.size(), SQLITE_STATIC, SQLITE_UTF8);
    if (result_ == SQLITE_OK) result_ = result;
  }
  /// Runs the statement up to its first row, unless an argument was refused.
  [[nodiscard]] int Step() { return result_ == SQLITE_OK ? sqlite3_step(statement_) : result_; }

 private:
  sqlite3_stmt* statement_;
  int result_;
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
    chosen_.reset();
    if (!path.empty()) chosen_ = AbsoluteNativePath(NativePath(path.c_str()));
    named_.clear();
  }

  bool Read(const RegistryEntry& entry, std::string& value) {
    return Repeat([&] {
             const int opened = Open(Purpose::kRead);
             if (opened != SQLITE_OK) return opened;
             const int result = ReadOnce(entry, value);
             // What is taken to stay as it is must not be so for longer than this.
             if (isFrozen_) Close(false);
             return result;
           }) == SQLITE_ROW;
  }

  RegistryResult Write(const RegistryEntry& entry, std::string_view value) {
    bool isOpen = false;
    const int result = Repeat([&] {
      const int opened = Open(Purpose::kWrite);
      isOpen = opened == SQLITE_OK;
      if (!isOpen) return opened;
      Bound statement(write_.get(), entry);
      statement.Text(4, value);
      return statement.Step();
    });
    if (result == SQLITE_DONE) return RegistryResult::kDone;
    const bool mayWrite = isOpen && (result & 0xFF) != SQLITE_READONLY;
    return mayWrite ? RegistryResult::kNotWritten : RegistryResult::kNotOpened;
  }

  void Remove(const RegistryEntry& entry) {
    Repeat([&] {
      const int opened = Open(Purpose::kRemove);
      return opened == SQLITE_OK ? Bound(remove_.get(), entry).Step() : opened;
    });
  }

 private:
  enum class Purpose { kRead, kRemove, kWrite };

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

  /// Tries while another process is in the way. Between two tries other threads have their turn,
  /// and the process may fork.
  template <class Try>
  int Repeat(Try attempt) {
    const Clock::time_point last = Clock::now() + kLongestWait;
    for (;;) {
      {
        const std::lock_guard lock(mutex_);
        const int result = attempt();
        if (!IsBusy(result) || Clock::now() >= last) return result;
      }
      std::this_thread::sleep_for(kWaitStep);
    }
  }

  /// Where the file is. The path has its folder with it from the first time on, whatever becomes
  /// the current one; so it is none of the names, either, that mean something else to SQLite.
  [[nodiscard]] std::string Path() {
    if (chosen_) return *chosen_;
    const char* const named = std::getenv("VELUM_REGISTRY");
    if (named && *named) {
      if (named_ != named) {
        namedPath_ = AbsoluteNativePath(named);
        named_ = named;
      }
      return namedPath_;
    }
    const std::string folder = UserConfigFolder();
    return folder.empty() ? folder : folder + "/velum/registry.db";
  }

  /// Opens the file, unless it is open; for a write also one that is not there or has no table.
  int Open(Purpose purpose) {
    if (connection_ && (HasMoved() || (purpose != Purpose::kRead && IsReadOnly()))) Close(false);
    int result = connection_ ? SQLITE_OK : Connect(purpose);
    if (result == SQLITE_OK && purpose != Purpose::kRead && !hasLog_) {
      result = UseLog(connection_.get());
      hasLog_ = result == SQLITE_OK;
    }
    return result;
  }

  int Connect(Purpose purpose) {
    const std::string path = Path();
    if (path.empty()) return SQLITE_CANTOPEN;
    const std::size_t name = path.rfind('/');
    const bool create = purpose == Purpose::kWrite;
    if (create && name > 0) static_cast<void>(MakePrivateFolders(path.substr(0, name)));
    const int result =
        ConnectTo(path, SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0), create);
    const bool isKnown = result == SQLITE_OK || result == SQLITE_NOTADB || IsBusy(result);
    if (isKnown || purpose != Purpose::kRead || !IsThere(path, R_OK)) return result;
    // Where nothing may be written the log can't be used. Without one the file is whole.
    if (IsThere(path + "-wal", F_OK) || IsThere(path + "-journal", F_OK)) return result;
    const std::string frozen = UriOf(path) + "?immutable=1";
    isFrozen_ = ConnectTo(frozen, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, false) == SQLITE_OK;
    return isFrozen_ ? SQLITE_OK : result;
  }

  int ConnectTo(const std::string& name, int flags, bool create) {
    sqlite3* opened = nullptr;
    int result = sqlite3_open_v2(name.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    connection_.reset(opened);
    if (result == SQLITE_OK) result = MakeReady(create);
    if (result != SQLITE_OK) {
      Close(false);
      return result;
    }
    static const AtExit atExit;
    return SQLITE_OK;
  }

  /// Makes sure that the file is a registry, or makes it one if it is empty.
  int MakeReady(bool create) {
    sqlite3* const connection = connection_.get();
    Contents contents = Contents::kOther;
    const auto look = [&] { return Look(connection, contents); };
    const auto setUp = [&] {
      const int result = look();
      if (result != SQLITE_OK || contents != Contents::kNothing) return result;
      contents = Contents::kRegistry;
      return Run(connection, kSetUp);
    };
    int result = InTransaction(connection, "BEGIN", look);
    if (result == SQLITE_OK && create && contents == Contents::kNothing) {
      result = UseLog(connection);
      if (result == SQLITE_OK) result = InTransaction(connection, "BEGIN IMMEDIATE", setUp);
    }
    if (result == SQLITE_OK && contents != Contents::kRegistry) result = SQLITE_NOTADB;
    if (result == SQLITE_OK) result = Prepare(connection, kReadEntry, read_);
    if (result == SQLITE_OK) result = Prepare(connection, kWriteEntry, write_);
    if (result == SQLITE_OK) result = Prepare(connection, kRemoveEntry, remove_);
    return result;
  }

  int ReadOnce(const RegistryEntry& entry, std::string& value) {
    Bound statement(read_.get(), entry);
    const int result = statement.Step();
    if (result != SQLITE_ROW) return result;
    if (sqlite3_column_type(read_.get(), 0) != SQLITE_TEXT) return SQLITE_MISMATCH;
    const unsigned char* const text = sqlite3_column_text(read_.get(), 0);
    if (!text) return SQLITE_NOMEM;
    value.assign(reinterpret_cast<const char*>(text),
                 static_cast<std::size_t>(sqlite3_column_bytes(read_.get(), 0)));
    return result;
  }

  [[nodiscard]] bool IsReadOnly() const {
    return sqlite3_db_readonly(connection_.get(), "main") == 1;
  }

  /// True if another file, or none, stands at the path now. The system is asked ten times a second
  /// at most: it takes as long as a tenth of a write.
  [[nodiscard]] bool HasMoved() {
    const Clock::time_point now = Clock::now();
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
    hasLog_ = false;
    isFrozen_ = false;
  }

  std::mutex mutex_;
  std::optional<std::string> chosen_;  ///< What `SetPath` named, if anything.
  std::string named_;                  ///< What the environment named last.
  std::string namedPath_;              ///< Where that is.
  Clock::time_point checked_{};
  Connection connection_;
  bool hasLog_ = false;    ///< The connection has asked for write-ahead logging.
  bool isFrozen_ = false;  ///< SQLite takes the file for one that nobody changes.
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
