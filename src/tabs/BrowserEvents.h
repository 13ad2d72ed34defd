#pragma once

#include <cstdint>
#include <string>

#include "platform/Browser.h"
#include "platform/Timer.h"

class frmMain;

// What the pages report, turned into what the user sees around them: busy animation, progress bar, status
// text, tab captions, address. The end of each load goes to the history log.
class BrowserEvents {
 public:
  explicit BrowserEvents(frmMain& main);

  Timer Timer2;  // steps the busy animation
  Timer Timer3;  // redraws the tab strip

  // Ties an element's events to its index.
  void Wire(Browser& browser, int16_t Index);

  // The animation is at its start, and the idle picture shows.
  void ShowIdle();

  void Timer1_Timer(int16_t Index);
  void DownloadBegin(int16_t Index);
  void DocumentComplete();
  void ProgressChange(int16_t Index, long Progress, long ProgressMax);
  void StatusTextChange(int16_t Index, const std::string& text);
  void OnQuit(int16_t Index);

 private:
  void ShowAsking(int16_t Index);
  void EndWatch(int16_t Index);
  void Record(int16_t Index);
  void Timer2_Timer();

  frmMain& main_;
  int16_t AnimFrame = 0;       // the next frame to show
  std::string LastStatusText;  // the last one that wasn't empty, from any tab
};
