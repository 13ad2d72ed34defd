#include "gtk/dialog/Notice.h"

#include "gtk/dialog/OwnDialog.h"
#include "platform/dialog/Controls.h"

namespace {

class NoticeDialog : public OwnDialog {
 public:
  NoticeDialog(GtkWindow* parent, const std::string& what, const std::string& why)
      : OwnDialog(parent, "Notice") {
    Caption = what;
    What.Caption = what;
    Why.Caption = why;
    Command1.Click = [this] { Close(); };
  }

  Controls::Label What{*this, "What"}, Why{*this, "Why"};
  Controls::CommandButton Command1{*this, "Command1"};
};

}  // namespace

namespace Notice {

void Show(GtkWindow* parent, const std::string& what, const std::string& why) {
  OwnDialog::Open(std::make_shared<NoticeDialog>(parent, what, why));
}

}  // namespace Notice
