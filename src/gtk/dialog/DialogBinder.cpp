#include "gtk/dialog/DialogBinder.h"

#include <utility>

#include "gtk/base/Widgets.h"
#include "platform/Text.h"
#include "platform/scene/Scene.h"

namespace {

// The frame that the sizes of dialogs include, in pixels. The real one differs from desktop to desktop, and
// what is placed inside mustn't.
constexpr int FrameWidth = 8, FrameHeight = 27;
// A busy desktop doesn't hold a repaint for longer.
constexpr unsigned MostMillisecondsToPaint = 500;

// The rules that looks share, for the whole program and once.
void AddRules() {
  static const Owned<GtkCssProvider> rules = [] {
    Owned<GtkCssProvider> css(gtk_css_provider_new());
    gtk_css_provider_load_from_resource(css.get(), "/marlowick/ui/looks.css");
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(css.get()),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    return css;
  }();
}

GtkWindow* ModalInFront() {
  GtkWidget* grab = gtk_grab_get_current();
  GtkWidget* top = grab ? gtk_widget_get_toplevel(grab) : nullptr;
  const bool modal =
      GTK_IS_WINDOW(top) && gtk_window_get_modal(GTK_WINDOW(top)) && gtk_widget_get_visible(top);
  return modal ? GTK_WINDOW(top) : nullptr;
}

bool StandsOver(GtkWindow* window, const GtkWindow* main) {
  for (; window; window = gtk_window_get_transient_for(window))
    if (window == main) return true;
  return false;
}

// Screen readers know a field by the text of its label.
void NameByLabel(GtkWidget* widget) {
  AtkObject* accessible = gtk_widget_get_accessible(widget);
  GList* labels = gtk_widget_list_mnemonic_labels(widget);
  const char* name = atk_object_get_name(accessible);
  if (labels && (!name || !*name) && GTK_IS_LABEL(labels->data))
    atk_object_set_name(accessible, gtk_label_get_text(GTK_LABEL(labels->data)));
  g_list_free(labels);
}

}  // namespace

GtkWindow* OwnerFor(bool modal, GtkWindow* main) {
  if (GtkWindow* front = ModalInFront()) return front;
  if (!main || !gtk_widget_get_visible(GTK_WIDGET(main))) return nullptr;
  GtkWindow* owner = main;
  GList* windows = modal ? gtk_window_list_toplevels() : nullptr;
  for (const GList* at = windows; at; at = at->next) {
    auto* window = GTK_WINDOW(at->data);
    const bool in_front = gtk_widget_get_visible(GTK_WIDGET(window)) && gtk_window_is_active(window) &&
                          gtk_window_get_window_type(window) == GTK_WINDOW_TOPLEVEL;
    if (in_front && StandsOver(window, main)) owner = window;
  }
  g_list_free(windows);
  return owner;
}

DialogBinder::DialogBinder(Dialog& dialog, Events& gate, Owner owner)
    : dialog_(dialog),
      owner_(std::move(owner)),
      look_(dialog.Name),
      window_(GTK_WINDOW(look_.Find(dialog.Name, GTK_TYPE_WINDOW))),
      callbacks_([&gate](const std::function<void()>& handler) { gate.Run(handler); }) {
  AddRules();
  for (Controls::Control* part : dialog.Parts()) {
    peers_[part] = MakePeer(*part, look_, callbacks_);
    NameByLabel(GTK_WIDGET(look_.Find(part->Name, GTK_TYPE_WIDGET)));
  }
  if (!dialog.Caption->empty()) Caption();
  if (dialog.Width != Controls::AsInLook && dialog.Height != Controls::AsInLook)
    gtk_window_set_default_size(window_.get(), Pixels(dialog.Width) - FrameWidth,
                                Pixels(dialog.Height) - FrameHeight);
  Listen();
}

void DialogBinder::Listen() {
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window_.get(), "delete-event",
                                                 [this](GtkWidget*, GdkEvent*) {
                                                   const auto query = dialog_.QueryUnload;
                                                   if (query) query();
                                                   return TRUE;
                                                 });
  callbacks_.On<void(GtkWidget*)>(window_.get(), "realize", [this](GtkWidget* widget) {
    Pointer();
    // A look whose window can't be closed has no other system buttons either.
    if (gtk_window_get_deletable(window_.get())) return;
    gdk_window_set_decorations(gtk_widget_get_window(widget),
                               static_cast<GdkWMDecoration>(GDK_DECOR_BORDER | GDK_DECOR_TITLE));
    gdk_window_set_functions(gtk_widget_get_window(widget), GDK_FUNC_MOVE);
  });
  callbacks_.On<gboolean(GtkWidget*, GdkEventConfigure*)>(window_.get(), "configure-event",
                                                          [this](GtkWidget*, GdkEventConfigure* event) {
                                                            TellSize(event->width, event->height);
                                                            return FALSE;
                                                          });
  callbacks_.On<gboolean(GtkWidget*, GdkEventKey*)>(
      window_.get(), "key-press-event", [this](GtkWidget*, GdkEventKey* event) { return Key(event); });
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window_.get(), "map-event", [this](GtkWidget*, GdkEvent*) {
    mapped_ = true;
    return FALSE;
  });
  callbacks_.On<void(GtkWidget*)>(window_.get(), "unmap", [this](GtkWidget*) { mapped_ = false; });
  callbacks_.On<void(GtkWindow*, GParamSpec*)>(window_.get(), "notify::is-active",
                                               [this](GtkWindow*, GParamSpec*) { Activated(); });
}

// A name that is edited in a tree gets its keys before the dialog's own do: Escape ends the editing and not
// the dialog.
gboolean DialogBinder::Key(GdkEventKey* event) {
  GtkWidget* focus = gtk_window_get_focus(window_.get());
  const bool edits = focus && GTK_IS_CELL_EDITABLE(focus) && GTK_IS_TREE_VIEW(gtk_widget_get_parent(focus));
  return edits && gtk_window_propagate_key_event(window_.get(), event);
}

void DialogBinder::Activated() {
  if (gtk_window_is_active(window_.get()))
    comes_back_ = false;
  else if (dialog_.Visible)
    dialog_.Deactivated();
}

void DialogBinder::TellSize(int width, int height) {
  if (dialog_.Visible)
    dialog_.Resized((width + FrameWidth) * TwipsPerPixel, (height + FrameHeight) * TwipsPerPixel);
}

void DialogBinder::Show() {
  if (IsScreenGone()) return;
  GtkWindow* owner = OwnerFor(gtk_window_get_modal(window_.get()), owner_ ? owner_() : nullptr);
  if (owner == window_.get()) return TakeFocus();
  gtk_window_set_transient_for(window_.get(), owner);
  gtk_window_set_position(window_.get(), owner ? GTK_WIN_POS_CENTER_ON_PARENT : GTK_WIN_POS_CENTER);
  if (owner) Watch(owner);
  // What is placed by the size is placed before the first frame.
  int width = 0, height = 0;
  gtk_window_get_size(window_.get(), &width, &height);
  TellSize(width, height);
  gtk_window_present(window_.get());
}

void DialogBinder::Watch(GtkWindow* owner) {
  callbacks_.Off(owner);
  callbacks_.On<void(GtkWindow*, GParamSpec*)>(owner, "notify::is-active",
                                               [this](GtkWindow* active, GParamSpec*) {
                                                 if (comes_back_ && gtk_window_is_active(active)) TakeFocus();
                                               });
}

void DialogBinder::Hide() {
  comes_back_ = false;
  if (GtkWindow* owner = gtk_window_get_transient_for(window_.get())) callbacks_.Off(owner);
  gtk_widget_hide(Widget());
  gtk_window_set_modal(window_.get(), FALSE);
}

void DialogBinder::ShowModal() {
  gtk_window_set_modal(window_.get(), TRUE);
  dialog_.Visible = true;
  while (dialog_.Visible) g_main_context_iteration(nullptr, TRUE);
}

// Within the program only. The window that takes the place of this one tells when it has it.
void DialogBinder::TakeFocus() {
  if (!dialog_.Visible) return;
  GtkWindow* owner = gtk_window_get_transient_for(window_.get());
  comes_back_ = owner && !gtk_window_is_active(owner) && !gtk_window_is_active(window_.get());
  if (comes_back_) return;
  GtkWindow* modal = ModalInFront();
  gtk_window_present(modal ? modal : window_.get());
}

void DialogBinder::Caption() { gtk_window_set_title(window_.get(), Text::Valid(dialog_.Caption()).c_str()); }

void DialogBinder::Resize() {
  const int width = Pixels(dialog_.Width) - FrameWidth, height = Pixels(dialog_.Height) - FrameHeight;
  int now_width = 0, now_height = 0;
  gtk_window_get_size(window_.get(), &now_width, &now_height);
  if (width != now_width || height != now_height) gtk_window_resize(window_.get(), width, height);
}

void DialogBinder::Pointer() {
  GdkWindow* window = gtk_widget_get_window(Widget());
  if (!window) return;
  GdkDisplay* display = gdk_window_get_display(window);
  const bool waits = dialog_.Pointer == MousePointer::Hourglass;
  const Owned<GdkCursor> cursor(waits ? gdk_cursor_new_from_name(display, "wait") : nullptr);
  gdk_window_set_cursor(window, cursor.get());
  // The program may be busy from now on.
  gdk_display_flush(display);
}

void DialogBinder::Refresh() {
  GdkWindow* window = gtk_widget_get_window(Widget());
  if (!window || !gtk_widget_get_visible(Widget())) return;
  bool over = false;
  Callbacks meanwhile([](const std::function<void()>& handler) { handler(); });
  // What is painted before the window is on the screen is lost.
  meanwhile.On<void(GdkFrameClock*)>(gdk_window_get_frame_clock(window), "after-paint",
                                     [this, &over](GdkFrameClock*) { over = mapped_; });
  meanwhile.After(MostMillisecondsToPaint, [&over] { over = true; });
  gtk_widget_queue_draw(Widget());
  while (!over) g_main_context_iteration(nullptr, TRUE);
  gdk_display_flush(gdk_window_get_display(window));
}

void DialogBinder::SetFocus(Controls::Control& control) {
  gtk_widget_grab_focus(peers_.at(&control)->Widget());
}

void DialogBinder::Changed(Controls::Control& control, Controls::Aspect aspect) {
  // While the dialog is being joined, what comes is in place already.
  const auto peer = peers_.find(&control);
  if (peer != peers_.end()) peer->second->Changed(aspect);
}
