#include <examples/worksheet/SampleTable.h>

#include <velum/files/BufferedFile.h>

#include <cmath>
#include <random>

namespace vlm::worksheet {

void WriteSampleTable(const std::string& path, unsigned rows) {
  constexpr const char* kRocks[] = {"sandstone", "limestone", "shale", "granite", "basalt"};
  CBufferedFile file(path, "w", CBufferedFile::ShareDenyWrite, true);
  file.WriteString("well,rock,depth_m,porosity,temperature_c,flow\n");
  std::mt19937 random(2026);
  const auto uniform = [&] { return static_cast<double>(random()) * 0x1p-32; };
  for (unsigned row = 0; row < rows; ++row) {
    const std::size_t rock = random() % 5;
    const int depth = static_cast<int>(40 + 3000 * uniform() * uniform());
    const double porosity =
        0.05 + 0.06 * (uniform() + uniform() + uniform()) / (1.0 + 0.2 * static_cast<double>(rock));
    const double temperature = 8.0 + 0.027 * depth + 4.0 * (uniform() - uniform());
    const double flow = std::exp(2.0 * (uniform() + uniform() + uniform() - 1.5));
    file.Printf("W%06u,%s,%d,%.3f,%.1f,", row, kRocks[rock], depth, porosity, temperature);
    random() % 50 == 0 ? file.Printf("%s\n", random() % 2 == 0 ? "" : "n/a")
                       : file.Printf("%.9g\n", flow);
  }
  file.Close();
}

}  // namespace vlm::worksheet
