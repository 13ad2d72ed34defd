#pragma once

#include <unordered_map>
#include <vector>

#include "gtk/dialog/Peer.h"
#include "platform/dialog/Tree.h"

// Like a list, a tree shows what a handler has changed in one step.
class TreePeer : public Peer {
 public:
  TreePeer(Controls::Tree& tree, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  using RowId = Controls::Tree::RowId;
  struct FreePath {
    void operator()(GtkTreePath* path) const { gtk_tree_path_free(path); }
  };
  using Path = std::unique_ptr<GtkTreePath, FreePath>;

  void JoinOwn() override { Fill(); }
  void MakeColumns();
  void Listen();
  void Fill();
  void Insert(GtkTreeStore* store, const std::vector<RowId>& rows, GtkTreeIter* parent);
  void Expand(const std::vector<RowId>& rows);
  void Select();
  void Chosen();
  gboolean Key(const GdkEventKey* event);
  void EditName();
  void Edited(const char* path, const char* name);
  void Received(GdkDragContext* context, int x, int y, unsigned time);

  GtkTreeView* View() const { return GTK_TREE_VIEW(Widget()); }
  Path PathOf(RowId row) const;
  RowId RowAt(GtkTreePath* path) const;

  Controls::Tree& tree_;
  Callbacks& callbacks_;
  Owned<GtkCellRenderer> name_;
  std::unordered_map<RowId, GtkTreeIter> at_;  // in the present model
  std::vector<RowId> dragged_;
  bool stale_ = false;  // the widget shows rows that were
};
