#include "gtk/dialog/Notice.h"

namespace Notice {

void Show(GtkWindow* parent, const std::string& what, const std::string& why) {
  GtkWidget* box = gtk_message_dialog_new(parent, GTK_DIALOG_DESTROY_WITH_PARENT, GTK_MESSAGE_WARNING,
                                          GTK_BUTTONS_OK, "%s", what.c_str());
  gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(box), "%s", why.c_str());
  gtk_window_set_title(GTK_WINDOW(box), what.c_str());
  g_signal_connect(box, "response", G_CALLBACK(gtk_widget_destroy), nullptr);
  gtk_widget_show(box);
}

}  // namespace Notice
