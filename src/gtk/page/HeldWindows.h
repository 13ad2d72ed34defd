#pragma once

#include <gtk/gtk.h>

#include <string>
#include <vector>

class Page;

// The windows that a page wanted without a press of the user's: held back behind one bar, which names the
// site and offers to open them, or to let the site open windows from now on.
class HeldWindows {
 public:
  explicit HeldWindows(Page& page) : page_(page) {}
  HeldWindows(const HeldWindows&) = delete;

  void Hold(const std::string& uri);
  // The page is left.
  void Forget();

 private:
  void MakeBar();
  void Tell(const std::string& text);
  void Respond(int response);

  Page& page_;
  GtkWidget *bar_ = nullptr, *label_ = nullptr;  // while they stand; the page's next load takes them away
  std::vector<std::string> wanted_;
  std::string site_, asker_;  // of the page that wanted them
};
