#include "Scenarios.h"

#include <velum/core/Exception.h>
#include <velum/core/FieldText.h>
#include <velum/core/GString.h>
#include <velum/core/HtmlText.h>
#include <velum/core/StringConvert.h>
#include <velum/core/StringFormat.h>
#include <velum/core/StringText.h>
#include <velum/core/SystemError.h>
#include <velum/core/TerminatedText.h>
#include <velum/core/Tokenizer.h>
#include <velum/core/TypedObject.h>
#include <velum/core/UniqueNameGenerator.h>
#include <velum/core/WideText.h>
#include <velum/dates/NumberFormatSpec.h>
#include <velum/numerics/DoubleDouble.h>

#include <sstream>
#include <vector>

namespace vlm::faults {
namespace {

const std::string kLong(200, 'x');

const Scenario kScenarios[] = {
    {"TextThatGrows",
     [] {
       GString text(kLong);
       text.append(300, 'y');
       text += 'z';
       const GString part = ("a" + text + "b").substr(1, 400);
       return part.ToUpper().String() + text.erase(10, 20).String();
     }},
    {"TextThatIsFormatted",
     [] {
       std::string text;
       std::wstring wide;
       FormatString(text, "%s %S %I64d %.3f", kLong.c_str(), L"Gr\u00F6\u00DFe", std::int64_t{7},
                    1.5);
       AppendFormatString(wide, L"%hs %g %300d", kLong.c_str(), 2.5, 3);
       return text + ToString("%ls", wide.c_str());
     }},
    {"FieldsOfALine",
     [] {
       unsigned int position = 0;
       std::string all = ParseToken("\"" + kLong + "\" , c", position, ',');
       std::string field;
       ParseString(("\"" + kLong + "\", 3").c_str(), field);
       CTokenizer tokens(kLong.c_str());
       GString token;
       tokens.Parse(token, true);
       std::vector<std::string> lines;
       BreakIntoSubstrings((kLong + "\r\n" + kLong).c_str(), lines);
       return all + field + token.String() + lines.at(1);
     }},
    {"TextInCodePages",
     [] {
       const std::wstring greek = GString("\u03BB " + kLong).ToWide();
       GString latin;
       latin.FromWide((L"\u00B5 " + greek).c_str(), 1252);
       const AtoW wide(latin.String(), 1252);
       const WtoA narrow(wide, 65001);
       const AtoWV formatted("%s", narrow.operator const char*());
       WtoAArray array;
       array.SetArray(formatted);
       return std::string(array.c_str()) + GString(kLong).FromNarrow("\xE4", 437).String();
     }},
    {"UniqueNames",
     [] {
       UniqueNameGenerator names;
       names.Add(kLong);
       const std::string next = names.Get(kLong, true);
       UniqueNameGenerator copy = names;
       return next + copy.Get(kLong, true) + copy.Get("Fig", true);
     }},
    {"TextOfHtml",
     [] {
       const std::string plain = ReplaceHTMLSpecialEntities("&lt;_x0041_" + kLong);
       const std::wstring wide = ReplaceHTMLSpecialEntities(L"&amp;" + GString(kLong).ToWide());
       return plain + std::to_string(wide.size());
     }},
    {"AnErrorThatIsThrown",
     [] {
       try {
         ThrowErrorImpl("Somewhere in a source file.cpp", 7, ERR_OPEN, kLong.c_str(),
                        FormatSystemErrorMsg(2).c_str());
       } catch (const Exception& error) {
         if (error.GetErrCode() != ERR_OPEN) throw;
         const Exception copy = error;
         return copy.GetDescription().String();
       }
     }},
    {"NumbersAsText",
     [] {
       double value = 0;
       StringToDouble(std::wstring(300, L' ') + L"2.5", value);
       const std::wstring wide = DoubleToStringW(1e200, 40);
       std::ostringstream out;
       out << DoubleToString(1e250, 10) << wide.size() << BoolToString(true) << value << " "
           << atodd("1.23456789012345678901234567890") << NumberFormatSpec().GetFormat();
       return out.str();
     }},
    {"AClassThatIsRegistered",
     [] {
       const CTypeInfo shape(kLong.c_str(), nullptr, CTypedObject::GetClassTypeId());
       return std::string(CTypeInfo::FromName(kLong.c_str()) == &shape ? "found" : "lost");
     }},
};

}  // namespace

std::span<const Scenario> TextScenarios() { return kScenarios; }

}  // namespace vlm::faults
