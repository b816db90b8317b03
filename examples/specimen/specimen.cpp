// Browses the faces that the library finds; specimen --help tells how.

#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>
#include <examples/specimen/FaceFacts.h>
#include <examples/specimen/FaceSheet.h>
#include <examples/specimen/MatchReport.h>
#include <examples/specimen/Options.h>
#include <examples/specimen/SetsSheet.h>
#include <examples/specimen/TextSheet.h>

#include <iomanip>
#include <iostream>
#include <stdexcept>

namespace vlm::specimen {
namespace {

void PrintList(const FaceFilter& filter) {
  const std::vector<FaceFacts> faces = SelectFaces(filter);
  std::cout << " index  face                             weight  style    pitch     family      "
               "charset\n";
  for (const FaceFacts& face : faces) {
    std::cout << std::setw(6) << face.index << "  " << std::left << std::setw(32) << face.name
              << std::right << std::setw(7) << face.weight << "  " << std::left << std::setw(8)
              << (face.isStroked  ? "stroked"
                  : face.isItalic ? "italic"
                                  : "upright")
              << " " << std::setw(9) << (face.isFixed ? "fixed" : "variable") << " "
              << std::setw(11) << FamilyWord(face.familyBits) << std::right << std::setw(8)
              << face.charset << "\n";
  }
  std::cout << faces.size() << " of " << CSystemFaceInfo::GetInstance().GetNumItems() << " faces\n";
}

template <class Sheet>
void Write(const Sheet& sheet, const std::string& output) {
  examples::WritePicture(output, sheet.Width(), sheet.Height(),
                         [&](_cairo* context) { sheet.Draw(context); });
}

unsigned int DefaultFace() {
  const auto& faces = CSystemFaceInfo::GetInstance();
  return FindFace(faces.GetDefVariablePitchFaceInfo()->GetFaceName().String());
}

void DrawText(const Options& options) {
  const unsigned int face = options.face.empty() ? DefaultFace() : FindFace(options.face);
  const TextSheet sheet(options.text, face);
  Write(sheet, options.output);
  for (const std::string& piece : sheet.Pieces()) std::cout << piece << "\n";
}

void Run(const Options& options) {
  switch (options.command) {
    case Command::Help:
      std::cout << UsageText();
      break;
    case Command::List:
      PrintList(options.filter);
      break;
    case Command::Match:
      PrintMatch(std::cout, options.description, options.best);
      break;
    case Command::Sheet:
      Write(FaceSheet(FindFace(options.face)), options.output);
      break;
    case Command::Sets:
      Write(SetsSheet(), options.output);
      break;
    case Command::Text:
      DrawText(options);
      break;
  }
  if (!options.output.empty()) std::cout << "Made " << options.output << "\n";
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::specimen

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("specimen", [&] {
    vlm::specimen::Run(vlm::specimen::ParseOptions({argv + 1, argv + argc}));
  });
}
