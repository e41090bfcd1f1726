// The command of text on objects.
#include "host/commands/EditCommand.h"
#include "host/svg/SvgValues.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

template <typename Value, std::size_t kCount>
Result<> TakeWord(const EditArguments& arguments, const char* option, const Word<Value> (&words)[kCount],
                  std::optional<Value>* taken) {
  Value value{};
  if (!arguments.Has(option)) return {};
  if (const auto done = ParseWord(arguments.Value(option, ""), words, &value); !done) return done.Why();
  *taken = value;
  return {};
}

// "#RRGGBB", "R,G,B" or a name, as for "select".
std::optional<AGColor> ParseColor(const std::string& text) {
  const auto color = SvgColor(text);
  return color ? color : SvgColor("rgb(" + text + ")");
}

Result<> TakeSizeAndColor(const EditArguments& arguments, LabelChange* change) {
  std::vector<double> size;
  if (arguments.Has("size")) {
    if (const auto done = ParseList(arguments.Value("size", ""), 1, N_("--size takes a number"), &size); !done)
      return done.Why();
    change->size = size[0];
  }
  if (!arguments.Has("color")) return {};
  change->color = ParseColor(arguments.Value("color", ""));
  if (change->color) return {};
  return Problem(N_("\"%s\" is no colour"), {arguments.Value("color", "")});
}

enum class Style : std::uint8_t { kRegular, kBold, kItalic, kBoldItalic };

Result<> TakeStyle(const EditArguments& arguments, LabelChange* change) {
  constexpr Word<Style> kStyles[] = {{"regular", Style::kRegular},
                                     {"bold", Style::kBold},
                                     {"italic", Style::kItalic},
                                     {"bold-italic", Style::kBoldItalic}};
  std::optional<Style> style;
  if (const auto done = TakeWord(arguments, "style", kStyles, &style); !done) return done.Why();
  if (!style) return {};
  change->bold = *style == Style::kBold || *style == Style::kBoldItalic;
  change->italic = *style == Style::kItalic || *style == Style::kBoldItalic;
  return {};
}

Result<> TakeOptions(const EditArguments& arguments, LabelChange* change) {
  constexpr Word<LabelAcross> kAcross[] = {{"left", LabelAcross::kLeft},
                                           {"center", LabelAcross::kCenter},
                                           {"centre", LabelAcross::kCenter},
                                           {"right", LabelAcross::kRight}};
  constexpr Word<LabelDown> kDown[] = {
      {"top", LabelDown::kTop}, {"middle", LabelDown::kMiddle}, {"bottom", LabelDown::kBottom}};
  constexpr Word<LabelDirection> kDirections[] = {
      {"auto", LabelDirection::kAuto}, {"ltr", LabelDirection::kLeftToRight}, {"rtl", LabelDirection::kRightToLeft}};
  if (arguments.Has("font")) change->font = arguments.Value("font", "");
  for (const auto& done :
       {TakeSizeAndColor(arguments, change), TakeStyle(arguments, change),
        TakeWord(arguments, "align", kAcross, &change->across), TakeWord(arguments, "valign", kDown, &change->down),
        TakeWord(arguments, "direction", kDirections, &change->direction)}) {
    if (!done) return done.Why();
  }
  return {};
}

// As it stands in a word: "\n" is the end of a line, "\\" a backslash.
std::string Unescaped(const std::string& word) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char next = i + 1 < word.size() ? word[i + 1] : '\0';
    if (word[i] == '\\' && (next == 'n' || next == '\\')) {
      text += next == 'n' ? '\n' : '\\';
      ++i;
    } else {
      text += word[i];
    }
  }
  return text;
}

Result<> RunLabel(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  LabelChange change;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = TakeOptions(arguments, &change); !done) return done.Why();
  const bool hasText = arguments.words.size() > 1;
  if (arguments.Has("none") && hasText) return Problem(N_("--none takes no text"));
  if (arguments.Has("none")) change.text = "";
  if (hasText) change.text = Unescaped(arguments.words[1]);
  return context.session->Labels().Change(ids, change);
}

}  // namespace

const EditCommand kLabelEdit = {
    "label",
    EditUse::kEverywhere,
    "write text on objects",
    "usage: objecthost label FILE OBJECTS [TEXT | --none] [--font FAMILY] [--size UNITS] [--color COLOUR]\n"
    "                  [--style regular|bold|italic|bold-italic] [--align left|center|right]\n"
    "                  [--valign top|middle|bottom] [--direction auto|ltr|rtl]\n\n"
    "Writes TEXT on objects (a number, several as in 0,2-4, a group as in g0, or all), each in its bounds: wrapped,\n"
    "turned with the object and cut off where it does not fit. In TEXT \\n ends a line and \\\\ is a backslash; a\n"
    "script has such a TEXT in single quotes. Without TEXT the labels that are there change; --none takes them away, "
    "as\n"
    "an empty TEXT does. A new label is black, in the system's font (--font ''), of 12 units and in the middle. "
    "COLOUR\n"
    "is a name, #RRGGBB or R,G,B. Each paragraph is read in the direction of its first letter, unless --direction "
    "says\n"
    "otherwise.\n",
    "font size color style align valign direction",
    "none",
    1,
    2,
    &RunLabel};

}  // namespace host
