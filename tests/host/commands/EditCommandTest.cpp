// Lines of scripts, run on open documents: what each does is one step, whatever objects it names; what is refused has
// changed nothing.
#include "host/commands/EditCommand.h"
#include "host/scripts/ScriptLine.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

class EditCommandTest : public SessionFixture {
 protected:
  void SetUp() override {
    SessionFixture::SetUp();
    pictures_ = Taken(Bundle::Load(AK_PICTURE_BUNDLE));
  }

  /// Four rectangles in a row, the third turned and the last one locked, and an empty layer above them.
  void Begin(EditContext* context) {
    auto document = MakeDocument(4);
    context->SetSession(std::make_unique<DocumentSession>(std::move(document)));
    context->inScript = true;
    for (const char* line : {"resize 0 -1,2,13,9", "rotate 2 30", "lock 3", "layer add Notes", "layer activate 0"})
      Run(line, context);
  }

  static Result<> Try(const std::string& line, EditContext* context) {
    std::vector<std::string> words;
    if (const auto split = SplitScriptLine(line, &words); !split) return split.Why();
    const EditCommand* const command = FindEditCommand(words[0]);
    if (command == nullptr) return Problem(N_("%s"), {line});
    words.erase(words.begin());
    return RunInContext(*command, *context, words);
  }
  static void Run(const std::string& line, EditContext* context) { ASSERT_EQ(Said(Try(line, context)), "") << line; }

  std::unique_ptr<Bundle> pictures_;
};

// Taken back, each leaves the very bytes that were there; done again, those that it made. Objects that are named twice
// are taken once.
TEST_F(EditCommandTest, EachEdit_IsOneStep_OfEachObjectOnce) {
  const char* const lines[] = {"move @ 5,-3",
                               "resize @ 0,0,90,45",
                               "resize 2 0,0,9,4",
                               "rotate @ 30",
                               "rotate @ 0.5rad --about 5,1cm",
                               "align @ top --to 2",
                               "align @ middle --page",
                               "align @ left",
                               "distribute @,2 horizontal",
                               "match @ height --to 2",
                               "match 0,2,1 size --to 2",
                               "order @ front",
                               "order @ forward",
                               "duplicate @ --offset 1,2",
                               "delete @",
                               "cut @",
                               "set @ Rounding=0.25 Pen.Size=3 Angle=5",
                               "set @ Brush.Color=(1;2;3;4) Bounds=(0;1;2;3)",
                               "opacity @ 50",
                               "flip @ vertical",
                               "flip @ horizontal",
                               "dash @ 3,2",
                               "group @",
                               "lock @",
                               "hide @",
                               "unlock all",
                               "layer take Notes @",
                               "inspect @ --set 2=0.125 --event 1,2",
                               "page --fit",
                               "page --size 10,20 --background 1,2,3 --grid 5 --unit cm",
                               "page --paper A5 --orientation landscape",
                               "guide add vertical 1in",
                               "layer add Below 0",
                               "layer rename Notes 'More notes'",
                               "layer hide 0",
                               "layer lock 1",
                               "layer move 0 1",
                               "layer remove 0",
                               "add stdRect --layer Notes --bounds 0,0,5,5 --angle 5 --set Rounding=1",
                               "import " AK_IMAGES "/rgb8.png --layer 1 --at 3,4",
                               "import " AK_IMAGES "/rgb8.png --bounds 0,0,7,9"};
  for (const std::string line : lines) {
    std::string made;
    for (const char* const objects : {"0,1", "0-1", "0-1,0,1-1"}) {
      SCOPED_TRACE(line + " of " + objects);
      std::string named = line;
      if (const std::size_t at = named.find('@'); at != std::string::npos) named.replace(at, 1, objects);
      EditContext context;
      Begin(&context);
      const std::string before = Bytes(*context.session);
      const std::size_t position = context.session->Steps().Known().Position();
      Run(named, &context);
      const std::string after = Bytes(*context.session);
      EXPECT_TRUE(after != before);
      EXPECT_TRUE(made.empty() || after == made);
      made = after;
      EXPECT_EQ(context.session->Steps().Known().Position(), position + 1);
      Run("undo", &context);
      EXPECT_TRUE(Bytes(*context.session) == before);
      Run("redo", &context);
      EXPECT_TRUE(Bytes(*context.session) == after);
    }
  }
}

TEST_F(EditCommandTest, WhatIsRefused_HasChangedNothing) {
  const std::pair<const char*, const char*> cases[] = {
      {"page --grid wide", "--grid takes a length"},
      {"page --grid -5", "grid"},
      {"page --fit --unit furlong", "px, pt"},
      {"page --size 0,5", "above 0"},
      {"page --orientation up", "portrait, landscape"},
      {"page --background 1,2", "three numbers"},
      {"page --background 1,2,256", "0 to 255"},
      {"layer", "too few"},
      {"layer paint 0", "can't be done"},
      {"layer rename 0", "two arguments"},
      {"layer hide 0 1", "one argument"},
      {"layer rename 0 ''", "needs a name"},
      {"layer rename 0 \xff", "needs a name"},
      {"layer add New 3", "no place of a layer"},
      {"layer move 0 up", "no place of a layer"},
      {"layer move 0 2", "no place of a layer"},
      {"layer take 1 9", "no object 9"},
      {"layer take 1 3", "locked"},
      {"layer remove 9", "no layer"},
      {"guide", ""},
      {"guide add vertical", "\"guide\" takes"},
      {"guide turn vertical 5", "\"guide\" takes"},
      {"guide move vertical 5", "a new place"},
      {"guide add across 5", "vertical, horizontal"},
      {"guide add vertical far", "is a length"},
      {"guide remove vertical 5", "no guide at 5"},
      {"select --at 1", "two numbers"},
      {"select --at 1,2 --tolerance much", "takes a number"},
      {"select --within 1,2,3", "four numbers"},
      {"select --fill reddish", "no colour"},
      {"select --layer 9", "no layer"},
      {"select 0 --same size", "fill, stroke, class"},
      {"list --class stdRect --stroke '#1'", "no colour"},
      {"copy selected", "no object"},
      {"cut 3", "locked"},
      {"paste", "nothing on the clipboard"},
      {"paste --offset 1", "two numbers"},
      {"move 0 1", "two numbers"},
      {"move 0 1,1 1", "unexpected argument"},
      {"move selected 1,1", "no object"},
      {"resize selected 0,0,1,1", "no object"},
      {"resize 0,3 0,0,1,1", "locked"},
      {"resize 0 1,2,3", "four numbers"},
      {"rotate 0 north", "degrees"},
      {"rotate 0 5 --about 1", "--about takes"},
      {"align 0 left --to 9", "no object 9"},
      {"match 0,1 depth", "width, height"},
      {"distribute 0,1 horizontal", "three"},
      {"order 0 top", "front, back"},
      {"repeat selected", "no object"},
      {"add stdRect --layer 9", "no layer"},
      {"add stdRect --set Rounding", "NAME=VALUE"},
      {"add stdRect --set Rounding=round", "takes a number"},
      {"add stdRect --bounds 0,0,inf,5", "four numbers"},
      {"get 0 Colour", "no property"},
      {"get 0 ''", "no property"},
      {"set 0 Brush.Color=(1;2;x)", "does not take"},
      {"set 0 'Bounds=1;2;3;4'", "takes"},
      {"set 0,1 Angle=5 Pen.Size=thick", "number"},
      {"style 0 9", "no object 9"},
      {"opacity 0 nan", "0 to 100"},
      {"dash 0 a,b", "neither lengths"},
      {"dash 0 -1,2", "dashes"},
      {"inspect 0 --set 2=0.5 --set 9=1", "no control 9"},
      {"inspect 0 --set two=1", "no number of a control"},
      {"inspect 0 --set 2", "CONTROL=VALUE"},
      {"inspect 0 --set 2=0.5 --event 1,", "KIND"},
      {"group selected", "no object"},
      {"group 0", "two"},
      {"ungroup g0", "no group"},
      {"hide 9", "no object 9"},
      {"show 0-", "no object number"},
      {"unlock 1-0", "backwards"},
      {"import missing.png", "No such file"},
      {"import " AK_IMAGES "/rgb8.png --bounds 0,0,0,5", "no area"},
      {"import " AK_IMAGES "/rgb8.png --at 5", "two numbers"},
      {"export missing/a.png --objects 9", "no object 9"},
      {"export missing/a.png --width -5", "no scale"},
      {"export missing/a.png --quality best", "no quality"},
      {"thumbnail missing/a.png 0", "1 to 4096"},
      {"thumbnail missing/a.png 64", "can't write"},
      {"undo 99", "nothing to undo"},
      {"undo -1", "no count"},
      {"redo", "nothing to redo"},
      {"end", "no step"},
      {"cancel", "no step"},
      {"new", "unsaved"},
      {"open missing.akd", "unsaved"},
      {"open missing.akd --discard", "No such file"},
      {"close", "unsaved"},
      {"save", "name"},
  };
  EditContext context;
  Begin(&context);
  const std::string before = Bytes(*context.session);
  const std::size_t steps = context.session->Steps().Known().Count();
  for (const auto& [line, words] : cases) {
    const std::string said = Said(Try(line, &context));
    EXPECT_NE(said.find(words), std::string::npos) << line << ": " << said;
    EXPECT_EQ(said.empty(), words[0] == '\0') << line;
    EXPECT_TRUE(Bytes(*context.session) == before) << line;
    EXPECT_EQ(context.session->Steps().Known().Count(), steps) << line;
  }
  context.SetSession(nullptr);
  EXPECT_NE(Said(Try("list", &context)).find("no document"), std::string::npos);
}

// What one kind of object takes and another one doesn't is refused for all of them; an object of an unknown class takes
// what concerns its place among the others alone.
TEST_F(EditCommandTest, SeveralKinds_AreChangedTogetherOrNotAtAll) {
  EditContext context;
  Begin(&context);
  Run("import " AK_IMAGES "/rgb8.png", &context);  // number 4
  AddPlaceholder(context.session.get());           // number 5
  const std::pair<const char*, const char*> cases[] = {
      {"set 0,4 Rounding=1", "no property \"Rounding\""},
      {"set 4,0 Smooth=1", "no property \"Smooth\""},
      {"set 4 Smooth=yes", "takes 0 or 1"},
      {"set 4 Smooth=2", "takes 0 or 1"},
      {"inspect 0,4", "several classes"},
      {"inspect 3", "locked object"},
      {"inspect 5", "no bundle"},
      {"set 5 Pen.Size=1", "no bundle"},
      {"style 0 5", "no bundle"},
      {"move 5 1,1", "no bundle"},
      {"opacity 5 50", ""},
      {"order 5 back", ""},
      {"delete 0", ""},
      {"layer take 1 4", ""},
      {"move 0-3 1,1", "locked object"},
      {"unlock 3", ""},
      {"move all 1,1", ""},
      {"set 4 Smooth=0", ""},
      {"flip all horizontal", ""},
      {"duplicate all", ""},
      {"cut 0,4", ""},
      {"paste", ""},
      {"group 0,1", ""},
  };
  std::vector<std::string> states = {Bytes(*context.session)};
  for (const auto& [line, words] : cases) {
    const std::string said = Said(Try(line, &context));
    EXPECT_NE(said.find(words), std::string::npos) << line << ": " << said;
    EXPECT_EQ(said.empty(), words[0] == '\0') << line << ": " << said;
    const std::string now = Bytes(*context.session);
    EXPECT_EQ(now == states.back(), !said.empty()) << line;
    if (said.empty()) states.push_back(now);
  }
  for (; states.size() > 1; states.pop_back()) {
    EXPECT_TRUE(Bytes(*context.session) == states.back()) << states.size();
    Run("undo", &context);
  }
}

// What commands print, one after the other on one document.
TEST_F(EditCommandTest, Commands_PrintWhatThereIs) {
  const std::pair<const char*, const char*> lines[] = {
      {"layers", "0  4 objects, active  Layer 1\n1  0 objects  Notes\n"},
      {"layer hide Notes", ""},
      {"layer lock 1", ""},
      {"layers", "0  4 objects, active  Layer 1\n1  0 objects, hidden, locked  Notes\n"},
      {"layer unlock 1", ""},
      {"layer show 1", ""},
      {"select 0", "0\n"},
      {"select 2 --add", "0 2\n"},
      {"select", "0 2\n"},
      {"select --json", "[0, 2]\n"},
      {"select --at 25,5", "1\n"},
      {"select --within -5,-5,15,15", "0\n"},
      {"select --touching 5,5,25,15", "0 1\n"},
      {"select --touching 51,9,60,12", "\n"},  // beside the corner of the turned one, within its box
      {"select --within 37,-3,53,13", "2\n"},
      {"select 0 --same class", "0 1 2\n"},
      {"select none", "\n"},
      {"get 0 Rounding --json", "0\n"},
      {"begin Both", ""},
      {"begin", ""},
      {"move 0 1,0", ""},
      {"cancel", ""},
      {"move 0 2,0", ""},
      {"end", ""},
      {"repeat 1", ""},
      {"list --name nothing", ""},
      {"list",
       "0  stdRect  (1;2;15;9)  0  Rounding=0\n1  stdRect  (22;0;32;10)  0  Rounding=0\n"
       "2  stdRect  (40;0;50;10)  30  Rounding=0\n3  stdRect  (60;0;70;10)  0  Rounding=0  locked\n"},
      {"undo 2", "Undo Move\nUndo Both\n"},
      {"guide add horizontal 1cm", ""},
      {"guide add vertical 5", ""},
      {"guide", "vertical 5\nhorizontal 28.34645669\n"},
      {"guide clear", ""},
      {"guide", ""},
  };
  EditContext context;
  Begin(&context);
  for (const auto& [line, printed] : lines) {
    Run(line, &context);
    EXPECT_EQ(context.output, printed) << line;
  }
}

}  // namespace
}  // namespace host
