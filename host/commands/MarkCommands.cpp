// Commands that hide, lock and group objects.
#include "host/commands/EditCommand.h"

namespace host {
namespace {

Result<> RunGroup(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = context.session->Marks().Group(ids); !done) return done.Why();
  return {};
}

Result<> RunUngroup(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Marks().Ungroup(ids);
}

Result<> RunLock(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Marks().SetLocked(ids, true);
}

Result<> RunHide(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Marks().SetHidden(ids, true);
}

// All are those of which there is something to take back.
Result<> RunUnlock(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids = context.session->Marks().Locked();
  if (arguments.words[0] == "all" && ids.empty()) return {};
  if (arguments.words[0] != "all") {
    if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  }
  return context.session->Marks().SetLocked(ids, false);
}

Result<> RunShow(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids = context.session->Marks().Hidden();
  if (arguments.words[0] == "all" && ids.empty()) return {};
  if (arguments.words[0] != "all") {
    if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  }
  return context.session->Marks().SetHidden(ids, false);
}

}  // namespace

const EditCommand kGroupEdit = {
    "group",
    EditUse::kEverywhere,
    "make a group of objects",
    "usage: objecthost group FILE OBJECTS\n\n"
    "Makes one thing of two or more objects or groups (several as in 0,2-4 or g0,5, or all): in the window a\n"
    "click takes all of it. They come together in front where the foremost one is. Objects that are named without\n"
    "the rest of their group leave it.\n",
    "",
    "",
    1,
    1,
    &RunGroup};

const EditCommand kUngroupEdit = {"ungroup",
                                  EditUse::kEverywhere,
                                  "take groups apart",
                                  "usage: objecthost ungroup FILE OBJECTS\n\n"
                                  "Takes the outermost groups apart that lie wholly among the objects (g0, several\n"
                                  "as in 0,2-4, or all). Groups within them stay.\n",
                                  "",
                                  "",
                                  1,
                                  1,
                                  &RunUngroup};

const EditCommand kLockEdit = {"lock",
                               EditUse::kEverywhere,
                               "keep objects from being selected and changed",
                               "usage: objecthost lock FILE OBJECTS\n\n"
                               "Locks objects: a number, several as in 0,2-4, a group as in g0, or all.\n",
                               "",
                               "",
                               1,
                               1,
                               &RunLock};

const EditCommand kUnlockEdit = {"unlock",
                                 EditUse::kEverywhere,
                                 "unlock objects",
                                 "usage: objecthost unlock FILE OBJECTS\n\n"
                                 "Takes back what \"lock\" does. \"all\" are all that are locked.\n",
                                 "",
                                 "",
                                 1,
                                 1,
                                 &RunUnlock};

const EditCommand kHideEdit = {
    "hide",
    EditUse::kEverywhere,
    "hide objects",
    "usage: objecthost hide FILE OBJECTS\n\n"
    "Hides objects, on the screen and in pictures: a number, several as in 0,2-4, a group as in\n"
    "g0, or all.\n",
    "",
    "",
    1,
    1,
    &RunHide};

const EditCommand kShowEdit = {"show",
                               EditUse::kEverywhere,
                               "show objects that were hidden",
                               "usage: objecthost show FILE OBJECTS\n\n"
                               "Takes back what \"hide\" does. \"all\" are all that are hidden.\n",
                               "",
                               "",
                               1,
                               1,
                               &RunShow};

}  // namespace host
