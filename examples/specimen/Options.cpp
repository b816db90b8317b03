#include <examples/specimen/Options.h>

#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

#include <string_view>

namespace vlm::specimen {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Browses the faces that the library finds: outline faces and its own stroked ones.\n"
    "\n"
    "  specimen list [--family TEXT] [--stroked | --outline] [--italic] [--weight N]\n"
    "      lists the faces; TEXT is a part of the name of the face or of its family\n"
    "\n"
    "  specimen match NAME [--weight N] [--italic | --upright] [--charset N] [--pitch BIT]\n"
    "                      [--family WORD] [--stroked | --outline] [--best N]\n"
    "      shows which face a description matches, and the score of each term for the best faces;\n"
    "      what is not given is not compared. BIT is 0 or 1 and compared with bit 0 of the face's\n"
    "      pitch and family: 1 is a variable pitch in outline faces, a fixed one in stroked "
    "faces;\n"
    "      WORD is roman, swiss, modern, script or decorative\n"
    "\n"
    "  specimen sheet FACE -o FILE\n"
    "      draws a face: its measures, its lines, a text in three sizes, all codes; FACE is a "
    "name\n"
    "      or, for one of several of that name, the index that list shows\n"
    "\n"
    "  specimen sets -o FILE\n"
    "      draws the 28 symbol sets\n"
    "\n"
    "  specimen text TEXT [--face NAME] -o FILE\n"
    "      draws a text in any script piece by piece, and names the face and the direction of "
    "each\n"
    "\n"
    "  -o, --output FILE   the picture, which ends in .png, .svg or .pdf\n"
    "  -h, --help          this text\n"
    "\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

constexpr long kGreatestWeight = 1000;
constexpr long kGreatestCharset = 255;
constexpr long kMostBest = 1000;

long NumberOf(const std::string& name, const std::string& text, long least, long most) {
  const auto value = examples::NumberIn(text, least, most);
  if (!value) {
    throw UsageError(name + " needs a number from " + std::to_string(least) + " to " +
                     std::to_string(most) + ", not '" + text + "'");
  }
  return *value;
}

int FamilyBitsOf(const std::string& word) {
  for (int bits = 1; bits <= 5; ++bits) {
    if (word == FamilyWord(bits)) return bits;
  }
  throw UsageError("there is no family '" + word +
                   "' among roman, swiss, modern, script and decorative");
}

Command CommandOf(const std::string& word) {
  constexpr std::pair<std::string_view, Command> kCommands[] = {{"list", Command::List},
                                                                {"match", Command::Match},
                                                                {"sheet", Command::Sheet},
                                                                {"sets", Command::Sets},
                                                                {"text", Command::Text}};
  for (const auto& [name, command] : kCommands) {
    if (word == name) return command;
  }
  throw UsageError("there is no command '" + word + "' among list, match, sheet, sets and text");
}

// What takes an argument that is no option, in words; nothing if nothing does.
const char* OperandOf(Command command) {
  if (command == Command::Match) return "the name of a face";
  if (command == Command::Sheet) return "the name of a face";
  if (command == Command::Text) return "a text";
  return nullptr;
}

bool Draws(Command command) {
  return command == Command::Sheet || command == Command::Sets || command == Command::Text;
}

void AddFilter(examples::OptionReader& reader, FaceFilter& filter) {
  reader.Text({"--family"}, filter.text);
  reader.Flag({"--stroked"}, filter.strokedOnly);
  reader.Flag({"--outline"}, filter.outlineOnly);
  reader.Flag({"--italic"}, filter.italicOnly);
  reader.Value({"--weight"}, [&filter](const std::string& weight) {
    filter.weight = static_cast<int>(NumberOf("--weight", weight, 1, kGreatestWeight));
  });
}

void AddDescription(examples::OptionReader& reader, Options& options) {
  Description& description = options.description;
  const auto number = [&](const char* name, long least, long most, int flag, auto take) {
    reader.Value({name}, [=, &description](const std::string& text) {
      take(NumberOf(name, text, least, most));
      description.matchFlags |= flag;
    });
  };
  number("--weight", 1, kGreatestWeight, FACE_MATCH_WEIGHT,
         [&description](long weight) { description.weight = weight; });
  number("--charset", 0, kGreatestCharset, FACE_MATCH_CHARSET,
         [&description](long charset) { description.charset = static_cast<int>(charset); });
  number("--pitch", 0, 1, FACE_MATCH_PITCH,
         [&description](long bit) { description.pitchAndFamily |= static_cast<int>(bit); });
  for (const bool isItalic : {true, false}) {
    reader.Flag({isItalic ? "--italic" : "--upright"}, [&description, isItalic] {
      description.isItalic = isItalic;
      description.matchFlags |= FACE_MATCH_ITALIC;
    });
  }
  reader.Value({"--family"}, [&description](const std::string& word) {
    description.pitchAndFamily |= FamilyBitsOf(word) << 4;
    description.matchFlags |= FACE_MATCH_FAMILY;
  });
  reader.Flag({"--stroked"}, [&description] { description.types = CFaceInfo::FACE_TYPE_SYM; });
  reader.Flag({"--outline"}, [&description] { description.types = CFaceInfo::FACE_TYPE_TRUETYPE; });
  reader.Value({"--best"}, [&options](const std::string& count) {
    options.best = static_cast<std::size_t>(NumberOf("--best", count, 1, kMostBest));
  });
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  if (arguments.empty()) throw UsageError("a command is needed");
  const std::string& word = arguments.front();
  if (word == "-h" || word == "--help") return {};
  Options options;
  options.command = CommandOf(word);
  std::string operand;
  examples::OptionReader reader(word);
  if (options.command == Command::List) AddFilter(reader, options.filter);
  if (options.command == Command::Match) AddDescription(reader, options);
  if (Draws(options.command)) reader.Text({"-o", "--output"}, options.output);
  if (options.command == Command::Text) reader.Text({"--face"}, options.face);
  const char* const needed = OperandOf(options.command);
  if (needed) {
    reader.Operands([&](const std::string& other) {
      if (!operand.empty())
        throw UsageError(std::string("more than ") + needed + ": '" + other + "'");
      operand = other;
    });
  }
  if (!reader.Read({arguments.begin() + 1, arguments.end()})) return {};
  if (needed && operand.empty()) throw UsageError(word + " needs " + needed);
  if (options.command == Command::Match) options.description.name = operand;
  if (options.command == Command::Sheet) options.face = operand;
  if (options.command == Command::Text) options.text = operand;
  if (options.filter.strokedOnly && options.filter.outlineOnly) {
    throw UsageError("--stroked and --outline exclude each other");
  }
  if (!Draws(options.command)) return options;
  if (options.output.empty()) throw UsageError(word + " needs --output FILE");
  examples::CheckPicture(options.output);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::specimen
