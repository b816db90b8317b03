// Charts: a histogram beside Matplotlib's Agg backend and R, both in an interpreter that is warm; a
// probability plot beside the sort that it needs.

#include <velum/diagnostics/GdiPlus.h>
#include <velum/diagnostics/GdiPlusUtil.h>
#include <velum/diagnostics/SystemInfo.h>
#include <velum/numerics/DrawStats.h>
#include <velum/numerics/UnivariateStatistics.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vlm;

constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr unsigned int kFlags =
    CDrawStats::kEverything & ~static_cast<unsigned>(CDrawStats::kBoxPlot);

std::vector<double> NormalSample(std::size_t count) {
  std::mt19937 random(7);
  std::normal_distribution<double> normal(4, 1.5);
  std::vector<double> sample(count);
  for (double& x : sample) x = normal(random);
  return sample;
}

const CUnivariateStatistics& HistogramStats() {
  static const CUnivariateStatistics stats = [] {
    CSystemInfo::GetInstance().DefVariablePitchFace("DejaVu Sans");
    std::vector<double> sample = NormalSample(1000);
    CUnivariateStatistics made;
    Load(made, sample.begin(), sample.end());
    return made;
  }();
  return stats;
}

const vlm::testing::TemporaryFolder& Folder() {
  static const vlm::testing::TemporaryFolder folder;
  return folder;
}

// A program that draws the histogram when it is told to, and tells how long that took.
class Peer {
 public:
  // `command` gets the sample and the picture as arguments.
  explicit Peer(const std::string& command) {
    const CUnivariateStatistics& stats = HistogramStats();
    std::ofstream sample(Folder().Path("sample"));
    sample << std::setprecision(17) << stats.Minimum << ' ' << stats.Maximum << ' ' << stats.Mean
           << ' ' << stats.StdDev << '\n';
    for (std::size_t i = 0; i < stats.Histogram.size(); ++i) {
      sample << (i > 0 ? " " : "") << stats.Histogram[i];
    }
    sample << '\n';
    sample.close();
    const std::string whole =
        command + " " + Folder().Path("sample") + " " + Folder().Path("peer.png");
    std::signal(SIGPIPE, SIG_IGN);  // a peer that ends is told by what it doesn't answer
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) return;
    if (::fork() == 0) {
      ::dup2(ends[1], STDIN_FILENO);
      ::dup2(ends[1], STDOUT_FILENO);
      ::close(ends[0]);
      ::close(ends[1]);
      ::execl("/bin/sh", "sh", "-c", whole.c_str(), nullptr);
      ::_exit(127);
    }
    ::close(ends[1]);
    stream_ = ::fdopen(ends[0], "r+");
    // The first charts warm it up.
    for (int i = 0; i < 3; ++i) Seconds("png");
  }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer() {
    if (stream_ != nullptr) std::fclose(stream_);
  }

  // Below 0 if it can't be had.
  double Seconds(const char* what) {
    char line[64];
    if (stream_ == nullptr || std::fprintf(stream_, "%s\n", what) < 0 ||
        std::fflush(stream_) != 0 || std::fgets(line, sizeof line, stream_) == nullptr) {
      return -1;
    }
    return std::atof(line);
  }

 private:
  std::FILE* stream_ = nullptr;
};

Peer& Agg() {
  // The system's Matplotlib belongs to the system's Python, which need not come first.
  static Peer peer(
      "python=python3; $python -c 'import matplotlib' 2> /dev/null || python=/usr/bin/python3; "
      "exec $python " VELUM_BENCH_FOLDER "/HistogramPeer.py");
  return peer;
}

Peer& R() {
  static Peer peer("exec Rscript " VELUM_BENCH_FOLDER "/HistogramPeer.R");
  return peer;
}

void TimePeer(benchmark::State& state, Peer& peer, const char* what) {
  for (auto _ : state) {
    const double seconds = peer.Seconds(what);
    if (seconds < 0) {
      state.SkipWithError("the peer is not installed");
      return;
    }
    state.SetIterationTime(seconds);
  }
}

void HistogramPng(benchmark::State& state) {
  const CUnivariateStatistics& stats = HistogramStats();
  const CDrawStats chart("Magnitude", 0);
  const std::string path = Folder().Path("velum.png");
  for (auto _ : state) chart.DrawHistogram(kWidth, kHeight, path, kFlags, stats);
}
BENCHMARK(HistogramPng)->Name("Histogram/velum/png")->Unit(benchmark::kMillisecond);

void HistogramPngAgg(benchmark::State& state) { TimePeer(state, Agg(), "png"); }
BENCHMARK(HistogramPngAgg)
    ->Name("Histogram/matplotlib/png")
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void HistogramPngR(benchmark::State& state) { TimePeer(state, R(), "png"); }
BENCHMARK(HistogramPngR)
    ->Name("Histogram/R/png")
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void HistogramDrawing(benchmark::State& state) {
  const CUnivariateStatistics& stats = HistogramStats();
  const CDrawStats chart("Magnitude", 0);
  const Gdiplus::SolidBrush white(Gdiplus::Color(0xFFFFFFFF));
  const Gdiplus::Rect all(0, 0, kWidth, kHeight);
  for (auto _ : state) {
    Gdiplus::Bitmap bitmap(kWidth, kHeight);
    Gdiplus::Graphics graphics(&bitmap);
    graphics.FillRectangle(&white, all);
    chart.DrawHistogram(graphics, all, kFlags, stats);
  }
}
BENCHMARK(HistogramDrawing)->Name("Histogram/velum/drawing")->Unit(benchmark::kMillisecond);

void HistogramDrawingAgg(benchmark::State& state) { TimePeer(state, Agg(), "draw"); }
BENCHMARK(HistogramDrawingAgg)
    ->Name("Histogram/matplotlib/drawing")
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// What is left of the file once the chart stands: compression, and the file itself.
void HistogramSaving(benchmark::State& state) {
  Gdiplus::Bitmap bitmap(kWidth, kHeight);
  Gdiplus::Graphics graphics(&bitmap);
  const Gdiplus::SolidBrush white(Gdiplus::Color(0xFFFFFFFF));
  const Gdiplus::Rect all(0, 0, kWidth, kHeight);
  graphics.FillRectangle(&white, all);
  CDrawStats("Magnitude", 0).DrawHistogram(graphics, all, kFlags, HistogramStats());
  GUID png;
  GetEncoderClsid(L"image/png", &png);
  const std::string narrow = Folder().Path("saved.png");
  const std::wstring path(narrow.begin(), narrow.end());
  for (auto _ : state) benchmark::DoNotOptimize(bitmap.Save(path.c_str(), &png));
}
BENCHMARK(HistogramSaving)->Name("Histogram/velum/saving")->Unit(benchmark::kMillisecond);

constexpr std::size_t kMany = 1000000;

void ProbabilityPlot(benchmark::State& state) {
  const std::vector<double> sample = NormalSample(kMany);
  std::vector<double> copy = sample;
  CUnivariateStatistics stats;
  Load(stats, copy.begin(), copy.end());
  HistogramStats();  // sets the face
  const CDrawStats chart("Magnitude", 0);
  const Gdiplus::Rect all(0, 0, kWidth, kHeight);
  Gdiplus::Bitmap bitmap(kWidth, kHeight);
  for (auto _ : state) {
    copy = sample;
    Gdiplus::Graphics graphics(&bitmap);
    chart.DrawProbabilityPlot(graphics, all, kFlags, stats, copy.begin(), copy.end());
  }
}
BENCHMARK(ProbabilityPlot)->Name("ProbabilityPlot/velum/1e6")->Unit(benchmark::kMillisecond);

void ProbabilityPlotSort(benchmark::State& state) {
  const std::vector<double> sample = NormalSample(kMany);
  std::vector<double> copy;
  for (auto _ : state) {
    copy = sample;
    std::sort(copy.begin(), copy.end());
    benchmark::DoNotOptimize(copy.data());
  }
}
BENCHMARK(ProbabilityPlotSort)->Name("ProbabilityPlot/sort/1e6")->Unit(benchmark::kMillisecond);

}  // namespace
