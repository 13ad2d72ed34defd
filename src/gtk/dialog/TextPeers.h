#pragma once

#include "gtk/dialog/Peer.h"
#include "platform/dialog/TabPages.h"
#include "platform/dialog/Texts.h"

class LabelPeer : public Peer {
 public:
  LabelPeer(Controls::Label& label, GtkWidget* widget, Callbacks&) : Peer(label, widget), label_(label) {}
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::Label& label_;
};

class FramePeer : public Peer {
 public:
  FramePeer(Controls::Frame& frame, GtkWidget* widget, Callbacks&) : Peer(frame, widget), frame_(frame) {}
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::Frame& frame_;
};

class TextPeer : public Peer {
 public:
  TextPeer(Controls::TextBox& box, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;
  void Colour();

  Controls::TextBox& box_;
  Owned<GtkCssProvider> colour_;
};

class NumberPeer : public Peer {
 public:
  NumberPeer(Controls::NumberBox& box, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override { Changed(Controls::Aspect::Value); }

  Controls::NumberBox& box_;
};

class ProgressPeer : public Peer {
 public:
  ProgressPeer(Controls::ProgressBar& bar, GtkWidget* widget, Callbacks&) : Peer(bar, widget), bar_(bar) {}
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::ProgressBar& bar_;
};

class PagesPeer : public Peer {
 public:
  PagesPeer(Controls::TabPages& pages, GtkWidget* widget, Callbacks& callbacks);
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override { Changed(Controls::Aspect::Value); }

  Controls::TabPages& pages_;
};

class ImagePeer : public Peer {
 public:
  ImagePeer(Controls::Image& image, GtkWidget* widget, Callbacks&) : Peer(image, widget), image_(image) {}
  void Changed(Controls::Aspect aspect) override;

 private:
  void JoinOwn() override;

  Controls::Image& image_;
};
