#include <examples/crashlab/CrashPicture.h>

#include <velum/colour/Color4b.h>
#include <velum/core/StringFormat.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/PageText.h>
#include <examples/common/Picture.h>

#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <vector>

namespace vlm::crashlab {
namespace {

using examples::Align;
using examples::DrawText;
using examples::kInk;
using examples::kPale;
using examples::Verbatim;

// The page, from the left: numbers, functions, places, modules.
constexpr double kWidth = 620.0;
constexpr double kMargin = 20.0;
constexpr double kHeading = 22.0;
constexpr double kRow = 17.0;
constexpr double kGap = 2.0;
constexpr double kLine = 13.0;
constexpr double kNumbers = 26.0;
constexpr double kModules = 92.0;
constexpr double kLeft = kMargin + kNumbers;
constexpr double kRight = kWidth - kMargin - kModules;
constexpr double kFunctionShare = 0.52;
constexpr double kBandWidth = 4.0;
constexpr double kText = 8.5;
constexpr std::size_t kMostFrames = 26;
constexpr std::size_t kMostLines = 12;
constexpr std::size_t kLongestText = 110;
constexpr std::size_t kLongestFunction = 52;
constexpr std::size_t kLongestPlace = 34;

const Color4b kAlarm(186, 30, 40, 255);

// Told apart by eyes that don't see red or green, and dark enough for text on white.
const Color4b kLibraryColor(0, 122, 88, 255);
const Color4b kRuntimeColor(122, 92, 0, 255);
const Color4b kModuleColors[] = {Color4b(0, 92, 158, 255), Color4b(150, 40, 120, 255),
                                 Color4b(70, 70, 170, 255), Color4b(70, 90, 100, 255)};

// The colour on paper that shows no more than a tenth of it.
Color4b Tint(Color4b color, double share = 0.1) {
  const auto mix = [&](unsigned char part) {
    return static_cast<unsigned char>(255.0 - share * (255.0 - part));
  };
  return Color4b(mix(color.R), mix(color.G), mix(color.B), 255);
}

void Fill(cairo_t* context, const Vec2d& corner, const Vec2d& size, Color4b color) {
  examples::SetSourceColor(context, color);
  cairo_rectangle(context, corner.x, corner.y, size.x, size.y);
  cairo_fill(context);
}

// A function without what says nothing to the reader: the program's own namespaces, and how the
// runtime spells a string.
std::string ShortName(std::string name) {
  constexpr struct {
    std::string_view part, shown;
  } kShort[] = {{"std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >",
                 "std::string"},
                {"(anonymous namespace)::", ""},
                {"vlm::crashlab::", ""}};
  for (const auto& one : kShort) {
    for (std::size_t at = 0; (at = name.find(one.part)) != name.npos;) {
      name.replace(at, one.part.size(), one.shown);
    }
  }
  return name;
}

// The number of a frame; 0 for one without.
int NumberOf(const Frame& frame) {
  return frame.number.empty() ? 0 : std::atoi(frame.number.c_str() + 1);
}

class CrashSheet {
 public:
  CrashSheet(const Way& way, const Trace& trace) : way_(way), trace_(trace) {
    frames_ = trace.frames;
    if (frames_.size() > kMostFrames) {
      // The innermost say what happened, the outermost how it came to that.
      const std::size_t outer = kMostFrames / 3;
      const std::size_t cut = frames_.size() - kMostFrames + 1;
      const auto begin = frames_.begin() + static_cast<std::ptrdiff_t>(kMostFrames - outer - 1);
      frames_.erase(begin, begin + static_cast<std::ptrdiff_t>(cut));
      const int before = NumberOf(*(begin - 1));
      const int after = NumberOf(*begin);
      frames_.insert(begin, {"", "", std::to_string(after - before - 1) + " more", "", true});
    }
    // From outside, so that the program has the same colour in every picture.
    for (auto at = frames_.rbegin(); at != frames_.rend(); ++at) {
      const Frame& frame = *at;
      if (std::find(modules_.begin(), modules_.end(), frame.module) == modules_.end() &&
          !frame.module.empty() && !frame.module.starts_with("libvelum.") &&
          !frame.module.starts_with("libc.")) {
        modules_.push_back(frame.module);
      }
    }
    hasInlined_ = std::any_of(frames_.begin(), frames_.end(), [](const Frame& frame) {
      return frame.number.empty() && !frame.isGap;
    });
    linesShown_ = std::min(trace.logLines.size(), kMostLines);
    stackTop_ =
        kMargin + kHeading + kLine * static_cast<double>(trace.crash.size()) + kHeading * 2.0;
    logTop_ = stackTop_ + kRow * static_cast<double>(frames_.size()) +
              kHeading * (hasInlined_ ? 2.1 : 1.7);
  }

  [[nodiscard]] double Height() const {
    return logTop_ + kLine * static_cast<double>(linesShown_) + kMargin;
  }

  void Draw(cairo_t* context) const {
    DrawCrashLines(context);
    DrawStack(context);
    DrawLog(context);
  }

 private:
  void DrawTitle(cairo_t* context, double y, const std::string& letter,
                 const std::string& title) const {
    DrawText(context, Vec2d(kMargin, y),
             {"{\\b " + letter + "}  " + Verbatim(title, kLongestText), 11.0});
  }

  void DrawCrashLines(cairo_t* context) const {
    DrawTitle(context, kMargin + 9.0, "a", std::string("A program that ") + way_.about);
    double y = kMargin + kHeading + kLine * 0.7;
    for (const std::string& line : trace_.crash) {
      const bool isChief = &line == &trace_.crash.front();
      DrawText(
          context, Vec2d(kLeft, y),
          {isChief ? "{\\b " + Verbatim(line, kLongestText) + "}" : Verbatim(line, kLongestText),
           kText + 0.5, Align::Left, isChief ? kAlarm : kInk, kWidth - kMargin - kLeft});
      y += kLine;
    }
  }

  [[nodiscard]] Color4b ColorOf(const std::string& module) const {
    if (module.empty()) return kPale;
    // The same in every picture for what is in every picture.
    if (module.starts_with("libvelum.")) return kLibraryColor;
    if (module.starts_with("libc.")) return kRuntimeColor;
    const auto at = std::find(modules_.begin(), modules_.end(), module) - modules_.begin();
    return kModuleColors[static_cast<std::size_t>(at) % std::size(kModuleColors)];
  }

  void DrawFrame(cairo_t* context, const Frame& frame, double y, bool isFirst) const {
    const double baseline = y + kRow * 0.66;
    const double middle = kLeft + (kRight - kLeft) * kFunctionShare;
    if (frame.isGap) {
      DrawText(context, Vec2d(kLeft + 8.0, baseline),
               {"{\\i " + Verbatim(frame.function, kLongestText) + "}", kText, Align::Left, kPale});
      return;
    }
    const Color4b color = ColorOf(frame.module);
    Fill(context, Vec2d(kLeft, y), Vec2d(kRight - kLeft, kRow - kGap),
         isFirst ? Tint(kAlarm, 0.16) : Tint(color));
    DrawText(context, Vec2d(kLeft - 6.0, baseline),
             {frame.number.empty() ? "" : frame.number.substr(1), 8.0, Align::Right,
              isFirst ? kAlarm : kPale});
    const std::string name = ShortName(frame.function);
    DrawText(context, Vec2d(kLeft + 8.0, baseline),
             {name.empty() ? "{\\i not known}" : "{\\b " + Verbatim(name, kLongestFunction) + "}",
              kText, Align::Left, name.empty() ? kPale : color, middle - kLeft - 14.0});
    DrawText(
        context, Vec2d(middle, baseline),
        {Verbatim(frame.place, kLongestPlace), kText, Align::Left, kInk, kRight - middle - 6.0});
  }

  // Names each run of frames of one module at its side.
  void DrawModules(cairo_t* context) const {
    for (std::size_t i = 0; i < frames_.size();) {
      std::size_t end = i + 1;
      while (end < frames_.size() && frames_[end].module == frames_[i].module &&
             frames_[end].isGap == frames_[i].isGap) {
        ++end;
      }
      if (!frames_[i].isGap) {
        const double top = stackTop_ + kRow * static_cast<double>(i);
        const double height = kRow * static_cast<double>(end - i) - kGap;
        const std::string& module = frames_[i].module;
        Fill(context, Vec2d(kRight + 3.0, top), Vec2d(kBandWidth, height), ColorOf(module));
        DrawText(context, Vec2d(kRight + 12.0, top + height / 2.0 + 3.0),
                 {module.empty() ? "no module" : Verbatim(module, kLongestText), kText, Align::Left,
                  ColorOf(module), kModules - 12.0});
      }
      i = end;
    }
  }

  void DrawStack(cairo_t* context) const {
    DrawTitle(context, stackTop_ - kHeading * 1.1, "b", "The stack, from the crash outwards");
    const double names = stackTop_ - 5.0;
    const double middle = kLeft + (kRight - kLeft) * kFunctionShare;
    DrawText(context, Vec2d(kLeft + 8.0, names), {"Function", 8.0, Align::Left, kPale});
    DrawText(context, Vec2d(middle, names),
             {"Line, or place in the module", 8.0, Align::Left, kPale});
    DrawText(context, Vec2d(kRight + 12.0, names), {"Module", 8.0, Align::Left, kPale});
    double y = stackTop_;
    for (const Frame& frame : frames_) {
      DrawFrame(context, frame, y, &frame == &frames_.front());
      y += kRow;
    }
    DrawModules(context);
    if (!hasInlined_) return;
    DrawText(context, Vec2d(kLeft + 8.0, y + 9.0),
             {"Without a number: the function above was inlined into this one.", 8.0, Align::Left,
              kPale});
  }

  void DrawLog(cairo_t* context) const {
    DrawTitle(context, logTop_ - kHeading * 0.6, "c", "The last lines of the log");
    double y = logTop_ + kLine * 0.6;
    for (std::size_t i = trace_.logLines.size() - linesShown_; i < trace_.logLines.size(); ++i) {
      DrawText(context, Vec2d(kLeft, y),
               {Verbatim(trace_.logLines[i], kLongestText), kText + 0.5, Align::Left, kInk,
                kWidth - kMargin - kLeft});
      y += kLine;
    }
  }

  const Way& way_;
  const Trace& trace_;
  std::vector<Frame> frames_;
  std::vector<std::string> modules_;
  bool hasInlined_ = false;
  std::size_t linesShown_ = 0;
  double stackTop_ = 0.0;
  double logTop_ = 0.0;
};

}  // namespace

void DrawCrash(const Way& way, const Trace& trace, const std::string& path) {
  const CrashSheet sheet(way, trace);
  examples::WritePicture(path, kWidth, sheet.Height(),
                         [&](cairo_t* context) { sheet.Draw(context); });
}

}  // namespace vlm::crashlab
