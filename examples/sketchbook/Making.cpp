#include <examples/sketchbook/Making.h>

#include <velum/core/Tokenizer.h>
#include <velum/geometry/Constants.h>
#include <examples/sketchbook/Connector.h>
#include <examples/sketchbook/Ellipse.h>
#include <examples/sketchbook/Label.h>
#include <examples/sketchbook/Naming.h>
#include <examples/sketchbook/Polyline.h>
#include <examples/sketchbook/Rectangle.h>
#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {
namespace {

using ShapePtr = std::shared_ptr<Shape>;

constexpr double kTextSize = 12.0;

// Where the origin of a shape's coordinates goes.
Vec2d OriginOf(const OptionValues& options) {
  if (options.Has("points")) return options.Points("points").front();
  return Vec2d(options.Number("x", 0.0), options.Number("y", 0.0));
}

ShapePtr MakeCircle(const OptionValues& options, const Document&) {
  return std::make_shared<Ellipse>(Vec2d::ONE * options.Number("r", 0.0));
}

ShapePtr MakeEllipse(const OptionValues& options, const Document&) {
  return std::make_shared<Ellipse>(Vec2d(options.Number("rx", 0.0), options.Number("ry", 0.0)));
}

ShapePtr MakeRectangle(const OptionValues& options, const Document&) {
  const Vec2d size(options.Number("w", 0.0), options.Number("h", 0.0));
  return std::make_shared<Rectangle>(size, options.Number("corner", 0.0));
}

// Its first point is the origin of its coordinates.
ShapePtr MakePolyline(const OptionValues& options, const Document&) {
  std::vector<Vec2d> points = options.Points("points");
  const Vec2d origin = OriginOf(options);
  for (Vec2d& point : points) point -= origin;
  return std::make_shared<Polyline>(std::move(points), options.Flag("closed"),
                                    options.Arrow("arrow"));
}

ShapePtr MakeLabel(const OptionValues& options, const Document&) {
  return std::make_shared<Label>(options.Text("text"), options.Number("size", kTextSize),
                                 options.Alignment("align", 1));
}

ShapePtr MakeConnector(const OptionValues& options, const Document& document) {
  return std::make_shared<Connector>(RequireShape(document, options.Text("from")),
                                     RequireShape(document, options.Text("to")),
                                     options.Points("via"), options.Arrow("arrow"));
}

struct Kind {
  const char* name;
  const char* needs;
  const char* mayHave;
  ShapePtr (*make)(const OptionValues& options, const Document& document);
};

constexpr Kind kKinds[] = {
    {"circle", "x y r", "", MakeCircle},
    {"ellipse", "x y rx ry", "angle", MakeEllipse},
    {"rectangle", "x y w h", "corner angle", MakeRectangle},
    {"polyline", "points", "closed arrow", MakePolyline},
    {"label", "x y text", "size align angle", MakeLabel},
    {"connector", "from to", "via arrow", MakeConnector},
};
constexpr Kind kStyle = {"style", "name", "", nullptr};
constexpr char kOfAll[] = "kind name style color fill width dash";

const Kind& FindKind(const GString& name) {
  if (name.empty()) Refuse("needs the kind of shape");
  for (const Kind& kind : kKinds) {
    if (name == kind.name) return kind;
  }
  Refuse("there is no kind of shape '" + name + "'");
}

bool HasWord(const char* words, const GString& wanted) {
  CTokenizer tokens(words);
  for (GString word; tokens.Parse(word, false) == CTokenizer::TokenOK;) {
    if (word == wanted) return true;
  }
  return false;
}

void CheckKeys(const Kind& kind, const OptionValues& options) {
  CTokenizer needed(kind.needs);
  for (GString key; needed.Parse(key, false) == CTokenizer::TokenOK;) {
    if (!options.Has(key)) Refuse(GString("a ") + kind.name + " needs '" + key + "'");
  }
  for (const auto& option : options.All()) {
    const GString& key = option.first;
    if (!HasWord(kOfAll, key) && !HasWord(kind.needs, key) && !HasWord(kind.mayHave, key)) {
      Refuse(GString("a ") + kind.name + " has no '" + key + "'");
    }
  }
}

// The style to begin with, or one of its own without a name.
std::shared_ptr<Style> MakeStyle(const OptionValues& options, const Document& document) {
  auto style = std::make_shared<Style>();
  if (options.Has("style")) {
    std::shared_ptr<Style> shared = RequireStyle(document, options.Text("style"));
    if (!options.Has("color") && !options.Has("fill") && !options.Has("width") &&
        !options.Has("dash")) {
      return shared;
    }
    *style = *shared;
    style->name.clear();
  }
  style->line = options.Color("color", style->line);
  style->fill = options.Color("fill", style->fill);
  style->width = options.Number("width", style->width);
  style->dash = options.Number("dash", style->dash);
  return style;
}

}  // namespace

std::shared_ptr<Shape> MakeShape(const OptionValues& options, const Document& document) {
  const Kind& kind = FindKind(options.Text("kind"));
  CheckKeys(kind, options);
  ShapePtr shape = kind.make(options, document);
  shape->SetName(options.Has("name") ? options.Text("name") : document.FreeName(kind.name));
  shape->SetStyle(MakeStyle(options, document));
  Mat3d placement = Mat3d::MakeRotation(options.Number("angle", 0.0) * DEG_TO_RAD);
  placement.Translate(OriginOf(options));
  shape->SetPlacement(placement);
  if (const GString fault = shape->Fault(); !fault.empty()) Refuse(fault);
  return shape;
}

std::shared_ptr<Style> MakeSharedStyle(const OptionValues& options, const Document& document) {
  CheckKeys(kStyle, options);
  auto style = std::make_shared<Style>(*MakeStyle(options, document));
  style->name = options.Text("name");
  return style;
}

}  // namespace vlm::sketchbook
