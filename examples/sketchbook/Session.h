#pragma once

/// \file
/// The language of the sketchbook: a document, its history, and the words that work on them.
///
///     vlm::sketchbook::Session session(std::cout, 100);
///     session.Execute("do add circle x=100 y=80 r=20 name=lens");
///     session.Execute("undo");

#include <velum/commands/CommandStack.h>
#include <velum/core/GString.h>
#include <examples/sketchbook/Document.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace vlm::sketchbook {

/// A document that is worked on, line by line. Has identity; writes its answers to a stream that it
/// does not own.
class Session {
 public:
  /// Begins with an empty document; the history keeps at most `undoLimit` commands.
  Session(std::ostream& answers, unsigned int undoLimit);

  /// What lines may say, as `help` shows it.
  [[nodiscard]] static const char* HelpText();

  /// The present document.
  [[nodiscard]] const std::shared_ptr<Document>& Sketch() const { return document_; }
  /// True after `quit`.
  [[nodiscard]] bool IsOver() const { return isOver_; }

  /// Also tells what each `do` did, which a script does not.
  void TellEveryStep() { tellsEveryStep_ = true; }
  /// Does what a line says; see `help`. A quoted text may have line ends in it.
  ///
  /// *Errors*: `Exception` or `std::exception`, with a message for the user. Document and history
  /// are then as they were.
  void Execute(const std::string& line);

 private:
  using Words = std::vector<GString>;
  struct Action;

  static const Action* FindAction(const GString& name);

  void Do(const Words& words);
  void Undo(const Words& words);
  void Redo(const Words& words);
  void History(const Words& words);
  void Limit(const Words& words);
  void List(const Words& words);
  void Save(const Words& words);
  void Load(const Words& words);
  void Draw(const Words& words);
  void Help(const Words& words);
  void Quit(const Words& words);

  std::ostream& answers_;
  std::shared_ptr<Document> document_;
  CommandStack history_;  // its commands know the document, so it goes first
  bool tellsEveryStep_ = false;
  bool isOver_ = false;
};

}  // namespace vlm::sketchbook
