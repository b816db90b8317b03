#include "Scenarios.h"

#include <velum/fonts/FontRefDC.h>
#include <velum/fonts/PolygonalGlyphCache.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <velum/fonts/UCS2Decomp.h>
#include <velum/mathtext/MTContext.h>
#include <velum/mathtext/MTDateTimeFormat.h>
#include <velum/mathtext/MTMetricsTextIF.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/MTTextIF.h>
#include <testing/FixedTextDevice.h>

#include <memory>
#include <sstream>
#include <string>

namespace vlm::faults {
namespace {

const char* const kLabel =
    "CO\\dn15 {\\fs65 2 of a text that is long}\\up15  flux ({\\red \\i \xB5mol} s\\up35 {\\fs65 "
    "-1})\n"
    "a\\ssbeg(50,-100,left,baseline) below the line\\ssend  {\\f\"A face of a long name\" \\b "
    "bold}\ttab";

/// Finds the faces of the machine, which takes long.
void FindFaces() { (void)CSystemFaceInfo::GetInstance(); }

/// Gives what there is of a piece of text: its face, direction and characters.
class Recorder : public UCS2DecompIF {
 public:
  void BeginDecomp() override {}
  void EndDecomp() override {}
  void SubText(const UCS2DecompSubSet& piece) override {
    text += piece.GetFaceInfoPtr()->GetFaceName().String() + (piece.IsRTLReading() ? "<" : ">") +
            std::to_string(piece.GetString().size()) + " ";
  }

  std::string text;
};

/// Makes every glyph a triangle.
class Triangles : public PolygonalGlyphBuilder {
 public:
  using PolygonalGlyphBuilder::PolygonalGlyphBuilder;
  explicit Triangles(const CSystemFaceInfo& faces) : PolygonalGlyphBuilder(faces) {}

 private:
  std::unique_ptr<PolygonalGlyph> DoBuildGlyph(unsigned int, unsigned short code) const override {
    auto glyph = std::make_unique<PolygonalGlyph>(code);
    glyph->Counts() = {3};
    glyph->Vertices() = {{0, 0}, {1, 0}, {0, 1}};
    return glyph;
  }
};

std::shared_ptr<const CFaceInfo> Face(const char* name, unsigned int types) {
  auto& faces = CSystemFaceInfo::GetInstance();
  const int index = faces.Match(name, 400, 0, 0, 0, FACE_MATCH_NAME, types);
  return faces.GetFaceInfo(static_cast<unsigned int>(index));
}

const Scenario kScenarios[] = {
    {"TheListOfFaces",
     [] {
       const auto& faces = CSystemFaceInfo::GetInstance();
       return std::to_string(faces.GetNumItems()) +
              faces.GetDefVariablePitchFaceInfo()->GetFaceName().String() +
              Face("A face that nobody has installed", 65535)->GetFaceName().String();
     }},
    {"AFaceOfLines",
     [] {
       // A copy has no face yet.
       const CSYMSetInfo& first = g_SYMSetList[0];
       const CSYMSetInfo set(first.GetFaceName(), first.GetFileName(), first.GetPitchAndFamily(),
                             first.GetCharSet(), first.GetIndex());
       const auto face = set.GetStrokedFacePtr();
       return face->GetFaceName().String() +
              std::to_string(face->GetGlyphInfo('A').vertices.size()) +
              std::to_string(Face("KQ Helv", CFaceInfo::FACE_TYPE_SYM)->CalcEmExtent("Depth"));
     },
     0, &FindFaces},
    {"AnOutlineFace",
     [] {
       const auto face = Face("DejaVu Sans", CFaceInfo::FACE_TYPE_TRUETYPE);
       const FontRefDC context;
       return std::to_string(face->CalcEmExtent("Depth (m) of all that is long")) + " " +
              std::to_string(face->GetOTM().otmTextMetrics.tmAscent) + " " +
              std::to_string(face->GetGlyphMetrics(0x3BB).gmBlackBoxX);
     },
     0, &FindFaces},
    {"TextThatIsTakenApart",
     [] {
       const auto face = Face("DejaVu Sans", CFaceInfo::FACE_TYPE_TRUETYPE);
       UCS2Decomp decomp;
       Recorder sink;
       if (!decomp.SetupDecomp(L"Depth \u05E2\u05D5\u05DE\u05E7 12 m \u6DF1\u5EA6"))
         throw Refused();
       decomp.Decompose(sink, face, DECOMP_CHECK_GLYPHS | DECOMP_REVERSE);
       return sink.text;
     },
     0, &FindFaces},
    {"GlyphsThatAreKept",
     [] {
       const Triangles triangles(CSystemFaceInfo::GetInstance());
       PolygonalGlyphCache cache(triangles, 200);
       std::size_t vertices = 0;
       for (const char c : {'a', 'b', 'a', 'c', 'd', 'e', 'b'}) {
         vertices += cache.Glyph(0, static_cast<unsigned char>(c), true)->Vertices().size();
       }
       return std::to_string(vertices);
     },
     0, &FindFaces},
    {"ALabelThatIsLaidOut",
     [] {
       testing::FixedTextDevice device;
       CMTTextIF text(device);
       CMTContext context(text, 8);
       auto label = std::make_shared<CMTMultiLineElement>(text);
       if (context.Parse(kLabel, label) != CMTContext::RETVAL_SUCCESS) throw Refused();
       const Box2d box = label->GetBBoxUsingTextIF(text, Vec2d(100, 50));
       label->DrawUsingTextIF(text, Vec2d(100, 50));
       std::ostringstream out;
       out << box.xMin() << " " << box.yMin() << " " << box.xMax() << " " << box.yMax();
       return out.str();
     }},
    {"ALabelThatIsMeasuredWithFaces",
     [] {
       CMTMetricsTextIF device;
       device.SetFace("DejaVu Sans");
       Box2d box;
       device.GetBounds("Depth (m) of all that is long", box);
       std::ostringstream out;
       out << box.xMax() << " " << MathTextToSimpleText("km{\\up40 2 and all that is long}");
       return out.str();
     },
     0, &FindFaces},
    {"FormatsOfDatesInLabels",
     [] {
       return MathTextDTToPrintfFormat("h:nn:ss tt dddd dd mmmm yyyy").String() +
              PrintfToMathTextDTFormat("%m/%d/%y %H:%M:%S %A %B").String();
     }},
};

}  // namespace

std::span<const Scenario> LabelScenarios() { return kScenarios; }

}  // namespace vlm::faults
