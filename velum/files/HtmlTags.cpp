#include <velum/files/HtmlTags.h>

#include <velum/core/StringFormat.h>
#include <velum/files/detail/HtmlText.h>
#include <velum/platform/detail/LocalTime.h>

#include <ctime>
#include <string_view>
#include <utility>

namespace vlm {

namespace {

// A tag with its attributes, and the line end.
std::ostream& WriteTag(std::ostream& out, std::string_view name, const auto& attributes) {
  std::string text = "<";
  text.append(name);
  detail::AppendAttributes(text, attributes);
  return detail::WriteText(out, text += ">\n");
}

// The same with a text and the end of the tag.
std::ostream& WriteElement(std::ostream& out, std::string_view name, const CoreAttrib& attributes,
                           std::string_view contents) {
  std::string text = "<";
  text.append(name);
  detail::AppendAttributes(text, attributes);
  text.append(">").append(contents).append("</").append(name).append(">\n");
  return detail::WriteText(out, text);
}

// As ctime writes it, without its static buffer and in English.
std::string PresentTime() {
  constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::tm now = platform::PresentLocalTime();
  return ToString("%s %s %2d %02d:%02d:%02d %d\n", kDays[now.tm_wday], kMonths[now.tm_mon],
                  now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec, now.tm_year + 1900);
}

ImageAttrib WithSize(ImageAttrib attributes, std::string widthText, std::string heightText) {
  attributes.width = std::move(widthText);
  attributes.height = std::move(heightText);
  return attributes;
}

}  // namespace

Preamble::Preamble(std::string titleText, std::string styleLines)
    : title(std::move(titleText)), extraStyle(std::move(styleLines)) {}

Img::Img(std::string address, const ImageAttrib& attributes) : ImageAttrib(attributes) {
  src = std::move(address);
}

Img::Img(std::string address, std::string widthText, std::string heightText,
         const ImageAttrib& attributes)
    : Img(std::move(address), WithSize(attributes, std::move(widthText), std::move(heightText))) {}

Img::Img(std::string address, std::string widthText, std::string heightText, std::string altText,
         const ImageAttrib& attributes)
    : Img(std::move(address), std::move(widthText), std::move(heightText), attributes) {
  alt = std::move(altText);
}

TimeStamp::TimeStamp(const CoreAttrib& attributes) : CoreAttrib(attributes) {}

Heading::Heading(int headingLevel, std::string headingText, const CoreAttrib& attributes)
    : CoreAttrib(attributes), level(headingLevel), text(std::move(headingText)) {}

Anchor::Anchor(std::string address, std::string linkText, const CoreAttrib& attributes)
    : CoreAttrib(attributes), url(std::move(address)), text(std::move(linkText)) {}

TDBeg::TDBeg(std::string rows, std::string columns, const CellAttrib& attributes)
    : CellAttrib(attributes) {
  rowspan = std::move(rows);
  colspan = std::move(columns);
}

Paragraph::Paragraph(std::string contents, const CoreAttrib& attributes)
    : CoreAttrib(attributes), text(std::move(contents)) {}

Note::Note(std::string contents, const CoreAttrib& attributes)
    : CoreAttrib(attributes), text(std::move(contents)) {}

Caption::Caption(std::string contents, const CoreAttrib& attributes)
    : CoreAttrib(attributes), text(std::move(contents)) {}

DLBeg::DLBeg(const CoreAttrib& attributes) : CoreAttrib(attributes) {}
OLBeg::OLBeg(const CoreAttrib& attributes) : CoreAttrib(attributes) {}
ULBeg::ULBeg(const CoreAttrib& attributes) : CoreAttrib(attributes) {}
LIBeg::LIBeg(const CoreAttrib& attributes) : CoreAttrib(attributes) {}
Col::Col(const ColAttrib& attributes) : ColAttrib(attributes) {}
ColGroup::ColGroup(const ColAttrib& attributes) : ColAttrib(attributes) {}
TableBeg::TableBeg(const TableAttrib& attributes) : TableAttrib(attributes) {}
TBodyBeg::TBodyBeg(const RowAttrib& attributes) : RowAttrib(attributes) {}
THeadBeg::THeadBeg(const RowAttrib& attributes) : RowAttrib(attributes) {}
TFootBeg::TFootBeg(const RowAttrib& attributes) : RowAttrib(attributes) {}
TRBeg::TRBeg(const RowAttrib& attributes) : RowAttrib(attributes) {}
HRule::HRule(const CoreAttrib& attributes) : CoreAttrib(attributes) {}

std::ostream& operator<<(std::ostream& out, const Preamble& tag) {
  std::string text =
      "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\" "
      "\"http://www.w3.org/TR/html4/loose.dtd\">\n"
      "<HTML>\n"
      "<HEAD>\n"
      "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=iso-8859-1\">\n"
      "<META HTTP-EQUIV=\"Content-Style-Type\" CONTENT=\"text/css\">\n"
      "<TITLE>";
  text.append(tag.title.empty() ? "Report" : tag.title);
  text +=
      "</TITLE>\n"
      "<STYLE TYPE=\"text/css\">\n"
      "BODY    {font-family:Arial, sans-serif;}\n"
      "CAPTION {font-size:larger; font-weight:bold}\n"
      "TD      {padding-left:1ex; padding-right:1ex;}\n"
      "TH      {padding-left:1ex; padding-right:1ex; border-bottom:solid black thin; "
      "font-weight:bold; text-align:left; background-color:lightgrey;}\n";
  if (!tag.extraStyle.empty()) text.append(tag.extraStyle).append("\n");
  return detail::WriteText(out, text += "</STYLE>\n</HEAD>\n<BODY>\n");
}

std::ostream& operator<<(std::ostream& out, const VSpace& tag) {
  std::string text;
  for (int i = 0; i < tag.n; ++i) text += "<BR>";
  return detail::WriteText(out, text += "\n");
}

std::ostream& operator<<(std::ostream& out, const Img& tag) { return WriteTag(out, "IMG", tag); }

std::ostream& operator<<(std::ostream& out, const TimeStamp& tag) {
  return WriteElement(out, "SPAN", tag, PresentTime());
}

std::ostream& operator<<(std::ostream& out, const Heading& tag) {
  return WriteElement(out, "H" + std::to_string(tag.level), tag, tag.text);
}

std::ostream& operator<<(std::ostream& out, const Anchor& tag) {
  std::string text = "<A HREF=\"" + tag.url + "\"";
  detail::AppendAttributes(text, tag);
  return detail::WriteText(out, text.append(">").append(tag.text).append("</A>\n"));
}

std::ostream& operator<<(std::ostream& out, const TDBeg& tag) { return WriteTag(out, "TD", tag); }

std::ostream& operator<<(std::ostream& out, const Paragraph& tag) {
  return WriteElement(out, "P", tag, tag.text);
}
std::ostream& operator<<(std::ostream& out, const Note& tag) {
  return WriteElement(out, "SPAN", tag, tag.text);
}
std::ostream& operator<<(std::ostream& out, const Caption& tag) {
  return WriteElement(out, "CAPTION", tag, tag.text);
}
std::ostream& operator<<(std::ostream& out, const DLBeg& tag) { return WriteTag(out, "DL", tag); }
std::ostream& operator<<(std::ostream& out, const OLBeg& tag) { return WriteTag(out, "OL", tag); }
std::ostream& operator<<(std::ostream& out, const ULBeg& tag) { return WriteTag(out, "UL", tag); }
std::ostream& operator<<(std::ostream& out, const LIBeg& tag) { return WriteTag(out, "LI", tag); }
std::ostream& operator<<(std::ostream& out, const Col& tag) { return WriteTag(out, "COL", tag); }
std::ostream& operator<<(std::ostream& out, const ColGroup& tag) {
  return WriteTag(out, "COLGROUP", tag);
}
std::ostream& operator<<(std::ostream& out, const TableBeg& tag) {
  return WriteTag(out, "TABLE", tag);
}
std::ostream& operator<<(std::ostream& out, const TBodyBeg& tag) {
  return WriteTag(out, "TBODY", tag);
}
std::ostream& operator<<(std::ostream& out, const THeadBeg& tag) {
  return WriteTag(out, "THEAD", tag);
}
std::ostream& operator<<(std::ostream& out, const TFootBeg& tag) {
  return WriteTag(out, "TFOOT", tag);
}
std::ostream& operator<<(std::ostream& out, const TRBeg& tag) { return WriteTag(out, "TR", tag); }
std::ostream& operator<<(std::ostream& out, const HRule& tag) { return WriteTag(out, "HR", tag); }
std::ostream& operator<<(std::ostream& out, const DLEnd&) {
  return detail::WriteText(out, "</DL>\n");
}
std::ostream& operator<<(std::ostream& out, const OLEnd&) {
  return detail::WriteText(out, "</OL>\n");
}
std::ostream& operator<<(std::ostream& out, const ULEnd&) {
  return detail::WriteText(out, "</UL>\n");
}
std::ostream& operator<<(std::ostream& out, const LIEnd&) {
  return detail::WriteText(out, "</LI>\n");
}
std::ostream& operator<<(std::ostream& out, const TableEnd&) {
  return detail::WriteText(out, "</TABLE>\n");
}
std::ostream& operator<<(std::ostream& out, const TBodyEnd&) {
  return detail::WriteText(out, "</TBODY>\n");
}
std::ostream& operator<<(std::ostream& out, const THeadEnd&) {
  return detail::WriteText(out, "</THEAD>\n");
}
std::ostream& operator<<(std::ostream& out, const TFootEnd&) {
  return detail::WriteText(out, "</TFOOT>\n");
}
std::ostream& operator<<(std::ostream& out, const TREnd&) {
  return detail::WriteText(out, "</TR>\n");
}
std::ostream& operator<<(std::ostream& out, const TDEnd&) {
  return detail::WriteText(out, "</TD>\n");
}

}  // namespace vlm
