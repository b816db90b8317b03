#include <examples/specimen/Options.h>

#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>

#include <charconv>
#include <optional>
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
  long value = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end || value < least || value > most) {
    throw UsageError(name + " needs a number from " + std::to_string(least) + " to " +
                     std::to_string(most) + ", not '" + text + "'");
  }
  return value;
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

// Reads the arguments behind the command.
class Parser {
 public:
  Parser(const std::vector<std::string>& arguments, Command command) : arguments_(arguments) {
    options_.command = command;
  }

  Options Parse() {
    bool hasEnded = false;
    for (at_ = 1; at_ < arguments_.size(); ++at_) {
      const std::string& word = arguments_[at_];
      if (!hasEnded && word == "--") {
        hasEnded = true;
      } else if (!hasEnded && word.size() > 1 && word.front() == '-') {
        TakeOption(word);
        if (options_.command == Command::Help) return options_;
      } else {
        TakeOperand(word);
      }
    }
    Check();
    return options_;
  }

 private:
  const std::string& Value() {
    if (at_ + 1 == arguments_.size()) throw UsageError(arguments_[at_] + " needs a value");
    return arguments_[++at_];
  }

  void TakeOption(const std::string& name) {
    const Command command = options_.command;
    const bool draws =
        command == Command::Sheet || command == Command::Sets || command == Command::Text;
    if (name == "-h" || name == "--help") {
      options_.command = Command::Help;
    } else if (draws && (name == "-o" || name == "--output")) {
      options_.output = Value();
    } else if (command == Command::Text && name == "--face") {
      options_.face = Value();
    } else if (command == Command::List && TakeFilter(name)) {
    } else if (command == Command::Match && TakeDescription(name)) {
    } else {
      throw UsageError("unknown option '" + name + "' of " + arguments_.front());
    }
  }

  bool TakeFilter(const std::string& name) {
    FaceFilter& filter = options_.filter;
    if (name == "--family") {
      filter.text = Value();
    } else if (name == "--stroked") {
      filter.strokedOnly = true;
    } else if (name == "--outline") {
      filter.outlineOnly = true;
    } else if (name == "--italic") {
      filter.italicOnly = true;
    } else if (name == "--weight") {
      filter.weight = static_cast<int>(NumberOf(name, Value(), 1, kGreatestWeight));
    } else {
      return false;
    }
    return true;
  }

  bool TakeDescription(const std::string& name) {
    Description& description = options_.description;
    if (name == "--weight") {
      description.weight = NumberOf(name, Value(), 1, kGreatestWeight);
      description.matchFlags |= FACE_MATCH_WEIGHT;
    } else if (name == "--italic" || name == "--upright") {
      description.isItalic = name == "--italic";
      description.matchFlags |= FACE_MATCH_ITALIC;
    } else if (name == "--charset") {
      description.charset = static_cast<int>(NumberOf(name, Value(), 0, kGreatestCharset));
      description.matchFlags |= FACE_MATCH_CHARSET;
    } else if (name == "--pitch") {
      description.pitchAndFamily |= static_cast<int>(NumberOf(name, Value(), 0, 1));
      description.matchFlags |= FACE_MATCH_PITCH;
    } else if (name == "--family") {
      description.pitchAndFamily |= FamilyBitsOf(Value()) << 4;
      description.matchFlags |= FACE_MATCH_FAMILY;
    } else if (name == "--stroked") {
      description.types = CFaceInfo::FACE_TYPE_SYM;
    } else if (name == "--outline") {
      description.types = CFaceInfo::FACE_TYPE_TRUETYPE;
    } else if (name == "--best") {
      options_.best = static_cast<std::size_t>(NumberOf(name, Value(), 1, kMostBest));
    } else {
      return false;
    }
    return true;
  }

  void TakeOperand(const std::string& word) {
    const char* operand = OperandOf(options_.command);
    if (operand == nullptr) throw UsageError("what is '" + word + "'");
    if (operand_) throw UsageError("more than " + std::string(operand) + ": '" + word + "'");
    operand_ = word;
  }

  void Check() {
    const Command command = options_.command;
    if (const char* operand = OperandOf(command)) {
      if (!operand_ || operand_->empty()) {
        throw UsageError(arguments_.front() + " needs " + operand);
      }
      if (command == Command::Match) options_.description.name = *operand_;
      if (command == Command::Sheet) options_.face = *operand_;
      if (command == Command::Text) options_.text = *operand_;
    }
    if (options_.filter.strokedOnly && options_.filter.outlineOnly) {
      throw UsageError("--stroked and --outline exclude each other");
    }
    if (command == Command::List || command == Command::Match) return;
    if (options_.output.empty()) throw UsageError(arguments_.front() + " needs --output FILE");
    if (!examples::PictureFormatOf(options_.output)) {
      throw UsageError("'" + options_.output + "' ends in none of .png, .svg and .pdf");
    }
  }

  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
  Options options_;
  std::optional<std::string> operand_;
};

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  if (arguments.empty()) throw UsageError("a command is needed");
  if (arguments.front() == "-h" || arguments.front() == "--help") return {};
  return Parser(arguments, CommandOf(arguments.front())).Parse();
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::specimen
