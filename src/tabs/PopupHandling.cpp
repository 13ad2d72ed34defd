#include "tabs/PopupHandling.h"

#include "core/Program.h"
#include "core/frmMain.h"
#include "tabs/frmPopup.h"

namespace {

// Values of the preference; all others let the element open a window of its own.
constexpr int16_t PolicyNone = 0, PolicyAsk = 3;

// How many requests one answer may serve. Each waits inside the one before it, on the one stack.
constexpr int MostAtOnce = 8;

// How long a refusal holds for what the same page asks, in milliseconds: one that asks in a loop asks again
// at once.
constexpr int RefusalHolds = 1000;

}  // namespace

PopupHandling::PopupHandling(frmMain& main)
    : popup(main.program.desktop.Gate, [&main] { return std::make_shared<frmPopup>(main.program); }),
      main_(main) {
  main.program.desktop.NewWindow2 = ForOnePage();
  main.program.desktop.LinkChosen = [&main](const std::string& address, bool in_front) {
    main.tabs.AddChosenTab(address, in_front);
  };
}

PopupHandling::~PopupHandling() {
  main_.program.desktop.NewWindow2 = nullptr;
  main_.program.desktop.LinkChosen = nullptr;
}

std::function<void(const std::string&, Browser*&, bool&)> PopupHandling::ForOnePage() {
  const auto refusing = std::make_shared<Timer>(main_.program.desktop, RefusalHolds, false);
  refusing->Tick = [timer = refusing.get()] { timer->Enabled = false; };
  return [this, refusing](const std::string& asker, Browser*& taker, bool& cancel) {
    Skipping([&] { Decide(asker, *refusing, taker, cancel); });
  };
}

void PopupHandling::Decide(const std::string& asker, Timer& refusing, Browser*& taker, bool& cancel) {
  switch (main_.program.preferences.PopupPolicy) {
    case PolicyNone:
      cancel = true;
      break;
    case PolicyTab:
      TakeInNewTab(taker);
      break;
    case PolicyAsk:
      Ask(asker, refusing, taker, cancel);
      break;
    default:
      break;
  }
}

// A request that comes while the question stands shares it: one dialog, one answer for all who wait. One that
// comes while the answer is being acted on takes that answer. What exceeds the most at once isn't opened, so
// that one answer never opens more than a handful of windows; nor is what another site asks for meanwhile,
// since the question names one.
void PopupHandling::Ask(const std::string& asker, Timer& refusing, Browser*& taker, bool& cancel) {
  struct Turn {
    explicit Turn(int& count) : count(++count) {}
    ~Turn() { --count; }
    int& count;
  };
  if (asking_ == MostAtOnce || refusing.Enabled || (asking_ > 0 && asker != asker_)) {
    cancel = true;
    return;
  }
  const Turn turn(asking_);
  if (asking_ == 1) {
    PopupAnswer = 0;
    asker_ = asker;
    popup().Site.Caption = asker;
  }
  if (popup.Loaded()) popup().ShowModal();
  if (PopupAnswer == InNewTab) TakeInNewTab(taker);
  if (PopupAnswer != DoNotOpen) return;
  cancel = true;
  refusing.Enabled = true;
}

void PopupHandling::TakeInNewTab(Browser*& taker) {
  TabSet& tabs = main_.tabs;
  const int16_t shown = tabs.CurrentTab;
  tabs.AddTab("about:blank");
  taker = &tabs.WebBrowser1(tabs.CurrentTab);
  // A tool goes on where it is, until it turns to the new tab.
  if (main_.program.desktop.Driven()) tabs.CurrentTab = shown;
  tabs.UpdateBrowsers();
}
