// The windows of the scene on a real display: what they hear of, and that nothing of them stays behind.

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "display/Pump.h"
#include "gtk/window/MainHost.h"
#include "gtk/window/SceneView.h"
#include "gtk/window/Waiting.h"
#include "platform/scene/Drawing.h"

namespace {

using Strings = std::vector<std::string>;

class NoHost : public WindowHost {
 public:
  void Show() override {}
  void Hide() override {}
  void Move() override {}
  void Resize() override {}
  void Caption() override {}
  void State() override {}
  void Focus() override {}
  void Invalidate() override {}
  void Repaint() override {}
};

// Scenes whose real windows are made by the test.
class Windows : public WindowSystem {
 public:
  Drawing& Draws() override { return *drawing_; }
  std::unique_ptr<WindowHost> MakeHost(Window&) override { return std::make_unique<NoHost>(); }

 private:
  std::unique_ptr<Drawing> drawing_ = MakeDrawing();
};

class SceneWindows : public testing::Test {
 protected:
  // A view in a window of the test's own.
  void ShowView() {
    view = std::make_unique<SceneView>(gate, scene);
    gtk_container_add(GTK_CONTAINER(frame.get()), view->Widget());
    gtk_widget_show(view->Widget());
    gtk_widget_show(frame.get());
    PumpFor(50);
  }
  GdkEvent* Event(GdkEventType type, GtkWidget* widget) {
    GdkEvent* event = gdk_event_new(type);
    event->any.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(widget)));
    GdkSeat* seat = gdk_display_get_default_seat(gdk_display_get_default());
    gdk_event_set_device(event,
                         type == GDK_KEY_PRESS ? gdk_seat_get_keyboard(seat) : gdk_seat_get_pointer(seat));
    return event;
  }

  Events gate;
  Windows windows;
  Window scene{windows, Window::Kind::Main, {0, 0, 3000, 3000}, "Scene"};
  OwnedToplevel frame{gtk_window_new(GTK_WINDOW_TOPLEVEL)};
  std::unique_ptr<SceneView> view;
};

TEST_F(SceneWindows, ADestroyedViewLeavesNoHandlerAtTheFrameClock) {
  // The toolkit has handlers of its own there, which come and go.
  const auto handlers = [](GdkFrameClock* clock) {
    const guint update = g_signal_lookup("update", GDK_TYPE_FRAME_CLOCK);
    const auto next = [&] {
      constexpr auto unblocked = static_cast<GSignalMatchType>(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_UNBLOCKED);
      return g_signal_handler_find(clock, unblocked, update, 0, nullptr, nullptr, nullptr);
    };
    std::vector<gulong> found;
    while (const gulong handler = next()) {
      g_signal_handler_block(clock, handler);
      found.push_back(handler);
    }
    for (const gulong handler : found) g_signal_handler_unblock(clock, handler);
    return found.size();
  };
  const auto settles = [&](GdkFrameClock* clock, size_t count) {
    for (int i = 0; i < 100 && handlers(clock) != count; ++i) PumpFor(20);
    return handlers(clock) == count;
  };
  gtk_widget_show(frame.get());
  GdkFrameClock* clock = gtk_widget_get_frame_clock(frame.get());
  ShowView();
  EXPECT_TRUE(settles(clock, 1));
  gtk_container_remove(GTK_CONTAINER(frame.get()), view->Widget());
  EXPECT_TRUE(settles(clock, 0));
  gtk_container_add(GTK_CONTAINER(frame.get()), view->Widget());
  EXPECT_TRUE(settles(clock, 1));
  view.reset();
  EXPECT_TRUE(settles(clock, 0));
  PumpFor(50);
}

TEST_F(SceneWindows, ADestroyedMainWindowAsksNoMoreWhereItStands) {
  PopupGroup popups(gate);
  const auto entry = std::make_shared<TaskBarEntry>();
  auto host = std::make_unique<MainHost>(gate, popups, entry, scene);
  host->Show();
  PumpFor(100);
  // What the window manager reports is looked at a little later, when the program's own moves have settled.
  scene.Left = 300;
  host->Move();
  host->Invalidate();
  PumpFor(100);
  host.reset();
  EXPECT_EQ(entry->frame, nullptr);
  scene.Left = 4500;
  PumpFor(500);
  EXPECT_EQ(scene.Left, 4500);
}

TEST_F(SceneWindows, APressThatAWidgetOverTheSceneLeavesIsNoneOnTheScene) {
  int presses = 0;
  scene.MouseDown = [&](const Mouse&) { ++presses; };
  ShowView();
  GtkWidget* bar = gtk_event_box_new();
  gtk_widget_set_size_request(bar, 50, 20);
  gtk_layout_put(GTK_LAYOUT(view->Widget()), bar, 10, 10);
  gtk_widget_show(bar);
  PumpFor(50);
  const auto press = [&](GtkWidget* widget, GdkWindow* window) {
    GdkEvent* event = Event(GDK_BUTTON_PRESS, widget);
    g_set_object(&event->any.window, window);
    event->button.button = 1;
    gtk_main_do_event(event);
    event->type = GDK_BUTTON_RELEASE;
    gtk_main_do_event(event);
    gdk_event_free(event);
  };
  press(bar, gtk_widget_get_window(bar));
  EXPECT_EQ(presses, 0);
  press(view->Widget(), gtk_layout_get_bin_window(GTK_LAYOUT(view->Widget())));
  EXPECT_EQ(presses, 1);
}

// What is typed while the program is in the middle of something comes when that is done, in order; what a
// dialog waits for, at once.
TEST_F(SceneWindows, WhatTheUserDoesComesBehindAPass) {
  struct Room {
    Waiting waiting;
    Strings log;
    std::function<void(char)> type;
  } room;
  gtk_widget_show(frame.get());
  PumpFor(50);
  g_signal_connect(frame.get(), "key-press-event",
                   G_CALLBACK(+[](GtkWidget*, GdkEventKey* event, gpointer data) {
                     static_cast<Room*>(data)->log.emplace_back(1, static_cast<char>(event->keyval));
                     return TRUE;
                   }),
                   &room);
  gdk_event_handler_set(
      [](GdkEvent* event, gpointer data) {
        if (!static_cast<Room*>(data)->waiting.Holds(event)) gtk_main_do_event(event);
      },
      &room, nullptr);
  room.type = [&](char letter) {
    GdkEvent* event = Event(GDK_KEY_PRESS, frame.get());
    event->key.keyval = static_cast<guint>(letter);
    gdk_display_put_event(gdk_display_get_default(), event);
    gdk_event_free(event);
  };
  room.type('a');
  room.type('b');
  room.waiting.Pass(200);
  EXPECT_FALSE(room.waiting.InCourse());
  EXPECT_EQ(room.log, Strings());
  room.log.emplace_back("done");
  room.type('c');
  PumpFor(50);
  EXPECT_EQ(room.log, (Strings{"done", "a", "b", "c"}));

  room.log.clear();
  g_idle_add(
      [](gpointer data) -> gboolean {
        static_cast<Room*>(data)->type('e');
        PumpFor(100);
        static_cast<Room*>(data)->log.emplace_back("answered");
        return G_SOURCE_REMOVE;
      },
      &room);
  room.type('d');
  room.waiting.Pass(200);
  EXPECT_EQ(room.log, (Strings{"d", "e", "answered"}));
  gdk_event_handler_set([](GdkEvent* event, gpointer) { gtk_main_do_event(event); }, nullptr, nullptr);
}

}  // namespace
