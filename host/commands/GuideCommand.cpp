// The command of guides.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "host/commands/EditCommand.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

constexpr Word<int> kAxes[] = {{"vertical", 0}, {"horizontal", 1}};

void List(EditContext& context) {
  for (const auto& [word, axis] : kAxes) {
    for (const double place : context.Doc().Aids().Guides(axis)) {
      char text[64];
      std::snprintf(text, sizeof(text), "%s %.10g\n", word, place);
      context.output += text;
    }
  }
}

// Places as they are printed, and as they are.
bool IsAbout(double a, double b) { return std::fabs(a - b) <= 1e-6 * std::max(1.0, std::fabs(a)); }

Result<> ParsePlace(const std::string& text, std::vector<double>* place) {
  return ParseList(text, 1, N_("the place of a guide is a length"), place);
}

Result<> RunMove(EditContext& context, const std::vector<std::string>& words) {
  int axis = 0;
  std::vector<double> from;
  std::vector<double> to;
  if (words.size() != 4) return Problem(N_("\"guide move\" takes a direction, a place, and a new place"));
  if (const auto done = ParseWord(words[1], kAxes, &axis); !done) return done.Why();
  if (const auto done = ParsePlace(words[2], &from); !done) return done.Why();
  if (const auto done = ParsePlace(words[3], &to); !done) return done.Why();
  PageAids aids = context.Doc().Aids();
  const auto found = std::ranges::find_if(aids.Guides(axis), [&](double guide) { return IsAbout(guide, from[0]); });
  if (found == aids.Guides(axis).end()) return Problem(N_("there is no guide at %s"), {words[2]});
  *found = to[0];
  return context.session->SetAids(std::move(aids), Tr("Move Guide"));
}

Result<> RunGuide(EditContext& context, const EditArguments& arguments) {
  const std::vector<std::string>& words = arguments.words;
  PageAids aids = context.Doc().Aids();
  if (words.empty()) {
    List(context);
    return {};
  }
  if (words[0] == "move") return RunMove(context, words);
  if (words[0] == "clear" && words.size() == 1) {
    aids.verticalGuides.clear();
    aids.horizontalGuides.clear();
    return context.session->SetAids(std::move(aids), Tr("Remove Guides"));
  }
  int axis = 0;
  std::vector<double> place;
  const bool adds = words[0] == "add";
  if ((!adds && words[0] != "remove") || words.size() != 3) {
    return Problem(
        N_("\"guide\" takes \"add\" or \"remove\", a direction and a place, \"move\" and two places, or \"clear\""));
  }
  if (const auto done = ParseWord(words[1], kAxes, &axis); !done) return done.Why();
  if (const auto done = ParsePlace(words[2], &place); !done) return done.Why();
  std::vector<double>& guides = aids.Guides(axis);
  if (adds) {
    guides.push_back(place[0]);
    return context.session->SetAids(std::move(aids), Tr("Add Guide"));
  }
  if (std::erase_if(guides, [&](double guide) { return IsAbout(guide, place[0]); }) == 0) {
    return Problem(N_("there is no guide at %s"), {words[2]});
  }
  return context.session->SetAids(std::move(aids), Tr("Remove Guide"));
}

}  // namespace

const EditCommand kGuideEdit = {"guide",
                                EditUse::kEverywhere,
                                "list, add, move and remove guides",
                                "usage: objecthost guide FILE [add|remove vertical|horizontal PLACE |\n"
                                "                  move vertical|horizontal PLACE NEWPLACE | clear]\n\n"
                                "Guides are lines that objects fit to when they are dragged: vertical ones at an x,\n"
                                "horizontal ones at a y. PLACE is a number of map units or a sum with units, such as\n"
                                "2cm+5. Without more lists those that there are.\n",
                                "",
                                "",
                                0,
                                4,
                                &RunGuide};

}  // namespace host
