// What the changed places of a build of mutants ask: each process learns from VELUM_MUTANT which
// one is in force, and marks those that it comes upon in the file VELUM_MUTANTS_REACHED, a byte for
// each number.
#include <tools/mutation/Mutant.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace {

int Chosen() {
  const char* number = std::getenv("VELUM_MUTANT");
  return number != nullptr ? std::atoi(number) : 0;
}

unsigned char* Marks() {
  const char* name = std::getenv("VELUM_MUTANTS_REACHED");
  const int file = name != nullptr ? open(name, O_RDWR | O_CLOEXEC) : -1;
  if (file < 0) return nullptr;
  struct stat status {};
  fstat(file, &status);
  // Shared, so that the marks of a process that crashes, or of a child, are kept.
  void* marks = mmap(nullptr, static_cast<size_t>(status.st_size), PROT_READ | PROT_WRITE,
                     MAP_SHARED, file, 0);
  close(file);
  return marks != MAP_FAILED ? static_cast<unsigned char*>(marks) : nullptr;
}

const int chosen = Chosen();
unsigned char* const marks = Marks();

}  // namespace

extern "C" bool velum_mutant(int number) noexcept {
  if (marks != nullptr) marks[number] = 1;
  return number == chosen;
}
