#include <examples/gallery/Page.h>

#include <velum/core/StringFormat.h>
#include <velum/files/HtmlTags.h>
#include <examples/common/HtmlParts.h>

#include <sstream>

namespace vlm::gallery {
namespace {

using examples::HtmlEscape;

// Beyond the style of all reports: tiles, pictures as wide as the window allows, commands.
constexpr char kStyle[] =
    "\nBODY    {padding:0 1em; line-height:1.5;}\n"
    "IMG     {max-width:100%; height:auto; border:1px solid #c0ccd4; box-sizing:border-box;\n"
    "         padding:0.4em;}\n"
    "A       {color:#1a5f95;}\n"
    "PRE     {background-color:#f2f5f8; border-left:4px solid #5b9bc8; padding:0.7em 1em;\n"
    "         overflow-x:auto; font-size:85%; line-height:1.4;}\n"
    ".lead   {font-size:115%; max-width:44em;}\n"
    ".tiles  {display:grid; grid-template-columns:repeat(auto-fill, minmax(8em, 1fr));\n"
    "         gap:1em; margin:1.5em 0 3em 0;}\n"
    ".tiles A {text-decoration:none; font-size:85%; line-height:1.3;}\n"
    ".tiles IMG {display:block; width:100%; height:7em; object-fit:cover;\n"
    "         object-position:top left; margin-bottom:0.3em; padding:0;}\n"
    ".example {margin:0 0 4em 0;}\n"
    ".story  {max-width:44em;}\n"
    ".pictures {display:flex; flex-wrap:wrap; gap:1em; align-items:flex-start;}\n"
    ".pictures A {flex:1 1 22em; max-width:100%;}";

CoreAttrib Class(const char* name) {
  CoreAttrib attributes;
  attributes.class_ = name;
  return attributes;
}

// A picture that leads to `address`, with `below` under it.
void WritePictureLink(std::ostream& out, const MadeFile& picture, const std::string& address,
                      const std::string& below) {
  ImageAttrib attributes;
  attributes.alt = HtmlEscape(picture.text);
  std::ostringstream contents;
  contents << Img(picture.name, attributes) << HtmlEscape(below);
  out << Anchor(address, contents.str());
}

void WriteTiles(std::ostream& out, const List& list) {
  out << "<DIV CLASS=\"tiles\">\n";
  for (const Example& example : list.examples) {
    WritePictureLink(out, example.pictures.front(), "#" + example.name, example.title);
  }
  out << "</DIV>\n";
}

void WriteExample(std::ostream& out, const Example& example, const Places& places,
                  const Outcome& outcome) {
  CoreAttrib heading;
  heading.id = example.name;
  out << "<DIV CLASS=\"example\">\n"
      << Heading(2, HtmlEscape(example.title), heading)
      << Paragraph(HtmlEscape(example.story), Class("story")) << "<DIV CLASS=\"pictures\">\n";
  for (const MadeFile& picture : example.pictures) {
    WritePictureLink(out, picture, picture.name, "");
  }
  out << "</DIV>\n<PRE>" << HtmlEscape(CommandOf(example, places)) << "</PRE>\n";
  std::ostringstream links;
  links << ToString("%.2f s", outcome.seconds) << " &#183; "
        << Anchor(HtmlEscape(SourceOf(example, places)), "source");
  if (outcome.speaks) links << " &#183; " << Anchor(TextOf(example), "what it prints");
  for (const MadeFile& file : example.also) {
    links << " &#183; " << Anchor(file.name, HtmlEscape(file.text));
  }
  out << Paragraph(links.str(), Class("small")) << "</DIV>\n";
}

}  // namespace

void WritePage(std::ostream& report, const List& list, const Places& places,
               const std::vector<Outcome>& outcomes) {
  const std::string title = HtmlEscape(list.title);
  report << Preamble(title, examples::PageStyle() + std::string(kStyle)) << Heading(1, title)
         << Paragraph(HtmlEscape(list.intro), Class("lead"));
  WriteTiles(report, list);
  double seconds = 0;
  for (std::size_t i = 0; i < list.examples.size(); ++i) {
    WriteExample(report, list.examples[i], places, outcomes[i]);
    seconds += outcomes[i].seconds;
  }
  report << HRule()
         << Paragraph(ToString("%zu examples, drawn in %.1f s. The commands are typed in the "
                               "folder of this page; their programs are looked for in ",
                               list.examples.size(), seconds) +
                          HtmlEscape(places.programs) + ".",
                      Class("small"))
         << TimeStamp(Class("small"));
}

}  // namespace vlm::gallery
