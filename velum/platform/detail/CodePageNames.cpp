#include <velum/platform/detail/CodePageNames.h>

#include <algorithm>
#include <iterator>

namespace vlm::platform {

namespace {

struct Row {
  unsigned int codePage;
  const char* name;
};

// Ascending by number.
constexpr Row kRows[] = {
    {37, "ibm-37"},
    {437, "ibm-437"},
    {500, "ibm-500"},
    {708, "ibm-1089"},
    {720, "ibm-720"},
    {737, "ibm-737"},
    {775, "ibm-775"},
    {850, "ibm-850"},
    {852, "ibm-852"},
    {855, "ibm-855"},
    {857, "ibm-857"},
    {858, "ibm-858"},
    {860, "ibm-860"},
    {861, "ibm-861"},
    {862, "ibm-862"},
    {863, "ibm-863"},
    {864, "ibm-864"},
    {865, "ibm-865"},
    {866, "ibm-866"},
    {869, "ibm-869"},
    {870, "ibm-870"},
    {874, "windows-874-2000"},
    {875, "ibm-875"},
    {932, "ibm-943_P15A-2003"},
    {936, "windows-936-2000"},
    {949, "windows-949-2000"},
    {950, "windows-950-2000"},
    {1026, "ibm-1026"},
    {1047, "ibm-1047"},
    {1140, "ibm-1140"},
    {1141, "ibm-1141"},
    {1142, "ibm-1142"},
    {1143, "ibm-1143"},
    {1144, "ibm-1144"},
    {1145, "ibm-1145"},
    {1146, "ibm-1146"},
    {1147, "ibm-1147"},
    {1148, "ibm-1148"},
    {1149, "ibm-1149"},
    {1250, "ibm-5346_P100-1998"},
    {1251, "ibm-5347_P100-1998"},
    {1252, "ibm-5348_P100-1997"},
    {1253, "ibm-5349_P100-1998"},
    {1254, "ibm-5350_P100-1998"},
    {1255, "ibm-9447_P100-2002"},
    {1256, "ibm-9448_X100-2005"},
    {1257, "ibm-9449_P100-2002"},
    {1258, "ibm-5354_P100-1998"},
    {10000, "macos-0_2-10.2"},
    {10006, "macos-6_2-10.4"},
    {10007, "macos-7_3-10.2"},
    {10017, "macos-7_3-10.2"},
    {10029, "macos-29-10.2"},
    {10081, "macos-35-10.2"},
    {20127, "US-ASCII"},
    {20273, "ibm-273"},
    {20277, "ibm-277"},
    {20278, "ibm-278"},
    {20280, "ibm-280"},
    {20284, "ibm-284"},
    {20285, "ibm-285"},
    {20290, "ibm-290"},
    {20297, "ibm-297"},
    {20420, "ibm-420"},
    {20424, "ibm-424"},
    {20838, "ibm-838"},
    {20866, "ibm-878"},
    {20871, "ibm-871"},
    {20932, "euc-jp-2007"},
    {20936, "ibm-1383"},
    {20949, "ibm-970"},
    {21025, "ibm-1025"},
    {21866, "ibm-1168"},
    {28591, "ISO-8859-1"},
    {28592, "ibm-912"},
    {28593, "ibm-913"},
    {28594, "ibm-914"},
    {28595, "ibm-915"},
    {28596, "ibm-1089"},
    {28597, "ibm-9005"},
    {28598, "ibm-5012"},
    {28599, "ibm-920"},
    {28603, "ibm-921"},
    {28605, "ibm-923"},
    {38598, "ibm-5012"},
    {50220, "ISO_2022,locale=ja,version=0"},
    {50221, "ISO_2022,locale=ja,version=1"},
    {50222, "ISO_2022,locale=ja,version=1"},
    {50225, "ISO_2022,locale=ko,version=0"},
    {50227, "ISO_2022,locale=zh,version=0"},
    {51932, "euc-jp-2007"},
    {51936, "ibm-1383"},
    {51949, "ibm-970"},
    {52936, "HZ"},
    {54936, "gb18030"},
    {57002, "ISCII,version=0"},
    {57003, "ISCII,version=1"},
    {57004, "ISCII,version=5"},
    {57005, "ISCII,version=6"},
    {57006, "ISCII,version=1"},
    {57007, "ISCII,version=4"},
    {57008, "ISCII,version=7"},
    {57009, "ISCII,version=8"},
    {57010, "ISCII,version=3"},
    {57011, "ISCII,version=2"},
    {65000, "UTF-7"},
};

constexpr bool Before(const Row& a, const Row& b) { return a.codePage < b.codePage; }

static_assert(std::is_sorted(std::begin(kRows), std::end(kRows), Before));

}  // namespace

const char* CodePageName(unsigned int codePage) noexcept {
  const Row* const row =
      std::lower_bound(std::begin(kRows), std::end(kRows), Row{codePage, nullptr}, Before);
  return row != std::end(kRows) && row->codePage == codePage ? row->name : nullptr;
}

}  // namespace vlm::platform
