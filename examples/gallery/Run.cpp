#include <examples/gallery/Run.h>

#include <velum/core/StringFormat.h>
#include <examples/common/Program.h>

#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace vlm::gallery {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const Example& example, const std::string& reason) {
  throw std::runtime_error(example.name + ": " + reason);
}

std::vector<MadeFile> FilesOf(const Example& example) {
  std::vector<MadeFile> files = example.pictures;
  files.insert(files.end(), example.also.begin(), example.also.end());
  return files;
}

// The programs of all examples by their names, in front of all others.
std::string PathOf(const List& list, const Places& places) {
  std::string path;
  for (const Example& example : list.examples) path += places.programs + "/" + example.name + ":";
  return path;
}

std::string Printed(const std::string& path) {
  std::ifstream file = examples::OpenInput(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

Outcome RunOne(const Example& example, const std::string& path, const Places& places) {
  const fs::path folder = places.gallery;
  const std::string text = (folder / TextOf(example)).string();
  for (const MadeFile& file : FilesOf(example)) fs::remove(folder / file.name);
  const std::string script = "exec > " + ShellWord(text) + " 2>&1 < /dev/null\nset -e\ncd " +
                             ShellWord(places.gallery) + "\nPATH=" + ShellWord(path) + "$PATH\n" +
                             CommandOf(example, places) + "\n";
  const auto start = std::chrono::steady_clock::now();
  const int status = std::system(script.c_str());
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  if (status != 0) {
    const std::string how = status != -1 && WIFEXITED(status)
                                ? "with status " + std::to_string(WEXITSTATUS(status))
                                : "before its end";
    Fail(example, "the command ended " + how + " and said\n" + Printed(text));
  }
  for (const MadeFile& file : FilesOf(example)) {
    if (!fs::exists(folder / file.name)) Fail(example, "the command made no '" + file.name + "'");
  }
  return {elapsed.count(), fs::file_size(text) > 0};
}

}  // namespace

std::string TextOf(const Example& example) { return example.name + ".txt"; }

std::vector<Outcome> RunAll(const List& list, const Places& places, std::ostream& progress) {
  fs::create_directories(places.gallery);
  fs::remove(fs::path(places.gallery) / kPage);
  for (const Example& example : list.examples) {
    const std::string source = SourceOf(example, places);
    if (!fs::exists(fs::path(places.gallery) / source)) Fail(example, "there is no " + source);
  }
  const std::string path = PathOf(list, places);
  std::vector<Outcome> outcomes;
  for (const Example& example : list.examples) {
    outcomes.push_back(RunOne(example, path, places));
    progress << ToString("%2zu of %zu  %-13s %6.2f s\n", outcomes.size(), list.examples.size(),
                         example.name.c_str(), outcomes.back().seconds)
             << std::flush;
  }
  return outcomes;
}

}  // namespace vlm::gallery
