#include "host/window/dialogs/Question.h"

#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <gtkmm/messagedialog.h>

#include "host/text/Localisation.h"

namespace host {

void Ask(Gtk::Window& window, const std::string& question, const std::string& details,
         const std::vector<std::pair<std::string, int>>& answers, const std::function<void(int)>& then) {
  auto* const dialog =
      new Gtk::MessageDialog(window, question, false, Gtk::MessageType::QUESTION, Gtk::ButtonsType::NONE, true);
  dialog->set_secondary_text(details);
  dialog->add_button(Tr("_Cancel"), Gtk::ResponseType::CANCEL);
  for (const auto& [text, answer] : answers) dialog->add_button(text, answer);
  dialog->set_default_response(answers.back().second);
  dialog->signal_response().connect([dialog, then](int answer) {
    dialog->hide();
    then(answer);
  });
  dialog->signal_hide().connect([dialog] { Glib::signal_idle().connect_once([dialog] { delete dialog; }); });
  dialog->show();
}

void AskForPath(Gtk::Window& window, const std::string& chosen, const std::string& ending,
                const std::function<void(const std::string& path)>& then) {
  constexpr int kReplace = 1;
  const std::string path = chosen + ending;
  if (ending.empty() || !Glib::file_test(path, Glib::FileTest::EXISTS)) return then(path);
  Ask(window, TrWith("“%s” is there already. Replace it?", Glib::path_get_basename(path)),
      Tr("What the file holds now is lost."), {{Tr("_Replace"), kReplace}}, [path, then](int answer) {
        if (answer == kReplace) then(path);
      });
}

}  // namespace host
