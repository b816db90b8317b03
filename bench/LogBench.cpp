#include <velum/diagnostics/Logger.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

#include <memory>
#include <sstream>
#include <string>

// Both sides write the same lines: the formatted text alone, without time or level.

namespace {

constexpr int kType = vlm::LogInformation;
constexpr char kPlain[] =
    "Grid of 512 x 384 nodes made in 0.12 s from 10000 points, nearest neighbour";

template <class Work>
void Row(const std::string& name, Work work) {
  benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
    for (auto _ : state) work();
  });
}

template <class Sink>
std::shared_ptr<spdlog::logger> Peer(std::shared_ptr<Sink> sink) {
  auto logger = std::make_shared<spdlog::logger>("peer", std::move(sink));
  logger->set_pattern("%v");
  logger->set_level(spdlog::level::trace);
  logger->flush_on(spdlog::level::trace);
  return logger;
}

[[maybe_unused]] const bool registered = [] {
  static const vlm::testing::TemporaryFolder folder;

  static vlm::CLogger file(folder.Path("velum.log"));
  static const auto locked =
      Peer(std::make_shared<spdlog::sinks::basic_file_sink_mt>(folder.Path("mt.log")));
  static const auto unlocked =
      Peer(std::make_shared<spdlog::sinks::basic_file_sink_st>(folder.Path("st.log")));
  static const vlm::GString line(kPlain);
  Row("FlushedLine/velum/plain", [] { file.Send(kType, line); });
  Row("FlushedLine/spdlog_mt/plain", [] { locked->info(kPlain); });
  Row("FlushedLine/spdlog_st/plain", [] { unlocked->info(kPlain); });
  Row("FlushedLine/velum/formatted",
      [] { file.SendVA(kType, "%s: %d of %u nodes", "Grid", 1630, 196608u); });
  Row("FlushedLine/spdlog_mt/formatted",
      [] { locked->info("{}: {} of {} nodes", "Grid", 1630, 196608u); });
  Row("FlushedLine/spdlog_st/formatted",
      [] { unlocked->info("{}: {} of {} nodes", "Grid", 1630, 196608u); });
  Row("FlushedLine/velum/decimals", [] { file.SendVA(kType, "Grid made in %.2f s", 0.12); });
  Row("FlushedLine/spdlog_mt/decimals", [] { locked->info("Grid made in {:.2f} s", 0.12); });
  Row("FlushedLine/spdlog_st/decimals", [] { unlocked->info("Grid made in {:.2f} s", 0.12); });

  static vlm::CLogger masked("", kType);
  static const auto above = Peer(std::make_shared<spdlog::sinks::basic_file_sink_mt>("/dev/null"));
  above->set_level(spdlog::level::warn);
  Row("MaskedCall/velum/formatted",
      [] { masked.SendVA(vlm::LogScope, "%s: %d nodes in %.2f s", "Grid", 196608, 0.12); });
  Row("MaskedCall/spdlog/formatted",
      [] { above->info("{}: {} nodes in {:.2f} s", "Grid", 196608, 0.12); });
  Row("MaskedCall/velum/plain", [] { masked.SendVA(vlm::LogScope, "Grid made"); });
  Row("MaskedCall/spdlog/plain", [] { above->info("Grid made"); });

  static vlm::CLogger buffer;
  static std::ostringstream stream;
  static const auto streamed = Peer(std::make_shared<spdlog::sinks::ostream_sink_mt>(stream));
  Row("LineInMemory/velum/plain", [] {
    buffer.Send(kType, line);
    if (buffer.GetBuffer().size() > 1'000'000) buffer.EmptyBuffer();
  });
  Row("LineInMemory/spdlog/plain", [] {
    streamed->info(kPlain);
    // Gives the memory back, as the other side does; str({}) would keep it.
    if (stream.tellp() > 1'000'000) std::ostringstream().swap(stream);
  });
  return true;
}();

}  // namespace
