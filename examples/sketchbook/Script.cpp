#include <examples/sketchbook/Script.h>

#include <velum/core/Exception.h>
#include <examples/sketchbook/Words.h>

#include <functional>
#include <istream>
#include <optional>
#include <ostream>

namespace vlm::sketchbook {
namespace {

// Reads a line, and more as long as a quotation mark is open in it; false at the end.
bool ReadStatement(std::istream& lines, const std::function<void()>& beforeMore,
                   std::size_t& lineNumber, std::string& statement) {
  if (!std::getline(lines, statement)) return false;
  ++lineNumber;
  for (std::string more; HasOpenQuote(statement);) {
    beforeMore();
    if (!std::getline(lines, more)) break;
    ++lineNumber;
    statement += "\n" + more;
  }
  return true;
}

// What is wrong with the statement; nothing if it was done.
std::optional<std::string> Try(Session& session, const std::string& statement) {
  try {
    session.Execute(statement);
    return std::nullopt;
  } catch (const Exception& error) {
    return GString(error.GetDescription()).TrimRight();  // some end in a line end
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace

void RunScript(Session& session, std::istream& script, const std::string& name) {
  std::size_t lineNumber = 0;
  std::string statement;
  while (!session.IsOver()) {
    const std::size_t first = lineNumber + 1;
    if (!ReadStatement(
            script, [] {}, lineNumber, statement))
      break;
    if (const auto fault = Try(session, statement)) {
      throw ScriptError(name + ":" + std::to_string(first) + ": " + *fault);
    }
  }
}

void RunDialog(Session& session, std::istream& lines, std::ostream& terminal) {
  session.TellEveryStep();
  std::size_t lineNumber = 0;
  std::string statement;
  while (!session.IsOver()) {
    terminal << "sketch> " << std::flush;
    const auto beforeMore = [&] { terminal << "      > " << std::flush; };
    if (!ReadStatement(lines, beforeMore, lineNumber, statement)) {
      terminal << "\n";
      break;
    }
    if (const auto fault = Try(session, statement)) terminal << *fault << "\n";
  }
}

}  // namespace vlm::sketchbook
