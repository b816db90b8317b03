#pragma once

/// \file
/// The symbol sets that the library knows.

namespace vlm::detail {

/// A symbol set.
struct SymbolSetRow {
  const char* faceName;
  const char* fileName;
  unsigned char pitchAndFamily;
  unsigned char charSet;
};

/// All sets, in the order of their indices.
inline constexpr SymbolSetRow kSymbolSets[] = {
    {"KQ Helv", "KQhelv.sym", 0x22, 0},       {"KQ Roman", "KQroman.sym", 0x12, 0},
    {"KQ Symbol", "KQsymbol.sym", 0x22, 2},   {"KQ SET1", "set1.sym", 0x22, 0},
    {"KQ SET2", "set2.sym", 0x22, 2},         {"KQ SET3", "set3.sym", 0x42, 0},
    {"KQ SET4", "set4.sym", 0x12, 0},         {"KQ SET5", "set5.sym", 0x12, 2},
    {"KQ SET6", "set6.sym", 0x12, 0},         {"KQ SET7", "set7.sym", 0x22, 0},
    {"KQ SET8", "set8.sym", 0x42, 0},         {"KQ SET9", "set9.sym", 0x12, 0},
    {"KQ SET10", "set10.sym", 0x12, 0},       {"KQ SET11", "set11.sym", 0x12, 0},
    {"KQ SET12", "set12.sym", 0x52, 0},       {"KQ SET13", "set13.sym", 0x52, 0},
    {"KQ SET14", "set14.sym", 0x52, 0},       {"KQ SET15", "set15.sym", 0x52, 0},
    {"KQ SET16", "set16.sym", 0x52, 0},       {"KQ SET1FS", "set1fs.sym", 0x21, 0},
    {"KQ SET4FS", "set4fs.sym", 0x11, 0},     {"KQ SET6FS", "set6fs.sym", 0x11, 0},
    {"KQ SET10FS", "set10fs.sym", 0x11, 0},   {"KQ SET11FS", "set11fs.sym", 0x11, 0},
    {"KQ SET1INT", "set1int.sym", 0x22, 0},   {"KQ SET10INT", "set10int.sym", 0x12, 0},
    {"KQ CENTERED", "centered.sym", 0x52, 0}, {"KQ DEFAULT", "default.sym", 0x21, 0},
};

/// Fills `g_SYMSetList` unless it is filled.
void FillSymbolSetList();

}  // namespace vlm::detail
