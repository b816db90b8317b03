#pragma once

/// \file
/// Declares the classes of the files, for headers that only name them.
///
///     #include <velum/files/Forward.h>
///     namespace vlm { void Load(CFile& file); }

namespace vlm {

struct Anchor;
class Archive;
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
struct Caption;
struct CellAttrib;
class CodePageInfo;
struct Col;
struct ColAttrib;
struct ColGroup;
struct CoreAttrib;
struct DLBeg;
struct DLEnd;
struct DeprecatedPath;
struct HRule;
struct Heading;
struct ImageAttrib;
struct Img;
struct LIBeg;
struct LIEnd;
struct Note;
struct OLBeg;
struct OLEnd;
struct Paragraph;
struct Preamble;
struct RowAttrib;
struct TBodyBeg;
struct TBodyEnd;
struct TDBeg;
struct TDEnd;
struct TFootBeg;
struct TFootEnd;
struct THeadBeg;
struct THeadEnd;
struct TRBeg;
struct TREnd;
struct TableAttrib;
struct TableBeg;
struct TableEnd;
struct TimeStamp;
struct ULBeg;
struct ULEnd;
struct VSpace;
class XMLNode;
class XMLScanner;

}  // namespace vlm
