// The element's own windows on a real display.

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <filesystem>
#include <string>
#include <vector>

#include "display/Pump.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/PlainWindow.h"

namespace {

constexpr size_t Several = 5;

TEST(PlainWindows, ThoseThatAreDestroyedOnTheirWayOutTakeNoOthersAlong) {
  const std::string folder = testing::TempDir() + "plain_windows";
  Events gate;
  {
    BrowserWorld world(folder, {.folder = folder + "/engine", .cache = folder + "/cache", .sandboxed = false},
                       gate, [] { return nullptr; }, {}, {});
    const auto open = [&world] {
      std::vector<GtkWidget*> frames;
      for (size_t i = 0; i < Several; ++i)
        frames.push_back(GTK_WIDGET(world.OpenPlainWindow().Open("about:blank")));
      return frames;
    };
    // As the task bar closes them; they go a moment later, and all pages go within that.
    for (GtkWidget* frame : open()) {
      gtk_widget_show(frame);
      GdkEvent* event = gdk_event_new(GDK_DELETE);
      event->any.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(frame)));
      gtk_main_do_event(event);
      gdk_event_free(event);
      EXPECT_FALSE(gtk_widget_get_visible(frame));
    }
    world.ClosePages();
    // The next ones may well lie where those lay in memory.
    open();
    PumpFor(100);
    EXPECT_EQ(world.Pages().size(), Several);
  }
  std::filesystem::remove_all(folder);
}

}  // namespace
