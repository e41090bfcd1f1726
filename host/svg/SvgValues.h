// Attributes of SVG elements as numbers, colours and maps.
#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/geometry/AGAffineTransform.h"
#include "kit/geometry/AGColor.h"

namespace host {

/// A length in user units: a number alone or with px, pt, pc, mm, cm, in, or % of `whole`. None for anything else.
std::optional<double> SvgLength(std::string_view text, double whole);
/// A number from 0 to 1, or a percentage; what lies outside is cut.
std::optional<double> SvgFraction(std::string_view text);
/// Numbers with blanks or commas between them; false where there is something else.
bool SvgNumbers(std::string_view text, std::vector<double>* numbers);
/// "#rgb", "#rrggbb", either with an opacity behind it, "rgb(…)", "rgba(…)" or a name. None for anything else.
std::optional<AGColor> SvgColor(std::string_view text);
/// A list of transforms, the last of which is applied first. None where something is not understood.
std::optional<AGAffineTransform> SvgTransform(std::string_view text);
/// "name: value; …" in pairs.
std::vector<std::pair<std::string_view, std::string_view>> SvgDeclarations(std::string_view text);
/// The colour with its opacity times a number from 0 to 1.
AGColor SvgFaded(const AGColor& color, double opacity);
/// What blanks lie between.
std::vector<std::string_view> SvgWords(std::string_view text);
std::string_view SvgTrimmed(std::string_view text);

}  // namespace host
