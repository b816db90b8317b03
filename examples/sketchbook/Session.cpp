#include <examples/sketchbook/Session.h>

#include <velum/commands/CommandFactory.h>
#include <velum/commands/CommandOptions.h>
#include <velum/core/Exception.h>
#include <velum/core/StringConvert.h>
#include <examples/sketchbook/Refuse.h>
#include <examples/sketchbook/SketchCommand.h>
#include <examples/sketchbook/SketchFile.h>
#include <examples/sketchbook/SketchPicture.h>
#include <examples/sketchbook/Words.h>

#include <ostream>

namespace vlm::sketchbook {
namespace {

constexpr char kHelp[] =
    "  do add KIND NAME=VALUE ...   adds a shape:\n"
    "       circle x= y= r=             label x= y= text= [size= align= angle=]\n"
    "       ellipse x= y= rx= ry= [angle=]\n"
    "       rectangle x= y= w= h= [corner= angle=]\n"
    "       polyline points=\"x,y x,y ...\" [closed= arrow=]\n"
    "       connector from=SHAPE to=SHAPE [via=\"x,y ...\" arrow=]\n"
    "     all may have name= style= color= fill= width= dash=;\n"
    "     or adds what shapes share: style name= [style= color= fill= width= dash=]\n"
    "  do move SHAPE [dx= dy= angle=]\n"
    "  do recolor SHAPE|STYLE [color= fill=]\n"
    "  do delete SHAPE|STYLE        a shape's connectors go with it\n"
    "  undo, redo                   one step\n"
    "  history                      what was done, newest first\n"
    "  limit [N]                    how many steps the history keeps\n"
    "  list                         the styles and shapes\n"
    "  save FILE, load FILE         load begins a new history\n"
    "  draw FILE                    a picture: .png, .svg or .pdf\n"
    "  help, quit\n"
    "Points, y downwards, angles in degrees. Colours have names or are written #rrggbb, "
    "#rrggbbaa.\n"
    "align is left, center or right, arrow is none, end or both. Text is math text. Double quotes\n"
    "keep blanks and line ends together: text=\"two words\". # begins a comment.\n";

// A bare word stands for the kind of what is added, and else for a name.
CommandOptions ReadOptions(const std::vector<GString>& words) {
  if (words.size() < 2) Refuse("do what? add, move, recolor or delete");
  CommandOptions options(words[1]);
  const bool adds = words[1].ToLower() == "add";
  for (std::size_t i = 2; i < words.size(); ++i) {
    const unsigned int equals = words[i].find('=');
    if (equals == GString::npos) {
      options.options.emplace_back(adds ? "kind" : "name", words[i]);
    } else {
      options.options.emplace_back(words[i].substr(0, equals), words[i].substr(equals + 1));
    }
  }
  return options;
}

std::shared_ptr<Command> MakeCommand(const CommandOptions& options, Document& document) {
  if (!CommandFactory::CanConstruct(options.key)) {
    Refuse("there is no command '" + options.key + "'");
  }
  std::shared_ptr<Command> command = CommandFactory::Construct(options.key);
  command->Option("document", boost::any(&document));
  for (const auto& [name, value] : options) {
    if (!command->Option(name, value)) {
      Refuse(options.key + " has no option '" + name + "' with the value '" + value + "'");
    }
  }
  return command;
}

const GString& RequireOne(const std::vector<GString>& words, const char* what) {
  if (words.size() != 2) Refuse(words.front() + " needs " + what);
  return words[1];
}

void RequireNone(const std::vector<GString>& words) {
  if (words.size() != 1) Refuse(words.front() + " stands alone");
}

GString Counted(std::size_t count, const char* what) {
  return GString(std::to_string(count)) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

struct Session::Action {
  const char* name;
  void (Session::*run)(const Words& words);
};

Session::Session(std::ostream& answers, unsigned int undoLimit)
    : answers_(answers), document_(std::make_shared<Document>()), history_(undoLimit) {
  RegisterCommands();
}

const Session::Action* Session::FindAction(const GString& name) {
  static constexpr Action kActions[] = {
      {"do", &Session::Do},           {"undo", &Session::Undo},   {"redo", &Session::Redo},
      {"history", &Session::History}, {"limit", &Session::Limit}, {"list", &Session::List},
      {"save", &Session::Save},       {"load", &Session::Load},   {"draw", &Session::Draw},
      {"help", &Session::Help},       {"quit", &Session::Quit}};
  for (const Action& action : kActions) {
    if (name == action.name) return &action;
  }
  return nullptr;
}

void Session::Execute(const std::string& line) {
  if (HasOpenQuote(line)) Refuse("a quotation mark is open");
  const Words words = ReadWords(line);
  if (words.empty()) return;
  const Action* const action = FindAction(words.front());
  if (action == nullptr) Refuse("what is '" + words.front() + "'? see help");
  (this->*action->run)(words);
}

void Session::Do(const Words& words) {
  const std::shared_ptr<Command> command = MakeCommand(ReadOptions(words), *document_);
  history_.Do(command);
  if (tellsEveryStep_) answers_ << "Done: " << command->Label() << "\n";
}

void Session::Undo(const Words& words) {
  RequireNone(words);
  if (!history_.Undoable()) Refuse("there is nothing to undo");
  const GString label = history_.UndoLabel();
  history_.Undo();
  answers_ << "Undone: " << label << "\n";
}

void Session::Redo(const Words& words) {
  RequireNone(words);
  if (!history_.Redoable()) Refuse("there is nothing to redo");
  const GString label = history_.RedoLabel();
  history_.Redo();
  answers_ << "Redone: " << label << "\n";
}

// Newest first: the commands before the one that undo would reverse are undone.
void Session::History(const Words& words) {
  RequireNone(words);
  const bool canStep = history_.Undoable() || history_.Redoable();
  const char* state = canStep ? "undone" : "kept";
  for (const auto& command : history_) {
    if (command == history_.UndoCommand()) state = "done";
    answers_ << "  " << state << "  " << command->Label() << "\n";
  }
  answers_ << Counted(history_.size(), "step") << " of at most " << history_.MaximumSize() << "\n";
}

void Session::Limit(const Words& words) {
  if (words.size() > 1) {
    unsigned int limit = 0;
    if (!StringToUnsigned(RequireOne(words, "a number"), limit)) Refuse("limit needs a number");
    history_.MaximumSize(limit);
  }
  answers_ << "The history keeps " << Counted(history_.MaximumSize(), "step") << "\n";
}

void Session::List(const Words& words) {
  RequireNone(words);
  for (const auto& style : document_->Styles()) {
    answers_ << "  style '" << style->name << "' of "
             << Counted(document_->UsersOf(*style), "shape") << "\n";
  }
  for (const auto& shape : document_->Shapes()) {
    answers_ << "  " << shape->Kind() << " '" << shape->Name() << "'";
    if (!shape->Connectors().empty()) {
      answers_ << " with " << Counted(shape->Connectors().size(), "connector");
    }
    answers_ << "\n";
  }
  answers_ << Counted(document_->Shapes().size(), "shape") << ", "
           << Counted(document_->Styles().size(), "style") << "\n";
}

void Session::Save(const Words& words) {
  const GString& path = RequireOne(words, "a file name");
  SaveSketch(document_, path);
  answers_ << "Saved " << path << "\n";
}

// The present document stays until the new one is known to be sound.
void Session::Load(const Words& words) {
  const GString& path = RequireOne(words, "a file name");
  std::shared_ptr<Document> document = LoadSketch(path);
  history_.Clear();
  document_ = std::move(document);
  answers_ << "Loaded " << path << ": " << Counted(document_->Shapes().size(), "shape") << "\n";
}

void Session::Draw(const Words& words) {
  const GString& path = RequireOne(words, "a file name");
  DrawSketch(*document_, path);
  answers_ << "Made " << path << "\n";
}

const char* Session::HelpText() { return kHelp; }

void Session::Help(const Words&) { answers_ << kHelp; }

void Session::Quit(const Words& words) {
  RequireNone(words);
  isOver_ = true;
}

}  // namespace vlm::sketchbook
