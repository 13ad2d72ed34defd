#pragma once

#include "gtk/dialog/Peer.h"
#include "platform/dialog/ListBox.h"

// A view of rows of one height, so that the number of rows costs next to nothing. Whatever a handler changes
// in the list's rows is shown in one step once it has returned, by exchanging the whole model.
class ListPeer : public Peer {
 public:
  ListPeer(Controls::ListBox& list, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override { Fill(); }
  void AddShares();
  void Fill();
  void Select();
  void Chosen();
  gboolean Key(const GdkEventKey* event);
  gboolean Tip(int x, int y, gboolean keyboard, GtkTooltip* tip);

  GtkTreeView* View() const { return GTK_TREE_VIEW(Widget()); }

  Controls::ListBox& list_;
  Callbacks& callbacks_;
  bool stale_ = false;  // the widget shows rows that were
};
