#include <examples/labels/LabelSheet.h>

#include <examples/common/Handles.h>
#include <examples/labels/LabelDevice.h>
#include <examples/labels/SourceCaption.h>

#include <algorithm>

namespace vlm::examples {
namespace {

constexpr double kPageWidth = 1120.0;
constexpr double kMargin = 40.0;
constexpr std::size_t kColumns = 4;
constexpr double kGutter = 24.0;
constexpr double kColumnWidth = (kPageWidth - 2.0 * kMargin - (kColumns - 1) * kGutter) / kColumns;

constexpr double kLabelHeight = 14.0;
constexpr double kHeadHeight = 60.0;     // the page's title and key
constexpr double kHeadingHeight = 18.0;  // from the rows above to the baseline of a group's name
constexpr double kHeadingGap = 14.0;     // from there to the row below
constexpr double kNameHeight = 14.0;     // from the top of a cell to the top of its label
constexpr double kSourceGap = 6.0;       // from the bottom of a label to its source
constexpr double kSourceLeading = 7.8;
constexpr double kRowGap = 14.0;
constexpr double kFaultHeight = 28.0;

constexpr Color4b kInk(24, 24, 28, 255);
constexpr Color4b kNameInk(96, 100, 108, 255);
constexpr Color4b kSourceInk(138, 142, 150, 255);
constexpr Color4b kHairline(205, 208, 214, 255);
constexpr Color4b kBoxLine(86, 140, 214, 150);
constexpr Color4b kBaseline(222, 84, 70, 150);
constexpr Color4b kFaultInk(176, 32, 32, 255);
constexpr Color4b kFaultGround(253, 238, 236, 255);

// How the sheet writes its own words.
struct Type {
  const char* face;
  unsigned int weight;
  double height;
  Color4b color;
};
constexpr Type kTitleType{"Arial", 7, 22.0, kInk};
constexpr Type kKeyType{"Arial", 4, 9.0, kNameInk};
constexpr Type kHeadingType{"Arial", 7, 10.5, kInk};
constexpr Type kNameType{"Arial", 4, 7.0, kNameInk};
constexpr Type kSourceType{"DejaVu Sans Mono", 4, 5.8, kSourceInk};
constexpr Type kFaultType{"Arial", 4, 8.5, kFaultInk};
constexpr Type kFaultPlaceType{"Arial", 4, 7.0, kFaultInk};

void SetType(CairoTextDevice& device, const Type& type) {
  device.SetFace(type.face);
  device.SetWeight(type.weight);
  device.SetStyle(0);
  device.SetHeight(type.height);
  device.SetColor(type.color);
}

// Writes a text without markup; gives its advance.
double Write(CairoTextDevice& device, const Type& type, double x, double y, const GString& text) {
  device.PreserveState();
  SetType(device, type);
  Vec2d extent;
  device.GetExtent(text, extent);
  device.Draw(Vec2d(x, y), text);
  device.RestoreState();
  return extent.x;
}

void DrawRule(cairo_t* context, double left, double right, double y, const Color4b& color) {
  SetSourceColor(context, color);
  cairo_set_line_width(context, 0.5);
  cairo_move_to(context, left, y);
  cairo_line_to(context, right, y);
  cairo_stroke(context);
}

void DrawFrame(cairo_t* context, const Box2d& box) {
  SetSourceColor(context, kBoxLine);
  cairo_set_line_width(context, 0.5);
  cairo_rectangle(context, box.xMin(), box.yMin(), box.xRange(), box.yRange());
  cairo_stroke(context);
}

// The box and the baseline of a label that stands at `position`.
void DrawMeasures(cairo_t* context, const Box2d& box, const Vec2d& position) {
  DrawFrame(context, box + position);
  DrawRule(context, position.x + box.xMin(), position.x + box.xMax(), position.y, kBaseline);
}

void DrawFault(CairoTextDevice& device, cairo_t* context, const LabelFault& fault, double left,
               double top, double width) {
  SetSourceColor(context, kFaultGround);
  cairo_rectangle(context, left, top, width, kFaultHeight);
  cairo_fill(context);
  SetSourceColor(context, kFaultInk);
  cairo_rectangle(context, left, top, 2.5, kFaultHeight);
  cairo_fill(context);
  // A cross, in strokes: not every face has one.
  const double x = left + 13.0;
  const double y = top + 0.5 * kFaultHeight;
  cairo_set_line_width(context, 1.6);
  for (const double slope : {-1.0, 1.0}) {
    cairo_move_to(context, x - 3.2, y - 3.2 * slope);
    cairo_line_to(context, x + 3.2, y + 3.2 * slope);
  }
  cairo_stroke(context);
  Write(device, kFaultType, left + 22.0, y - 1.5, fault.reason);
  Write(device, kFaultPlaceType, left + 22.0, y + 8.5, fault.Place());
}

// The title of the page and the key to its lines.
void DrawHead(CairoTextDevice& device, cairo_t* context) {
  double y = kMargin + kTitleType.height;
  Write(device, kTitleType, kMargin, y, "Labels in math text");
  y += 22.0;
  double x = kMargin;
  x += Write(device, kKeyType, x, y, "Each label with its source, its bounding box ");
  DrawFrame(context, Box2d(x + 2.0, y - 7.0, x + 22.0, y + 1.0));
  x += 26.0;
  x += Write(device, kKeyType, x, y, " and the baseline of its first line ");
  DrawRule(context, x + 2.0, x + 22.0, y - 3.0, kBaseline);
  x += 26.0;
  Write(device, kKeyType, x, y, " as the library measures them.");
}

double WidthOfColumns(std::size_t columns) {
  const auto count = static_cast<double>(columns);
  return count * kColumnWidth + (count - 1.0) * kGutter;
}

std::size_t ColumnsFor(double width) {
  std::size_t columns = 1;
  while (columns < kColumns && width > WidthOfColumns(columns)) ++columns;
  return columns;
}

// What a label takes up and down from its baseline: a wrong one has a panel in its place.
Box2d SpaceOf(const LabelLayout& label) {
  if (label.Fault()) return {0.0, -0.7 * kFaultHeight, kColumnWidth, 0.3 * kFaultHeight};
  return label.Box();
}

std::size_t CharactersIn(CairoTextDevice& device, double width) {
  device.PreserveState();
  SetType(device, kSourceType);
  Vec2d extent;
  device.GetExtent("0", extent);
  device.RestoreState();
  return static_cast<std::size_t>(width / extent.x);
}

}  // namespace

LabelSheet::LabelSheet(const std::vector<Label>& labels, const std::string& strokedFace)
    : strokedFace_(strokedFace) {
  // Nothing is drawn here; a context measures as well on a surface without ink.
  const SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
  const ContextPtr context(cairo_create(surface.get()));
  CairoTextDevice device(context.get(), kLabelHeight);
  LabelDevice labelDevice(context.get(), kLabelHeight, strokedFace);
  labelDevice.Get().SetColor(kInk);

  for (const Label& label : labels) {
    LabelLayout layout(labelDevice.Get(), label.text, label.justify);
    const std::size_t columns = ColumnsFor(SpaceOf(layout).xRange());
    if (layout.Fault()) faults_.push_back(label.name + ": " + layout.Fault()->InWords());
    cells_.push_back({label.group, label.name, std::move(layout),
                      WrapSource(label.text, CharactersIn(device, WidthOfColumns(columns))),
                      columns});
  }
  Place();
}

double LabelSheet::Width() const { return kPageWidth; }

void LabelSheet::Place() {
  height_ = kMargin + kHeadHeight;
  std::size_t first = 0;
  std::size_t columns = 0;
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const bool startsGroup = i == 0 || cells_[i].group != cells_[i - 1].group;
    if (startsGroup || columns + cells_[i].columns > kColumns) {
      PlaceRow(first, i);
      first = i;
      columns = 0;
    }
    if (startsGroup) {
      height_ += kHeadingHeight;
      headings_.push_back({cells_[i].group, height_});
      height_ += kHeadingGap;
    }
    columns += cells_[i].columns;
  }
  PlaceRow(first, cells_.size());
  height_ += kMargin - kRowGap;
}

void LabelSheet::PlaceRow(std::size_t first, std::size_t last) {
  if (first == last) return;
  double ascent = 0.0;
  double descent = 0.0;
  std::size_t lines = 0;
  for (std::size_t i = first; i < last; ++i) {
    const Box2d space = SpaceOf(cells_[i].label);
    ascent = std::max(ascent, -space.yMin());
    descent = std::max(descent, space.yMax());
    lines = std::max(lines, cells_[i].source.size());
  }
  double left = kMargin;
  for (std::size_t i = first; i < last; ++i) {
    Cell& cell = cells_[i];
    cell.left = left;
    cell.top = height_;
    cell.baseline = height_ + kNameHeight + ascent;
    cell.sourceTop = cell.baseline + descent + kSourceGap;
    left += WidthOfColumns(cell.columns) + kGutter;
  }
  height_ = cells_[first].sourceTop + static_cast<double>(lines) * kSourceLeading + kRowGap;
}

void LabelSheet::Draw(cairo_t* context) const {
  CairoTextDevice device(context, kLabelHeight);
  device.SetColor(kInk);
  LabelDevice labelDevice(context, kLabelHeight, strokedFace_);
  labelDevice.Get().SetColor(kInk);
  DrawHead(device, context);
  for (const Heading& heading : headings_) {
    Write(device, kHeadingType, kMargin, heading.baseline, heading.text);
    DrawRule(context, kMargin, kPageWidth - kMargin, heading.baseline + 5.0, kHairline);
  }
  for (const Cell& cell : cells_) DrawCell(cell, labelDevice.Get(), device, context);
}

void LabelSheet::DrawCell(const Cell& cell, KQTextIF& labels, CairoTextDevice& device,
                          cairo_t* context) {
  Write(device, kNameType, cell.left, cell.top + kNameType.height, cell.name);
  if (cell.label.Fault()) {
    const double top = cell.baseline + SpaceOf(cell.label).yMin();
    DrawFault(device, context, *cell.label.Fault(), cell.left, top, WidthOfColumns(cell.columns));
  } else {
    // The box begins where the column does, also where the label reaches left of its origin.
    const Vec2d position(cell.left - cell.label.Box().xMin(), cell.baseline);
    DrawMeasures(context, cell.label.Box(), position);
    cell.label.Draw(labels, position);
  }
  double y = cell.sourceTop;
  for (const std::string& line : cell.source) {
    y += kSourceLeading;
    Write(device, kSourceType, cell.left, y - 0.25 * kSourceType.height, line);
  }
}

}  // namespace vlm::examples
