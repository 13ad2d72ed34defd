#include "gtk/window/Style.h"

#include "gtk/base/GObjects.h"

void AddStyle(GtkWidget* widget, const char* css) {
  const Owned<GtkCssProvider> provider(gtk_css_provider_new());
  gtk_css_provider_load_from_data(provider.get(), css, -1, nullptr);
  gtk_style_context_add_provider(gtk_widget_get_style_context(widget), GTK_STYLE_PROVIDER(provider.get()),
                                 GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}
