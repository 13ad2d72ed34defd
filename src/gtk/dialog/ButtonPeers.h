#pragma once

#include "gtk/dialog/Peer.h"
#include "platform/dialog/Buttons.h"

class CommandPeer : public Peer {
 public:
  CommandPeer(Controls::CommandButton& button, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::CommandButton& button_;
};

class CheckPeer : public Peer {
 public:
  CheckPeer(Controls::CheckBox& box, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::CheckBox& box_;
};

// The groups are those of the parts, whatever the look says.
class OptionPeer : public Peer {
 public:
  OptionPeer(Controls::OptionButton& option, GtkWidget* widget, Callbacks& callbacks);
  ~OptionPeer() override;
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;
  void Show();

  Controls::OptionButton& option_;
  // The toolkit has one of a group on always: this one, which nobody sees, while none of ours is.
  Owned<GtkWidget> none_;
};

class LinkPeer : public Peer {
 public:
  LinkPeer(Controls::Link& link, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::Link& link_;
};
