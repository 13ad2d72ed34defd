#include "gtk/window/StillRunning.h"

#include <gtk/gtk.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

namespace {

std::string Told(const Entry& entry) {
  const pid_t owner = entry.Owner();
  return "The folder \"" + entry.Folder().path.string() + "\" is in use by Marlowick" +
         (owner ? " (process " + std::to_string(owner) + ")" : "") + ", which doesn't answer.";
}

}  // namespace

namespace StillRunning {

Entry::Way Wait(Entry& entry) {
  const std::string told = Told(entry);
  std::fprintf(stderr, "marlowick: %s\n", told.c_str());
  GtkWidget* dialog = gtk_message_dialog_new(nullptr, GtkDialogFlags(0), GTK_MESSAGE_WARNING,
                                             GTK_BUTTONS_NONE, "%s", told.c_str());
  gtk_message_dialog_format_secondary_text(
      GTK_MESSAGE_DIALOG(dialog), "%s",
      "It may be about to close, or wait for an answer of yours. This start goes on as soon as it can. If "
      "that process hangs, end it and nothing of what you wanted to open is lost.");
  gtk_window_set_title(GTK_WINDOW(dialog), "Marlowick");
  gtk_dialog_add_button(GTK_DIALOG(dialog), "_Stop waiting", GTK_RESPONSE_CANCEL);

  Entry::Way way = Entry::Way::NoAnswer;
  std::atomic<bool> given_up = false;
  std::thread tries([&] {
    while (way == Entry::Way::NoAnswer && !given_up) way = entry.Knock(std::chrono::milliseconds(100));
    if (given_up) return;
    g_idle_add(
        +[](gpointer data) -> gboolean {
          gtk_dialog_response(GTK_DIALOG(data), GTK_RESPONSE_OK);
          return G_SOURCE_REMOVE;
        },
        dialog);
  });
  gtk_dialog_run(GTK_DIALOG(dialog));
  given_up = true;
  tries.join();
  g_idle_remove_by_data(dialog);
  gtk_widget_destroy(dialog);
  return way;
}

}  // namespace StillRunning
