#include "gtk/page/PageProperties.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "gtk/page/Page.h"
#include "gtk/page/text/Address.h"
#include "platform/Text.h"

namespace {

constexpr int MostLineChars = 60;

std::string Security(Page& page) {
  GTlsCertificate* certificate = nullptr;
  GTlsCertificateFlags flags{};
  const std::string scheme = Address::Scheme(page.Address());
  if (scheme == "file") return "A file on this computer";
  if (scheme != "http" && scheme != "https") return "Made by the program itself";
  if (!webkit_web_view_get_tls_info(page.View(), &certificate, &flags)) return "The connection isn't secure";
  const std::string issuer =
      certificate ? TakeText(g_tls_certificate_get_issuer_name(certificate)) : std::string();
  const std::string how = flags ? "Encrypted, but the certificate has problems" : "Secure connection";
  return issuer.empty() ? how : how + "\nCertificate issued by " + issuer;
}

using Rows = std::vector<std::pair<std::string, std::string>>;

Rows Describe(Page& page) {
  Rows rows = {{"Title", page.Title()}, {"Address", page.Address()}, {"Security", Security(page)}};
  WebKitWebResource* source = webkit_web_view_get_main_resource(page.View());
  WebKitURIResponse* response = source ? webkit_web_resource_get_response(source) : nullptr;
  if (!response) return rows;
  rows.emplace_back("Type", TextOf(webkit_uri_response_get_mime_type(response)));
  const guint64 length = webkit_uri_response_get_content_length(response);
  if (length > 0) rows.emplace_back("Size", TakeText(g_format_size_full(length, G_FORMAT_SIZE_LONG_FORMAT)));
  return rows;
}

void AddRow(GtkGrid* grid, int row, const std::string& name, const std::string& value) {
  GtkWidget* label = gtk_label_new((name + ":").c_str());
  gtk_widget_set_halign(label, GTK_ALIGN_END);
  gtk_widget_set_valign(label, GTK_ALIGN_START);
  gtk_style_context_add_class(gtk_widget_get_style_context(label), "dim-label");
  GtkWidget* text = gtk_label_new(value.c_str());
  gtk_label_set_selectable(GTK_LABEL(text), TRUE);
  gtk_label_set_line_wrap(GTK_LABEL(text), TRUE);
  gtk_label_set_line_wrap_mode(GTK_LABEL(text), PANGO_WRAP_WORD_CHAR);
  const auto length = static_cast<int>(std::min<size_t>(Text::Length(value), MostLineChars));
  gtk_label_set_width_chars(GTK_LABEL(text), length);
  gtk_label_set_max_width_chars(GTK_LABEL(text), MostLineChars);
  gtk_label_set_xalign(GTK_LABEL(text), 0);
  gtk_grid_attach(grid, label, 0, row, 1, 1);
  gtk_grid_attach(grid, text, 1, row, 1, 1);
}

}  // namespace

namespace PageProperties {

void Show(Page& page) {
  GtkWidget* dialog = gtk_dialog_new_with_buttons("Properties", page.Window(), GTK_DIALOG_DESTROY_WITH_PARENT,
                                                  "_Close", GTK_RESPONSE_CLOSE, nullptr);
  gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_CLOSE);
  gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
  GtkWidget* grid = gtk_grid_new();
  gtk_grid_set_row_spacing(GTK_GRID(grid), 8);
  gtk_grid_set_column_spacing(GTK_GRID(grid), 12);
  gtk_container_set_border_width(GTK_CONTAINER(grid), 14);
  int row = 0;
  for (const auto& [name, value] : Describe(page)) AddRow(GTK_GRID(grid), row++, name, value);
  gtk_container_add(GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), grid);
  g_signal_connect(dialog, "response", G_CALLBACK(gtk_widget_destroy), nullptr);
  gtk_widget_show_all(dialog);
  gtk_widget_grab_focus(gtk_dialog_get_widget_for_response(GTK_DIALOG(dialog), GTK_RESPONSE_CLOSE));
}

}  // namespace PageProperties
