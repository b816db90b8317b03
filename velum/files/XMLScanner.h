#pragma once

/// \file
/// Reads small XML documents into trees of nodes.
///
///     vlm::XMLScanner scanner;
///     const auto root = scanner.ScanFile("settings.xml");
///     const auto settings = root->FindChild("settings", 0);
///
/// What it reads is a part of XML: elements, attributes, character data, comments that end with
/// "-->", processing instructions as elements, and document types without an internal subset. It
/// knows no entity but `&quot;` in attributes, no CDATA, no namespaces and no encodings: texts are
/// the bytes of the file. What it does not know it takes for names and text, and does not refuse.

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/files/XMLNode.h>

#include <cstdint>
#include <memory>
#include <string>

namespace vlm {

/// A reader of one file at a time, whose tree grows with each file until `Close`.
///
/// An object with identity. Reading is a machine of states, each a virtual member that a derived
/// scanner may replace; one that does reads characters by the protected members and sets the state
/// that comes next. The tree is shared with the caller and outlives the scanner.
///
/// Memory is at most a hundred times the file's size, and a block. Time grows with the file's size.
///
/// Threads: a scanner and its tree belong to one thread at a time.
///
/// *Errors*: `Exception` with the file's path. After one the tree keeps what was read, and the next
/// `ScanFile` begins afresh.
class VELUM_API XMLScanner {
 public:
  /// A scanner with an empty root.
  XMLScanner();
  XMLScanner(const XMLScanner&) = delete;
  XMLScanner& operator=(const XMLScanner&) = delete;
  /// Leaves the tree to those who hold it.
  virtual ~XMLScanner();

  /// Reads a file and gives the root, whose children are the outermost elements, those of files
  /// that were read before among them; null if a derived scanner has ended the reading. The root
  /// has no name. An XML declaration is a child named "xml".
  ///
  /// - The file ends inside of an element: the elements so far stay, and no error is raised. An
  ///   attribute that the end cuts off is left out.
  /// - A derived scanner's state calls it: the inner file's elements become the root's children,
  ///   and then, after an error as well, the outer file is read on where it was. Nothing but memory
  ///   and open files bounds a file that includes itself.
  ///
  /// *Errors*: `ERR_OPEN`, `ERR_READ` with the system's text; `ERR_PARSE` with the line and "Tag
  /// without name", "Invalid closing bracket" or "Closing tag mismatch"; `ERR_INTERNAL` for a state
  /// that is none of the nine, which a derived scanner has set.
  std::shared_ptr<XMLNode> ScanFile(const GString& path);
  /// Empties the root's children.
  void Close() noexcept;

 protected:
  /// What is read next. Each state but the last runs the member function in its comment.
  enum State : int {
    StateValue = 0,           ///< Character data: `ReadValue`.
    StateTagName = 1,         ///< The name of an opening tag: `ReadTagName`.
    StateComment = 2,         ///< A comment: `ReadComment`.
    StateDocType = 3,         ///< A document type: `ReadDocType`.
    StateAttributes = 4,      ///< The name of an attribute, or a tag's end: `ReadAttributes`.
    StateAttributeValue = 5,  ///< The value of an attribute: `ReadAttributeValue`.
    StateCloseBracket = 6,    ///< The end of an opening tag: `CloseBracket`.
    StateCloseTag = 7,        ///< A closing tag: `ReadCloseTag`.
    StateEnd = 8,             ///< The end of the file or of the scan.
  };

  /// Adds character data to the current node up to a "<", and chooses the state by what follows
  /// that; makes a child the current node for an opening tag.
  virtual void ReadValue();
  /// Reads the current node's name.
  virtual void ReadTagName();
  /// Reads a closing tag and goes back to the parent. False ends the scan, which then gives no
  /// root; this one is always true.
  virtual bool ReadCloseTag();
  /// Reads an attribute's name; without one the tag is to be closed next.
  virtual void ReadAttributes();
  /// Reads an attribute's value, if there is one, and sets it at the current node.
  virtual void ReadAttributeValue();
  /// Reads the end of an opening tag; "/>" and "?>" go back to the parent.
  virtual void CloseBracket();
  /// Reads up to "-->"; after a mismatch the search begins behind it.
  virtual void ReadComment();
  /// Reads up to ">".
  virtual void ReadDocType();

  /// Reads a character: the one that was put back, or a byte of the file. At the end, and outside
  /// of a scan, it sets `StateEnd` and gives 0.
  ///
  /// *Errors*: `ERR_READ`.
  char ReadNextChar() {
    char c = pushback_;
    if (c != 0) {
      pushback_ = 0;
    } else if (next_ != end_ || Fill()) {
      c = *next_++;
    } else {
      state_ = StateEnd;
      return 0;
    }
    if (c == '\n') ++lineNumber_;
    return c;
  }
  /// Reads characters up to and with the first that is no white space.
  char ReadNextNonSpaceChar();
  /// Puts a character back to be read next; only one can wait, and 0 is none.
  void Unget(char c) noexcept {
    pushback_ = c;
    if (c == '\n') --lineNumber_;
  }
  /// Reads past white space and then up to white space or one of `> ? = /`, which is put back; a
  /// byte 0 ends a word and is dropped.
  std::string ReadWord();
  /// Reads up to a double quote, which is dropped, or to the end of the file.
  std::string ReadLiteral();

  /// The state.
  [[nodiscard]] State GetState() const noexcept { return state_; }
  /// Sets the state that comes next.
  void SetState(State state) noexcept { state_ = state; }
  /// The root.
  [[nodiscard]] const std::shared_ptr<XMLNode>& GetRoot() const noexcept { return root_; }
  /// The node that is being read; the root before and after a scan.
  [[nodiscard]] const std::shared_ptr<XMLNode>& GetCurrentNode() const noexcept { return current_; }
  /// Makes another node the one that is being read.
  ///
  /// *Errors*: `ERR_INTERNAL` for a null pointer.
  void SetCurrentNode(const std::shared_ptr<XMLNode>& node);
  /// The attribute that is being read.
  [[nodiscard]] const std::string& GetAttributeName() const noexcept { return attributeName_; }
  /// Sets the attribute that is being read.
  void SetAttributeName(const std::string& name) { attributeName_ = name; }
  /// The number of the line that is being read, counted from 1.
  [[nodiscard]] std::int64_t GetLineNumber() const noexcept { return lineNumber_; }
  /// Throws `ERR_PARSE` with the file, the line and `text`.
  [[noreturn]] void Fail(const char* text) const;

 private:
  class Source;
  class Scan;

  /// Reads the next block; false at the end of the file.
  bool Fill();
  [[gnu::visibility("hidden")]] bool RunStates();
  [[gnu::visibility("hidden")]] void BeginChild();
  [[gnu::visibility("hidden")]] void GoToParent(const char* complaint);
  [[gnu::visibility("hidden")]] void AppendUpTo(char stop, std::string& text);

  char pushback_ = 0;
  std::int64_t lineNumber_ = 1;
  State state_ = StateComment;
  std::shared_ptr<XMLNode> root_;
  std::shared_ptr<XMLNode> current_;
  GString path_;
  std::unique_ptr<Source> source_;
  const char* next_ = nullptr;
  const char* end_ = nullptr;
  std::string attributeName_;
};

}  // namespace vlm
