#include "core/Program.h"

#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "core/frmSplash.h"
#include "menus/frmMenu.h"
#include "tabs/frmPopup.h"

namespace {

template <class T>
auto Maker(Program& program) {
  return [&program] { return std::make_shared<T>(program); };
}

}  // namespace

Program::Program(Desktop& desktop)
    : desktop(desktop),
      splash(desktop.Gate, Maker<frmSplash>(*this)),
      main(desktop.Gate, Maker<frmMain>(*this)),
      dummy(desktop.Gate, Maker<frmDummy>(*this)),
      popup_menu(desktop.Gate, Maker<frmMenu>(*this)) {}

Program::~Program() = default;

void Program::Start() { splash(); }

void Program::JoinDialogs() { frmPopup(*this).Join(); }
