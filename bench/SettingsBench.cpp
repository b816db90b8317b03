#include <velum/files/ConfigFile.h>
#include <velum/files/ParamList.h>
#include <velum/files/RegParamList.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <glib.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kNames = 1000;

const vlm::testing::TemporaryFolder& Folder() {
  static const vlm::testing::TemporaryFolder folder;
  return folder;
}

template <class Text>
std::vector<Text> Names() {
  std::vector<Text> names;
  for (std::size_t i = 0; i < kNames; ++i) names.emplace_back("Axis.Title." + std::to_string(i));
  return names;
}

/// One step of `work` for each name in turn.
template <class Text, class Work>
void Row(const char* name, Work work) {
  benchmark::RegisterBenchmark(name,
                               [work, names = Names<Text>()](benchmark::State& state) mutable {
                                 std::size_t step = 0;
                                 for (auto _ : state) {
                                   work(names[step % kNames], step);
                                   ++step;
                                 }
                               });
}

/// A row of its own for what takes no names.
template <class Work>
void Row(const char* name, Work work) {
  benchmark::RegisterBenchmark(name, [work](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(work());
  })->Unit(benchmark::kMicrosecond);
}

vlm::CParamList FilledList() {
  vlm::CParamList list;
  for (const vlm::GString& name : Names<vlm::GString>()) list.Set(name, 0.5);
  return list;
}

std::map<std::string, std::string> FilledMap() {
  std::map<std::string, std::string> map;
  for (const std::string& name : Names<std::string>()) map[name] = "0.5";
  return map;
}

/// What an application would write without the library: the same file, settings and statement.
class BareStore {
 public:
  explicit BareStore(const std::string& path) {
    sqlite3_open_v2(path.c_str(), &connection_,
                    SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_busy_timeout(connection_, 5000);
    Run("PRAGMA journal_mode = WAL");
    Run("CREATE TABLE entries(root INTEGER NOT NULL, path TEXT NOT NULL COLLATE NOCASE,"
        " name TEXT NOT NULL COLLATE NOCASE, value, PRIMARY KEY(root, path, name)) WITHOUT ROWID");
    Run("PRAGMA synchronous = NORMAL");
    sqlite3_prepare_v3(connection_,
                       "INSERT INTO entries(root, path, name, value) VALUES(?1, ?2, ?3, ?4)"
                       " ON CONFLICT DO UPDATE SET value = excluded.value",
                       -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr);
  }
  BareStore(const BareStore&) = delete;
  BareStore& operator=(const BareStore&) = delete;
  ~BareStore() {
    sqlite3_finalize(statement_);
    sqlite3_close(connection_);
  }

  void Write(const std::string& path, const std::string& name, const std::string& value) {
    sqlite3_bind_int64(statement_, 1, 0x80000001);
    Bind(2, path);
    Bind(3, name);
    Bind(4, value);
    if (sqlite3_step(statement_) != SQLITE_DONE) throw std::runtime_error("no write");
    sqlite3_reset(statement_);
  }

 private:
  void Run(const char* sql) { sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr); }
  void Bind(int number, const std::string& text) {
    sqlite3_bind_text64(statement_, number, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
  }

  sqlite3* connection_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
};

/// A file of 10,000 entries in 100 sections.
std::string ConfigPath() {
  static const std::string path = [] {
    const std::string made = Folder().Path("plots.ini");
    std::ofstream file(made);
    for (int section = 0; section < 100; ++section) {
      file << "[Section" << section << "]\n";
      for (int key = 0; key < 100; ++key) file << "Key" << key << "=" << section * key << "\n";
      file << "\n";
    }
    return made;
  }();
  return path;
}

int ReadWithVelum(const std::string& section, const std::string& key) {
  const vlm::CConfigFile config(ConfigPath());
  int value = 0;
  if (!config.Read(section, key, value)) throw std::runtime_error("no entry");
  return value;
}

int ReadWithGKeyFile(const std::string& section, const std::string& key) {
  GKeyFile* const file = g_key_file_new();
  GError* error = nullptr;
  g_key_file_load_from_file(file, ConfigPath().c_str(), G_KEY_FILE_NONE, &error);
  const int value = g_key_file_get_integer(file, section.c_str(), key.c_str(), &error);
  g_key_file_free(file);
  if (error) throw std::runtime_error("no entry");
  return value;
}

void AddLists() {
  Row<vlm::GString>("ListGetText/velum/1000",
                    [list = FilledList(), text = vlm::GString()](const auto& name, auto) mutable {
                      list.Get(name, text);
                      benchmark::DoNotOptimize(text);
                    });
  Row<std::string>("ListGetText/map/1000",
                   [map = FilledMap(), text = std::string()](const auto& name, auto) mutable {
                     if (const auto found = map.find(name); found != map.end())
                       text = found->second;
                     benchmark::DoNotOptimize(text);
                   });
  Row<vlm::GString>("ListGetDouble/velum/1000", [list = FilledList()](const auto& name, auto) {
    double value = 0;
    list.Get(name, value);
    benchmark::DoNotOptimize(value);
  });
  Row<std::string>("ListGetDouble/map/1000", [map = FilledMap()](const auto& name, auto) {
    const auto found = map.find(name);
    double value = found == map.end() ? 0 : std::strtod(found->second.c_str(), nullptr);
    benchmark::DoNotOptimize(value);
  });
  Row<vlm::GString>("ListSetText/velum/1000",
                    [list = FilledList(), text = vlm::GString("a title of some length")](
                        const auto& name, auto) mutable { list.Set(name, text); });
  Row<std::string>("ListSetText/map/1000",
                   [map = FilledMap(), text = std::string("a title of some length")](
                       const auto& name, auto) mutable { map[name] = text; });
  Row<vlm::GString>("ListSetDouble/velum/1000",
                    [list = FilledList()](const auto& name, std::size_t step) mutable {
                      list.Set(name, static_cast<double>(step) / 7);
                    });
  Row<std::string>("ListSetDouble/map/1000",
                   [map = FilledMap()](const auto& name, std::size_t step) mutable {
                     char text[32];
                     std::snprintf(text, sizeof(text), "%.17G", static_cast<double>(step) / 7);
                     map[name] = text;
                   });
}

void AddRegistry() {
  benchmark::RegisterBenchmark("RegistryWrite/velum/1000", [](benchmark::State& state) {
    // Opened once, as the peer is.
    static const bool isNamed = (vlm::SetRegistryFile(Folder().Path("velum.db")), true);
    benchmark::DoNotOptimize(isNamed);
    static vlm::CRegParamList list(vlm::HKEY_CURRENT_USER, "Software\\Plots");
    const auto names = Names<vlm::GString>();
    static int value = 0;
    for (auto _ : state) {
      ++value;
      list.Set(names[static_cast<std::size_t>(value) % kNames], value, true);
    }
  })->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("RegistryWrite/sqlite/1000", [](benchmark::State& state) {
    static BareStore store(Folder().Path("bare.db"));
    const auto names = Names<std::string>();
    static int value = 0;
    for (auto _ : state) {
      ++value;
      store.Write("Software\\Plots", names[static_cast<std::size_t>(value) % kNames],
                  std::to_string(value));
    }
  })->Unit(benchmark::kMicrosecond);
}

void AddConfigFiles() {
  const struct {
    const char* input;
    const char* section;
  } rows[] = {
      {"first_of_1e4", "Section0"}, {"middle_of_1e4", "Section50"}, {"last_of_1e4", "Section99"}};
  for (const auto& row : rows) {
    const std::string section = row.section;
    const std::string input = row.input;
    Row(("ConfigRead/velum/" + input).c_str(),
        [section] { return ReadWithVelum(section, "Key99"); });
    Row(("ConfigRead/GKeyFile/" + input).c_str(),
        [section] { return ReadWithGKeyFile(section, "Key99"); });
  }
}

const bool added = [] {
  AddLists();
  AddRegistry();
  AddConfigFiles();
  return true;
}();

}  // namespace
