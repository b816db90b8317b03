#pragma once

/// \file
/// The numbers of the library's error messages.
///
///     try { Load(path); }
///     catch (const vlm::Exception& error) {
///       if (error.GetErrCode() != vlm::ERR_OPEN) throw;
///     }

namespace vlm {

/// Numbers of error messages, which `Exception::GetErrCode` gives. "System text" is what
/// `FormatSystemErrorMsg` says.
enum ErrorCode : int {
  ERR_CUSTOM = 0,             ///< A message of the raiser's own.
  ERR_UNKNOWN = 1,            ///< Unknown error; argument: a number (`int`).
  ERR_INTERNAL = 2,           ///< An inconsistency inside the library, or misuse.
  ERR_OUT_OF_MEMORY = 3,      ///< Memory for drawing or geometry is exhausted.
  ERR_INVALID_PARAMETER = 4,  ///< An argument that is not allowed.
  ERR_INITIALIZE = 5,         ///< Something can't be started; argument: what.
  ERR_LOAD_LIBRARY = 6,       ///< A library can't be loaded; arguments: its name, system text.
  ERR_EXPORTED_SYMBOL = 7,    ///< A library lacks a symbol; argument: the symbol.
  ERR_CREATE_FILE = 8,        ///< A file can't be created; arguments: file, system text.
  ERR_FIND = 9,               ///< A file is not found; argument: file.
  ERR_OPEN = 10,              ///< A file can't be opened; arguments: file, system text.
  ERR_CLOSE = 11,             ///< A file can't be closed; arguments: file, system text.
  ERR_DELETE = 12,            ///< A file can't be deleted; arguments: file, system text.
  ERR_READ = 13,              ///< A file can't be read; arguments: file, system text.
  ERR_WRITE = 14,             ///< A file can't be written; arguments: file, system text.
  ERR_SEEK = 15,              ///< A place in a file can't be reached; arguments: file, system text.
  ERR_OPEN_REGISTRY_KEY = 16,   ///< A registry key can't be opened; argument: key.
  ERR_READ_REGISTRY_KEY = 17,   ///< A registry key can't be read; argument: key.
  ERR_WRITE_REGISTRY_KEY = 18,  ///< A registry key can't be written; argument: key.
  ERR_PARSE = 19,               ///< A text can't be parsed; arguments: file, line (`int`), why.
  ERR_FIND_SYMBOL = 20,         ///< A symbol is not found; argument: the symbol.
  ERR_DAMAGED_FILE = 21,   ///< A file is damaged; arguments: file, offset, computed and stored sum.
  ERR_CREATE_OBJECT = 22,  ///< An object can't be made; argument: its class.
  ERR_CREATE_THREAD = 23,  ///< A thread can't be started; argument: which.
  ERR_END_OF_FILE = 24,    ///< A file ends too early; argument: file.
  ERR_POLYGON_CLIPPING = 25,  ///< An inconsistency inside the polygon clipper.
};

}  // namespace vlm
