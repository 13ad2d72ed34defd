// The least program that shows a page: what Marlowick's start and memory are measured against. It has the
// same size and the same settings of the engine, and keeps its cookies.

#include <webkit2/webkit2.h>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc != 3) return 2;  // ADDRESS, and a folder for the engine's data beside the page
  setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", 1);
  gtk_init(nullptr, nullptr);
  WebKitWebsiteDataManager* data = webkit_website_data_manager_new("base-data-directory", argv[2],
                                                                   "base-cache-directory", argv[2], nullptr);
  WebKitWebContext* context = webkit_web_context_new_with_website_data_manager(data);
  webkit_web_context_set_sandbox_enabled(context, TRUE);
  webkit_web_context_add_path_to_sandbox(context, g_path_get_dirname(argv[2]), TRUE);
  webkit_cookie_manager_set_persistent_storage(webkit_web_context_get_cookie_manager(context),
                                               g_build_filename(argv[2], "cookies.sqlite", nullptr),
                                               WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
  GtkWidget* view = webkit_web_view_new_with_context(context);
  WebKitSettings* settings = webkit_web_view_get_settings(WEBKIT_WEB_VIEW(view));
  webkit_settings_set_hardware_acceleration_policy(settings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_default_size(GTK_WINDOW(window), 707, 454);
  gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
  gtk_container_add(GTK_CONTAINER(window), view);
  g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
  webkit_web_view_load_uri(WEBKIT_WEB_VIEW(view), argv[1]);
  gtk_widget_show_all(window);
  gtk_main();
  return 0;
}
