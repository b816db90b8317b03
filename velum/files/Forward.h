#pragma once

/// \file
/// Declares the classes of the files, for headers that only name them.
///
///     #include <velum/files/Forward.h>
///     namespace vlm { void Load(CFile& file); }

namespace vlm {

class CBufferedFile;
class CConfigFile;
class CEncodedBufferedFile;
class CFile;
class CFileFind;
struct CFilenameCompare;
class CHtmlReport;
class CMemoryFile;
class CParamList;
class CPath;
class CPrimData;
class CPrimType;
class CRegParamList;
class CWksStore;
class CodePageInfo;
struct DeprecatedPath;
class XMLNode;
class XMLScanner;

}  // namespace vlm
