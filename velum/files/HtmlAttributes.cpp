#include <velum/files/HtmlAttributes.h>

#include <velum/files/detail/HtmlText.h>

#include <ostream>
#include <string_view>
#include <utility>

namespace vlm {

namespace {

void Append(std::string& out, std::string_view name, const std::string& value) {
  if (value.empty()) return;
  out.append(" ").append(name).append("=\"").append(value).append("\"");
}

std::ostream& Write(std::ostream& out, const auto& attributes) {
  std::string text;
  detail::AppendAttributes(text, attributes);
  return detail::WriteText(out, text);
}

}  // namespace

CoreAttrib::CoreAttrib(std::string idText, std::string classText, std::string styleText,
                       std::string titleText)
    : id(std::move(idText)),
      class_(std::move(classText)),
      style(std::move(styleText)),
      title(std::move(titleText)) {}
void CoreAttrib::clear() noexcept {
  id.clear();
  class_.clear();
  style.clear();
  title.clear();
}

ImageAttrib::ImageAttrib(std::string idText, std::string classText, std::string styleText,
                         std::string titleText, std::string srcText, std::string altText,
                         std::string longdescText, std::string widthText, std::string heightText,
                         std::string usemapText, std::string ismapText)
    : CoreAttrib(std::move(idText), std::move(classText), std::move(styleText),
                 std::move(titleText)),
      src(std::move(srcText)),
      alt(std::move(altText)),
      longdesc(std::move(longdescText)),
      width(std::move(widthText)),
      height(std::move(heightText)),
      usemap(std::move(usemapText)),
      ismap(std::move(ismapText)) {}
void ImageAttrib::clear() noexcept {
  CoreAttrib::clear();
  src.clear();
  alt.clear();
  longdesc.clear();
  width.clear();
  height.clear();
  usemap.clear();
  ismap.clear();
}

RowAttrib::RowAttrib(std::string idText, std::string classText, std::string styleText,
                     std::string titleText, std::string alignText, std::string charText,
                     std::string charoffText, std::string valignText)
    : CoreAttrib(std::move(idText), std::move(classText), std::move(styleText),
                 std::move(titleText)),
      align(std::move(alignText)),
      char_(std::move(charText)),
      charoff(std::move(charoffText)),
      valign(std::move(valignText)) {}
void RowAttrib::clear() noexcept {
  CoreAttrib::clear();
  align.clear();
  char_.clear();
  charoff.clear();
  valign.clear();
}

ColAttrib::ColAttrib(std::string idText, std::string classText, std::string styleText,
                     std::string titleText, std::string alignText, std::string charText,
                     std::string charoffText, std::string valignText, std::string spanText,
                     std::string widthText)
    : RowAttrib(std::move(idText), std::move(classText), std::move(styleText), std::move(titleText),
                std::move(alignText), std::move(charText), std::move(charoffText),
                std::move(valignText)),
      span(std::move(spanText)),
      width(std::move(widthText)) {}
void ColAttrib::clear() noexcept {
  RowAttrib::clear();
  span.clear();
  width.clear();
}

CellAttrib::CellAttrib(std::string idText, std::string classText, std::string styleText,
                       std::string titleText, std::string alignText, std::string charText,
                       std::string charoffText, std::string valignText, std::string rowspanText,
                       std::string colspanText, std::string headersText, std::string abbrText,
                       std::string scopeText, std::string axisText)
    : RowAttrib(std::move(idText), std::move(classText), std::move(styleText), std::move(titleText),
                std::move(alignText), std::move(charText), std::move(charoffText),
                std::move(valignText)),
      rowspan(std::move(rowspanText)),
      colspan(std::move(colspanText)),
      headers(std::move(headersText)),
      abbr(std::move(abbrText)),
      scope(std::move(scopeText)),
      axis(std::move(axisText)) {}
void CellAttrib::clear() noexcept {
  RowAttrib::clear();
  rowspan.clear();
  colspan.clear();
  headers.clear();
  abbr.clear();
  scope.clear();
  axis.clear();
}

TableAttrib::TableAttrib(std::string idText, std::string classText, std::string styleText,
                         std::string titleText, std::string summaryText, std::string widthText,
                         std::string borderText, std::string frameText, std::string rulesText,
                         std::string cellspacingText, std::string cellpaddingText)
    : CoreAttrib(std::move(idText), std::move(classText), std::move(styleText),
                 std::move(titleText)),
      summary(std::move(summaryText)),
      width(std::move(widthText)),
      border(std::move(borderText)),
      frame(std::move(frameText)),
      rules(std::move(rulesText)),
      cellspacing(std::move(cellspacingText)),
      cellpadding(std::move(cellpaddingText)) {}
void TableAttrib::clear() noexcept {
  CoreAttrib::clear();
  summary.clear();
  width.clear();
  border.clear();
  frame.clear();
  rules.clear();
  cellspacing.clear();
  cellpadding.clear();
}

namespace detail {

void AppendAttributes(std::string& out, const CoreAttrib& attributes) {
  Append(out, "ID", attributes.id);
  Append(out, "CLASS", attributes.class_);
  Append(out, "STYLE", attributes.style);
  Append(out, "TITLE", attributes.title);
}

void AppendAttributes(std::string& out, const ImageAttrib& attributes) {
  AppendAttributes(out, static_cast<const CoreAttrib&>(attributes));
  Append(out, "SRC", attributes.src);
  Append(out, "ALT", attributes.alt);
  Append(out, "LONGDESC", attributes.longdesc);
  Append(out, "WIDTH", attributes.width);
  Append(out, "HEIGHT", attributes.height);
  Append(out, "USEMAP", attributes.usemap);
  Append(out, "ISMAP", attributes.ismap);
}

void AppendAttributes(std::string& out, const RowAttrib& attributes) {
  AppendAttributes(out, static_cast<const CoreAttrib&>(attributes));
  Append(out, "ALIGN", attributes.align);
  Append(out, "CHAR", attributes.char_);
  Append(out, "CHAROFF", attributes.charoff);
  Append(out, "VALIGN", attributes.valign);
}

void AppendAttributes(std::string& out, const ColAttrib& attributes) {
  AppendAttributes(out, static_cast<const RowAttrib&>(attributes));
  Append(out, "SPAN", attributes.span);
  Append(out, "WIDTH", attributes.width);
}

void AppendAttributes(std::string& out, const CellAttrib& attributes) {
  AppendAttributes(out, static_cast<const RowAttrib&>(attributes));
  Append(out, "ROWSPAN", attributes.rowspan);
  Append(out, "COLSPAN", attributes.colspan);
  Append(out, "HEADERS", attributes.headers);
  Append(out, "ABBR", attributes.abbr);
  Append(out, "SCOPE", attributes.scope);
  Append(out, "AXIS", attributes.axis);
}

void AppendAttributes(std::string& out, const TableAttrib& attributes) {
  AppendAttributes(out, static_cast<const CoreAttrib&>(attributes));
  Append(out, "SUMMARY", attributes.summary);
  Append(out, "WIDTH", attributes.width);
  Append(out, "BORDER", attributes.border);
  Append(out, "FRAME", attributes.frame);
  Append(out, "RULES", attributes.rules);
  Append(out, "CELLSPACING", attributes.cellspacing);
  Append(out, "CELLPADDING", attributes.cellpadding);
}

std::ostream& WriteText(std::ostream& out, const std::string& text) {
  return out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace detail

std::ostream& operator<<(std::ostream& out, const CoreAttrib& attributes) {
  return Write(out, attributes);
}
std::ostream& operator<<(std::ostream& out, const ImageAttrib& attributes) {
  return Write(out, attributes);
}
std::ostream& operator<<(std::ostream& out, const RowAttrib& attributes) {
  return Write(out, attributes);
}
std::ostream& operator<<(std::ostream& out, const ColAttrib& attributes) {
  return Write(out, attributes);
}
std::ostream& operator<<(std::ostream& out, const CellAttrib& attributes) {
  return Write(out, attributes);
}
std::ostream& operator<<(std::ostream& out, const TableAttrib& attributes) {
  return Write(out, attributes);
}

}  // namespace vlm
