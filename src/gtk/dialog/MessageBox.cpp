#include "gtk/dialog/Dialogs.h"

#include "gtk/dialog/OwnDialog.h"
#include "platform/dialog/Controls.h"

namespace {

class MessageBox : private OwnDialogMaker, public Dialog {
 public:
  MessageBox(GtkWindow* main, const std::string& text, Buttons buttons, const std::string& title)
      : OwnDialogMaker(main), Dialog(static_cast<OwnDialogMaker&>(*this), "MessageBox") {
    const bool asks = buttons == Buttons::YesNo;
    Caption = title;
    Label1.Caption = text;
    Question.Visible = Yes.Visible = No.Visible = asks;
    Information.Visible = Ok.Visible = !asks;
    answer = asks ? Answer::No : Answer::Ok;
    Yes.Click = [this] {
      answer = Answer::Yes;
      Visible = false;
    };
    Ok.Click = No.Click = QueryUnload = [this] { Visible = false; };
    Join();
    (asks ? No : Ok).SetFocus();
  }

  Answer answer;

  Controls::Image Question{*this, "Question"}, Information{*this, "Information"};
  Controls::Label Label1{*this, "Label1"};
  Controls::CommandButton Yes{*this, "Yes"}, No{*this, "No"}, Ok{*this, "Ok"};
};

}  // namespace

namespace Dialogs {

Answer MsgBox(GtkWindow* main, const std::string& text, Buttons buttons, const std::string& title) {
  MessageBox box(main, text, buttons, title);
  box.ShowModal();
  return box.answer;
}

}  // namespace Dialogs
