#pragma once

/// \file
/// A session fed from a stream.
///
///     std::ifstream script("bench.txt");
///     vlm::sketchbook::RunScript(session, script, "bench.txt");

#include <examples/sketchbook/Session.h>

#include <iosfwd>
#include <stdexcept>
#include <string>

namespace vlm::sketchbook {

/// A line of a script that could not be done; the message begins with its place: "bench.txt:12: ".
class ScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs the lines of a script up to its end or `quit`.
///
/// *Errors*: `ScriptError` for the first line that fails; those before it stay done.
void RunScript(Session& session, std::istream& script, const std::string& name);

/// Asks for lines at a terminal, and tells what is wrong with one, up to the end or `quit`.
void RunDialog(Session& session, std::istream& lines, std::ostream& terminal);

}  // namespace vlm::sketchbook
